// The comparison at large: what happened in words and numbers, each of which leads to where it can be
// explored, and then section by section.
import { AreaSection, byWeight } from "./areas.js";
import { chainOf, cyclesOf, cycleWords } from "./cycles.js";
import { Comparison } from "./data.js";
import { edits, editOf, signOf, tallyOf } from "./edits.js";
import { cutList, Guide } from "./guide.js";
import { counted, element, graphText, pathText, plainNumber, wholeText } from "./text.js";

const mostFiles = 10;
const mostItems = 8;
const kinds = [["files", "Files"], ["groups", "Links"], ["dependencies", "Dependencies"],
               ["fileProperties", "File properties"], ["graphProperties", "Graph properties"]];

/**
 * The two most important counts. Of files only those that came or went: others have other properties
 * at most.
 * @param {Comparison} data
 * @returns {HTMLElement[]}
 */
export function talliesOf(data) {
  return [["files", "Files", 2], ["groups", "Links", 3]].map(([key, title, most]) => element(
      "dl", { class: "tally-box" }, element("dt", {}, title),
      ...edits.slice(0, Number(most)).map(({ name, sign }) => element(
          "dd", { class: `${name}${data.head.summary[key][name] === 0 ? " zero" : ""}`, title: name },
          sign, plainNumber(data.head.summary[key][name])))));
}

/**
 * What is to be said of graphs without a difference.
 * @param {Comparison} data
 * @returns {string} empty if there is one
 */
export function verdictOf(data) {
  const differs = kinds.some(([key]) => edits.slice(0, 3).some(({ name }) => data.head.summary[key][name] > 0));
  return data.files === 0 ? "Nothing to compare: no files." : differs ? "" : "The graphs are the same.";
}

/**
 * @param {Comparison} data
 * @param {any} insights null without
 * @param {Guide} guide
 * @returns {HTMLElement[]}
 */
export function overviewOf(data, insights, guide) {
  const verdict = verdictOf(data);
  const made = [element("header", { class: "of" }, element("h2", {}, "Overview"))];
  if (verdict !== "") {
    made.push(element("p", { class: "verdict" }, verdict));
  } else {
    made.push(headline(data, insights, guide), ...data.head.ledger.warnings.map((/** @type {string} */ warning) =>
        element("p", { class: "trouble" }, `Warning: ${warning}.`)));
    const sections = insights ? sectionsOf(data, insights, guide) : [];
    if (sections.length > 0) {
      made.push(element("nav", { class: "cards", "aria-label": "What happened" }, ...sections.map(cardOf)));
    }
    made.push(...sections.filter(({ content }) => content.length > 0).map(({ name, title, content }) =>
        element("section", { id: `at-${name}`, tabindex: -1 }, element("h3", {}, title), ...content)));
    const most = mostChanged(data, guide);
    made.push(...(most ? [most] : []), element("section", {}, element("h3", {}, "In numbers"), countsTable(data)));
  }
  made.push(element("section", { class: "sides" }, sideOf(data, "left"), sideOf(data, "right")));
  return made;
}

/**
 * One sentence on what matters most.
 * @param {Comparison} data
 * @param {any} insights
 * @param {Guide} guide
 */
function headline(data, insights, guide) {
  const { files, groups } = data.head.summary;
  const tally = (/** @type {any} */ counts, /** @type {string} */ one, /** @type {string} */ several) => {
    const parts = edits.slice(0, 3).filter(({ name }) => counts[name] > 0).map(({ name }) =>
        guide.toEdit(editOf(name), `${plainNumber(counts[name])} ${name}`));
    return parts.length === 0 ? [`No ${one} differs`]
        : [`${several} `, ...parts.flatMap((part, i) => [i > 0 ? ", " : "", part])];
  };
  const structural = { ...files, changed: 0 };
  const made = element("p", { class: "headline" });
  made.append(...tally(structural, "file", "Files:"), ". ", ...tally(groups, "link", "Links:"), ".");
  if (insights && groups.added + groups.removed > 0) {
    const { added, removed } = insights.causes;
    const all = added.rewiring + removed.rewiring;
    made.append(` ${plainNumber(all)} of the links that came or went ${all === 1 ? "joins" : "join"} nodes that are in both graphs; ` +
                "the others came or went with a file, a target or a rename.");
  }
  if (files.changed > 0) {
    made.append(" ", guide.toEdit(2, counted(files.changed, "file"), true), ` ${files.changed === 1 ? "has" : "have"} other properties.`);
  }
  const versions = Object.entries(data.head.versions ?? {}).filter(([, count]) => count > 0)
      .map(([name, count]) => `${plainNumber(count)} ${name}`);
  if (versions.length > 0) {
    made.append(` Versions: ${versions.join(", ")}.`);
  }
  return made;
}

