// The comparison in numbers: what differs, and what became of everything that the files contained.
import { Comparison } from "./data.js";
import { edits, signOf, tallyOf } from "./edits.js";
import { counted, element, graphText, pathText, plainNumber, wholeText } from "./text.js";

const mostFiles = 10;
const kinds = [["files", "Files"], ["groups", "Groups"], ["dependencies", "Dependencies"],
               ["fileProperties", "File properties"], ["graphProperties", "Graph properties"]];

/**
 * The two most important counts.
 * @param {Comparison} data
 * @returns {HTMLElement[]}
 */
export function talliesOf(data) {
  return [["files", "Files"], ["dependencies", "Dependencies"]].map(([key, title]) => element(
      "dl", { class: "tally-box" }, element("dt", {}, title),
      ...edits.slice(0, 3).map(({ name, sign }) => element(
          "dd", { class: `${name}${data.head.summary[key][name] === 0 ? " zero" : ""}`, title: name },
          sign, plainNumber(data.head.summary[key][name])))));
}

/**
 * @param {Comparison} data
 * @returns {HTMLElement}
 */
function countsTable(data) {
  return element("table", { class: "counts" },
                 element("thead", {}, element("tr", {}, element("td", {}),
                         ...edits.map(({ name }, edit) => element(
                             "th", { scope: "col" }, signOf(edit), name)))),
                 element("tbody", {}, ...kinds.map(([key, title]) => element(
                     "tr", {}, element("th", { scope: "row" }, title),
                     ...edits.map(({ name }) => {
                       const count = data.head.summary[key][name];
                       return element("td", { class: count === 0 ? "zero" : name }, plainNumber(count));
                     })))));
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
  const list = element("p", {});
  facts.flatMap((fact, i) => [i > 0 ? ", " : "", fact].flat()).forEach((part) => list.append(part));
  return element("div", { class: "side" }, element("h4", {}, side === "left" ? "Old" : "New"),
                 element("p", { class: "source" }, wholeText(source)), list,
                 element("p", {}, dependencies.join(", ")),
                 analysisTime && element("p", { class: "note" },
                                         `Analysed ${analysisTime.replace("T", " ")} UTC`),
                 ...ledger.warnings.map((/** @type {string} */ warning) =>
                     element("p", { class: "trouble" }, "Warning: ", graphText(warning))));
}

/**
 * The files whose dependencies changed most.
 * @param {Comparison} data
 * @param {(entry: number) => void} follow
 * @returns {HTMLElement | null}
 */
function mostChanged(data, follow) {
  /** @type {{entry: number, sum: number}[]} */
  let most = [];
  for (let file = 0; file < data.files; ++file) {
    const entry = data.entryOfFile[file];
    const sum = data.groupChanges(entry).reduce((all, count) => all + count, 0);
    if (sum > 0 && (most.length < mostFiles || sum > most[most.length - 1].sum)) {
      most.push({ entry, sum });
      most.sort((a, b) => b.sum - a.sum || a.entry - b.entry);
      most = most.slice(0, mostFiles);
    }
  }
  return most.length === 0 ? null : element(
      "section", {}, element("h3", {}, "Files whose dependencies changed most"),
      element("ul", { class: "most" }, ...most.map(({ entry, sum }) => {
        const counts = data.groupChanges(entry);
        const bar = element("span", { class: "bar", "aria-hidden": "true" });
        counts.forEach((count, edit) => {
          const part = element("span", { class: edits[edit].name });
          part.style.width = `${100 * count / most[0].sum}%`;
          bar.append(part);
        });
        return element("li", {}, element("a", {
          href: "#",
          onclick: (/** @type {Event} */ event) => {
            event.preventDefault();
            follow(entry);
          },
        }, signOf(data.edit(entry)), pathText(data.id(data.fileOfEntry[entry]), 60)),
                       tallyOf(counts, "Groups of dependencies"), bar);
      })));
}

/**
 * @param {Comparison} data
 * @param {(entry: number) => void} follow
 * @returns {HTMLElement[]}
 */
export function overviewOf(data, follow) {
  const most = mostChanged(data, follow);
  return [element("section", {}, countsTable(data)), ...(most ? [most] : []),
          element("section", { class: "sides" }, sideOf(data, "left"), sideOf(data, "right"))];
}

/**
 * What the filters hide, in words.
 * @param {Comparison} data
 * @param {number} choice
 * @returns {string}
 */
export function hiddenBy(data, choice) {
  return data.head.choices[choice].hidden.map((filter) => {
    const parts = [
      filter.graphs && "the graph",
      filter.files && counted(filter.files, "file"),
      filter.groups && counted(filter.groups, "group"),
      filter.rows && counted(filter.rows, "row"),
    ].filter(Boolean);
    return parts.length > 0 && `${filter.filter}: ${parts.join(", ")}`;
  }).filter(Boolean).join("; ");
}