/**
 * @typedef {{name: string, title: string, figure: (Node | string)[], words: (Node | string)[], content: Node[]}} Section
 */

/**
 * @param {Section} section
 * @returns {HTMLElement}
 */
function cardOf({ name, title, figure, words, content }) {
  const parts = [element("span", { class: "card-title" }, title), element("span", { class: "figure" }, ...figure),
                 element("span", { class: "card-words" }, ...words)];
  return content.length === 0 ? element("span", { class: "card still" }, ...parts)
      : element("a", {
        class: "card", href: `#at=${name}`,
        onclick: (/** @type {Event} */ event) => {
          event.preventDefault();
          const section = document.getElementById(`at-${name}`);
          section?.scrollIntoView();
          section?.focus({ preventScroll: true });
        },
      }, ...parts);
}

/**
 * @param {number} edit
 * @param {number} count
 */
function figureOf(edit, count) {
  return element("span", { class: `${edits[edit].name}${count === 0 ? " zero" : ""}` },
                 `${edits[edit].sign}${plainNumber(count)}`);
}

/**
 * @param {Comparison} data
 * @param {any} insights
 * @param {Guide} guide
 * @returns {Section[]}
 */
function sectionsOf(data, insights, guide) {
  const { areas, cycles, hardCycles, reach, renames, others, causes } = insights;
  /** @type {Section[]} */
  const made = [];
  const add = (/** @type {string} */ name, /** @type {string} */ title, /** @type {Section["figure"]} */ figure,
               /** @type {Section["words"]} */ words, /** @type {Node[]} */ content) =>
      made.push({ name, title, figure, words, content });

  const fresh = areas.links.filter((/** @type {any} */ link) => link.left === 0);
  const gone = areas.links.filter((/** @type {any} */ link) => link.right === 0);
  if (areas.areas.length > 1) {
    const [shown] = byWeight([...fresh, ...gone]);
    add("areas", "Areas", [figureOf(0, fresh.length), " ", figureOf(1, gone.length)],
        shown ? [shown.left === 0 ? "now needs: " : "no longer needs: ", pathText(shown.from, 40), " \u2192 ", pathText(shown.to, 40)]
              : areas.links.length > 0 ? [`no new pair; ${counted(areas.links.length, "pair")} grew or shrank`]
                                       : ["need each other as before"],
        areas.links.length > 0 ? new AreaSection(areas, data, guide).content() : []);
  }
  const rewired = causes.added.rewiring + causes.removed.rewiring;
  if (causes.added.rewiring + causes.added.file + causes.added.target + causes.added.rename + causes.removed.rewiring +
      causes.removed.file + causes.removed.target + causes.removed.rename + data.head.summary.groups.changed > 0) {
    add("why", "Rewired links", [figureOf(0, causes.added.rewiring), " ", figureOf(1, causes.removed.rewiring)],
        [rewired === 0 ? "no link between nodes of both graphs" : "links between nodes of both graphs"],
        causesOf(causes, data, guide));
  }
  for (const [name, title, some] of /** @type {[string, string, any][]} */ (
      [["hard-cycles", "Hard cycles", hardCycles], ["cycles", hardCycles ? "All cycles" : "Cycles", cycles]])) {
    if (some) {
      add(name, title, some.left === some.right && some.families.length === 0 ? [plainNumber(some.right)]
              : [`${plainNumber(some.left)} \u2192 ${plainNumber(some.right)}`],
          [some.left + some.right === 0 ? "no node reaches itself" : cycleWords(some)],
          some.families.length > 0 ? cyclesOf(some, data, guide) : []);
    }
  }
  if (reach && reach.left.pairs + reach.right.pairs > 0) {
    const { left, right } = reach;
    const share = left.pairs > 0 ? Math.round(100 * (right.pairs / left.pairs - 1)) : 0;
    const percent = `${share < 0 ? "\u2212" : "+"}${plainNumber(Math.abs(share))} %`;
    add("reach", "Reach", [left.pairs > 0 ? percent : plainNumber(right.pairs)],
        [`${plainNumber(left.pairs)} \u2192 ${plainNumber(right.pairs)} pairs of a file and what it reaches`],
        reach.filesAll + reach.linksAll > 0 ? reachOf(reach, data, guide) : []);
  }
  if (renames.length > 0) {
    const probable = renames.filter((/** @type {any} */ each) => each.probable).length;
    add("renames", "Renames", [`${plainNumber(probable)}${probable < renames.length ? ` + ${plainNumber(renames.length - probable)}` : ""}`],
        [probable < renames.length ? "probable and possible ones" : probable === 1 ? "a probable one" : "probable ones"],
        renamesOf(renames, data, guide));
  }
  if (others.added.length + others.removed.length > 0) {
    add("others", "Other nodes", [figureOf(0, others.added.length), " ", figureOf(1, others.removed.length)],
        ["needed by files, no files themselves"], othersOf(others, data, guide));
  }
  return made;
}

/**
 * @param {any} causes
 * @param {Comparison} data
 * @param {Guide} guide
 * @returns {Node[]}
 */
function causesOf(causes, data, guide) {
  const reasons = [["rewiring", "between nodes of both graphs"], ["file", "with a file that came or went"],
                   ["target", "to a node that came or went"], ["rename", "by a probable rename"]];
  const sums = ["added", "removed"].map((name) => reasons.reduce((sum, [key]) => sum + causes[name][key], 0));
  const bars = element("div", { class: "causes" });
  ["added", "removed"].forEach((name, edit) => {
    if (sums[edit] > 0) {
      const bar = element("span", { class: `bar ${name}`, "aria-hidden": "true" });
      for (const [key] of reasons) {
        const part = element("span", { class: `cause-${key}` });
        part.style.width = `${100 * causes[name][key] / Math.max(...sums)}%`;
        bar.append(part);
      }
      bars.append(element("p", { class: "cause" }, element("b", { class: `edit-words ${name}` },
                                                           `${plainNumber(sums[edit])} ${name}`), bar,
          element("span", { class: "parts" }, ...reasons.filter(([key]) => causes[name][key] > 0).map(([key, words]) =>
              element("span", { class: name }, element("i", { class: `swatch cause-${key}`, "aria-hidden": "true" }),
                      element("b", {}, plainNumber(causes[name][key])), ` ${words}`)))));
    }
  });
  const { components, types, ends } = causes.changed;
  const changed = [[types, "in types or numbers of dependencies"], [components, "in their components alone"],
                   [ends, "in the name or type of an end"]].filter(([count]) => Number(count) > 0);
  if (changed.length > 0) {
    bars.append(element("p", { class: "cause" },
        element("b", { class: "edit-words changed" }, `${plainNumber(components + types + ends)} changed`), element("span"),
        element("span", { class: "parts" }, ...changed.map(([count, words]) =>
            element("span", {}, element("b", {}, plainNumber(Number(count))), ` ${words}`)))));
  }
  /** @type {Map<string, any[]>} */
  const byFile = new Map();
  for (const link of causes.rewired) {
    const links = byFile.get(link.upstream) ?? [];
    links.push(link);
    byFile.set(link.upstream, links);
  }
  const files = [...byFile].sort((a, b) => b[1].length - a[1].length);
  const made = [bars];
  if (files.length > 0) {
    made.push(element("h4", {}, "Links that came or went between nodes of both graphs ",
                      element("span", { class: "count" }, `by ${counted(files.length, "file")}`)),
              ...cutList(files, mostItems, ([file, links]) => element("li", {}, guide.node(file, 60),
                  ...cutList(links, 6, (link) => element("li", {}, guide.link(link.upstream, link.downstream, editOf(link.edit), false)),
                             element("ul", { class: "targets" }), "link")),
                         element("ul", { class: "plain-list rewired" }), "file"));
  }
  if (causes.targets.length > 0) {
    made.push(element("h4", {}, "New and gone nodes that files of both graphs need ",
                      element("span", { class: "count" }, plainNumber(causes.targets.length))),
              ...nodeList(causes.targets, data, guide, (target) => editOf(target.edit)));
  }
  return made;
}

/**
 * Nodes, each with how many files need it, which it opens.
 * @param {any[]} nodes
 * @param {Comparison} data
 * @param {Guide} guide
 * @param {(node: any) => number} editFor
 */
function nodeList(nodes, data, guide, editFor) {
  return cutList(nodes, mostItems, (each) => {
    const edit = editFor(each);
    const box = element("details", {}, element("summary", {}, signOf(edit), pathText(each.node, 60),
        each.type && element("span", { class: "tag" }, graphText(each.type)),
        element("span", { class: "fact" }, counted(each.files, "file"))));
    box.addEventListener("toggle", () => {
      const node = data.nodeWithID(each.node);
      if (box.childElementCount === 1 && node >= 0) {
        const entries = [...data.groupsTo(node)].filter((entry) => data.edit(entry) === edit);
        box.append(...cutList(entries, 20, (entry) => element("li", {}, guide.link(
            data.id(data.fileOfEntry[entry]), each.node, edit)), element("ul", { class: "plain-list" }), "link"));
      }
    });
    return element("li", {}, box);
  }, element("ul", { class: "plain-list nodes" }), "node");
}

/**
 * @param {any} reach
 * @param {Comparison} data
 * @param {Guide} guide
 * @returns {Node[]}
 */
function reachOf(reach, data, guide) {
  const percent = (/** @type {number} */ cost) => `${(100 * cost).toFixed(cost < 0.1 ? 2 : 1)} %`;
  const made = [element("p", { class: "caption" }, `A file reached ${percent(reach.left.cost)} of all nodes on average before, ` +
      `${percent(reach.right.cost)} now. ${counted(reach.filesAll, "file")} of both graphs ${reach.filesAll === 1 ? "reaches" : "reach"} others than before` +
      `${reach.filesAll > reach.files.length ? `; these are the ${plainNumber(reach.files.length)} with the greatest difference` : ""}.`)];
  if (reach.files.length > 0) {
    const path = element("div", { class: "path-of", "aria-live": "polite" });
    const select = (/** @type {any} */ file, /** @type {HTMLElement} */ button) => {
      button.closest("ul")?.querySelectorAll("button").forEach((each) => each.setAttribute("aria-pressed", String(each === button)));
      path.replaceChildren(element("h4", {}, pathText(file.file, 60)), ...(file.path.length > 0
          ? [element("p", { class: "note" }, `Reaches ${counted(file.gained, "more node")}, the nearest by:`),
             chainOf(file.path, { links: [file.path.slice(-2)], edit: 0 }, guide)]
          : [element("p", { class: "note" }, `No longer reaches ${counted(file.lost, "node")}.`),
             element("p", {}, guide.node(file.file))]));
    };
    const list = element("ul", { class: "plain-list reaches" });
    const parts = cutList(reach.files, mostFiles, (file) => element("li", {}, element("button", {
      type: "button", class: "edge-link", "aria-pressed": "false",
      onclick: (/** @type {Event} */ event) => select(file, /** @type {HTMLElement} */ (event.currentTarget)),
    }, pathText(file.file, 60), element("span", { class: "fact" }, `${plainNumber(file.left)} \u2192 ${plainNumber(file.right)}`),
        tallyOf([file.gained, file.lost, 0], "Nodes that it reaches"))), list, "file");
    made.push(element("div", { class: "beside" }, element("div", {}, ...parts), path));
    const first = list.querySelector("button");
    if (first) {
      select(reach.files[0], first);
    }
  }
  if (reach.links.length > 0) {
    const table = element("tbody");
    const parts = cutList(reach.links, mostItems, (link) => element("tr", {},
        element("td", {}, guide.link(link.upstream, link.downstream, 0)),
        element("td", {}, plainNumber(link.gained)), element("td", {}, plainNumber(link.dependents))), table, "link");
    made.push(element("h4", {}, "New links that opened most"), element("div", { class: "scroll" }, element("table", { class: "rows opened" },
        element("thead", {}, element("tr", {}, ...["New link", "Nodes it opens", "Files that reach it"].map((head) =>
            element("th", { scope: "col" }, head)))), table)), ...parts.slice(1));
  }
  return made;
}

/**
 * @param {any[]} renames
 * @param {Comparison} data
 * @param {Guide} guide
 * @returns {Node[]}
 */
function renamesOf(renames, data, guide) {
  const sorted = renames.slice().sort((a, b) => b.score - a.score);
  return [element("p", { class: "caption" }, "Guesses by names, neighbours and properties; what was applied was compared as one file."),
          ...cutList(sorted, mostItems, (rename) => {
            const { digest, name, folder, neighbours: [shared, left, right], properties: [equal, all] } = rename.evidence;
            const evidence = [
              digest && [`same `, graphText(digest)],
              name && ["same name"],
              folder && [`${counted(folder[2], "file")} moved `, graphText(folder[0]), " \u2192 ", graphText(folder[1])],
              left + right > 0 && [`${plainNumber(shared)} of ${counted(Math.max(left, right), "neighbour")} shared`],
              all > 0 && [`${plainNumber(equal)} of ${counted(all, "property", "properties")} equal`],
            ].filter(Boolean);
            const tags = [rename.applied && "applied", rename.ambiguous && "ambiguous"].filter(Boolean);
            const box = element("details", { class: "rename" }, element("summary", {},
                element("span", { class: "pair-of" },
                        element("span", {}, signOf(1), guide.node(rename.left, 60)), element("span", {}, signOf(0), guide.node(rename.right, 60))),
                element("span", { class: "evidence" }, element("b", {}, `${rename.probable ? "probable" : "possible"} ${rename.score.toFixed(2)}`),
                        ...tags.map((tag) => element("span", { class: "tag" }, tag)),
                        ...evidence.map((parts) => element("span", { class: "fact" }, .../** @type {any[]} */ (parts))))));
            box.addEventListener("toggle", () => {
              if (box.childElementCount === 1) {
                box.append(sideBySide(rename, data, guide));
              }
            });
            return box;
          }, element("div", { class: "renames" }), "pair")];
}

/**
 * What each of both files needs, and what needs it.
 * @param {any} rename
 * @param {Comparison} data
 * @param {Guide} guide
 */
function sideBySide(rename, data, guide) {
  const [left, right] = [data.nodeWithID(rename.left), data.nodeWithID(rename.right)];
  const ends = (/** @type {number} */ node, /** @type {boolean} */ inward, /** @type {number} */ absent) => {
    if (node < 0 || !data.isFile(node)) {
      return new Set();
    }
    const own = data.entryOfFile[node];
    const entries = inward ? [...data.groupsTo(node)]
        : Array.from({ length: data.after(own) - own - 1 }, (_, i) => own + 1 + i);
    return new Set(entries.filter((entry) => data.edit(entry) !== absent).map((entry) =>
        data.id(inward ? data.fileOfEntry[entry] : data.targetOfEntry[entry])));
  };
  const body = element("tbody");
  for (const inward of [false, true]) {
    const both = [ends(left, inward, 0), ends(right, inward, 1)];
    const ids = [...new Set([...both[0], ...both[1]])].sort((a, b) =>
        Number(both[0].has(b) && both[1].has(b)) - Number(both[0].has(a) && both[1].has(a)) || (a < b ? -1 : 1));
    ids.forEach((id, i) => body.append(element("tr", { class: both[0].has(id) && both[1].has(id) ? "shared" : "" },
        element("td", {}, i === 0 && (inward ? "needed by" : "needs")),
        ...both.map((side) => element("td", { class: side.has(id) ? "" : "absent", "aria-label": side.has(id) ? false : "absent" },
                                      side.has(id) && guide.node(id, 50))))));
  }
  return element("table", { class: "rows" }, element("thead", {}, element("tr", {}, element("td", {}),
      element("th", { scope: "col" }, graphText(rename.left)), element("th", { scope: "col" }, graphText(rename.right)))), body);
}

/**
 * @param {any} others
 * @param {Comparison} data
 * @param {Guide} guide
 * @returns {Node[]}
 */
function othersOf(others, data, guide) {
  return [element("div", { class: "lists" }, ...[["New", others.added], ["Gone", others.removed]].map(([title, some], edit) =>
      element("div", {}, element("h4", {}, title, " ", element("span", { class: "count" }, plainNumber(some.length))),
              ...(some.length > 0 ? nodeList(some, data, guide, () => edit) : [element("p", { class: "note" }, "None.")]))))];
}

/**
 * @param {Comparison} data
 * @returns {HTMLElement}
 */
function countsTable(data) {
  return element("div", { class: "scroll" }, element("table", { class: "counts" },
                 element("thead", {}, element("tr", {}, element("td", {}),
                         ...edits.map(({ name }, edit) => element(
                             "th", { scope: "col" }, signOf(edit), name)))),
                 element("tbody", {}, ...kinds.map(([key, title]) => element(
                     "tr", {}, element("th", { scope: "row" }, title),
                     ...edits.map(({ name }) => {
                       const count = data.head.summary[key][name];
                       return element("td", { class: count === 0 ? "zero" : name }, plainNumber(count));
                     }))))));
}

/**
 * @param {Comparison} data
 * @param {"left" | "right"} side
 * @returns {HTMLElement}
 */
function sideOf(data, side) {
  const { source, analysisTime } = data.head[side];
  const ledger = { warnings: [], ...data.head.ledger[side] };
  const facts = [
    `${counted(ledger.nodes, "node")}: ${counted(ledger.files, "file")}`,
    ...Object.entries(ledger.otherNodes).map(([type, count]) => [plainNumber(Number(count)), " ", graphText(type)]),
  ];
  const dependencies = [`${counted(ledger.dependencies, "dependency", "dependencies")}: ` +
                        `${plainNumber(ledger.compared)} compared`];
  if (ledger.folded) {
    dependencies.push(counted(ledger.folded, "duplicate"));
  }
  if (ledger.leavingOtherNodes) {
    dependencies.push(`${plainNumber(ledger.leavingOtherNodes)} leaving non-file nodes`);
  }
  if (ledger.leftOut.nodes) {
    facts.push(`${plainNumber(ledger.leftOut.nodes)} left out`);
  }
  if (ledger.leftOut.dependencies) {
    dependencies.push(`${plainNumber(ledger.leftOut.dependencies)} left out`);
  }
  const others = [counted(ledger.leftOut.properties, "property", "properties"),
                  counted(ledger.leftOut.components, "component"),
                  counted(ledger.leftOut.buildProperties, "property of the build", "properties of the build")]
      .filter((fact) => !fact.startsWith("0 "));
  const list = element("p", {});
  facts.flatMap((fact, i) => [i > 0 ? ", " : "", fact].flat()).forEach((part) => list.append(part));
  return element("div", { class: "side" }, element("h4", {}, side === "left" ? "Old" : "New"),
                 element("p", { class: "source" }, wholeText(source)), list,
                 element("p", {}, dependencies.join(", ")),
                 others.length > 0 && element("p", {}, `Left out: ${others.join(", ")}`),
                 analysisTime && element("p", { class: "note" },
                                         `Analysed ${analysisTime.replace("T", " ")} UTC`),
                 ...ledger.warnings.map((/** @type {string} */ warning) =>
                     element("p", { class: "trouble" }, "Warning: ", graphText(warning))));
}

/**
 * The files of most links that are not as before.
 * @param {Comparison} data
 * @param {Guide} guide
 * @param {Iterable<number>} files
 * @returns {HTMLElement | null}
 */
export function mostChanged(data, guide, files = data.entryOfFile.keys()) {
  /** @type {{entry: number, sum: number}[]} */
  let most = [];
  for (const file of files) {
    const entry = data.entryOfFile[file];
    const sum = data.groupChanges(entry).reduce((all, count) => all + count, 0);
    if (sum > 0 && (most.length < mostFiles || sum > most[most.length - 1].sum)) {
      most.push({ entry, sum });
      most.sort((a, b) => b.sum - a.sum || a.entry - b.entry);
      most = most.slice(0, mostFiles);
    }
  }
  return most.length === 0 ? null : element(
      "section", {}, element("h3", {}, "Files with the most new, gone and changed links"),
      element("ul", { class: "most" }, ...most.map(({ entry, sum }) => {
        const counts = data.groupChanges(entry);
        const bar = element("span", { class: "bar", "aria-hidden": "true" });
        counts.forEach((count, edit) => {
          const part = element("span", { class: edits[edit].name });
          part.style.width = `${100 * count / most[0].sum}%`;
          bar.append(part);
        });
        return element("li", {}, guide.to(entry, {}, signOf(data.edit(entry)), pathText(data.id(data.fileOfEntry[entry]), 60)),
                       tallyOf(counts, "Links"), bar);
      })));
}

/**
 * What differs and is hidden by the filters, in words.
 * @param {Comparison} data
 * @param {number} choice
 * @returns {string}
 */
export function hiddenBy(data, choice) {
  return data.head.choices[choice].hidden.map((filter) => {
    const parts = [
      filter.graphs && "the graph",
      filter.files && counted(filter.files, "file"),
      filter.groups && counted(filter.groups, "link"),
      filter.rows && counted(filter.rows, "row"),
    ].filter(Boolean);
    return parts.length > 0 && `${filter.filter}: ${parts.join(", ")}`;
  }).filter(Boolean).join("; ");
}
