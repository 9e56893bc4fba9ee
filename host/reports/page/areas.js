// The areas as a matrix: what links lead from the row's area to the column's, now against before.
import { Comparison } from "./data.js";
import { cutList, Guide } from "./guide.js";
import { clipped, counted, element, graphText, pathText, plainNumber, visibleText } from "./text.js";

/** @typedef {{from: string, to: string, left: number, right: number, added: number, removed: number, examples: string[][]}} AreaLink */
/** @typedef {{area: string, files: number[], added: number, removed: number, changed: number, inside: number[], out: number[], in: number[]}} Area */

const mostAreas = 32;
const mostPairs = 8;
const mostLinksOfCell = 12;

/** How the number of links between two areas differs; each has a sign of its own. */
const shifts = {
  new: { sign: "+", edit: "added", words: "new, none before" },
  gone: { sign: "\u2212", edit: "removed", words: "gone, none left" },
  grown: { sign: "\u2191", edit: "added", words: "more than before" },
  shrunk: { sign: "\u2193", edit: "removed", words: "fewer than before" },
  swapped: { sign: "\u21c4", edit: "changed", words: "as many, but others" },
};

/**
 * @param {number} left
 * @param {number} right
 * @returns {keyof typeof shifts}
 */
function shiftOf(left, right) {
  return left === 0 && right > 0 ? "new" : right === 0 && left > 0 ? "gone"
      : right > left ? "grown" : right < left ? "shrunk" : "swapped";
}

/** @param {AreaLink} link */
function wordsOf({ left, right, added, removed }) {
  const shift = shiftOf(left, right);
  return shift === "new" ? `${plainNumber(right)} new` : shift === "gone" ? `${plainNumber(left)} gone`
      : `${plainNumber(left)} \u2192 ${plainNumber(right)} (${[added && `+${plainNumber(added)}`,
                                                               removed && `\u2212${plainNumber(removed)}`].filter(Boolean).join(" ")})`;
}

/**
 * @param {AreaLink[]} links
 * @returns {AreaLink[]} new pairs first, then gone ones, each by how much they differ
 */
export function byWeight(links) {
  return links.slice().sort((a, b) => rankOf(a) - rankOf(b) || b.added + b.removed - a.added - a.removed);
}

export class AreaSection {
  /**
   * @param {any} areas
   * @param {Comparison} data
   * @param {Guide} guide
   */
  constructor(areas, data, guide) {
    this.data = data;
    this.guide = guide;
    this.depth = /** @type {number | null} */ (areas.depth);
    this.property = /** @type {string | null} */ (areas.property);
    this.areas = /** @type {Area[]} */ (areas.areas);
    this.links = byWeight(areas.links);
    this.panel = element("div", { class: "panel", "aria-live": "polite", hidden: true });
    /** @type {HTMLElement[]} */
    this.cells = [];
  }

  /** @returns {Node[]} */
  content() {
    const about = this.property !== null
        ? ["Areas are the values of the property ", graphText(this.property), "."]
        : [`Areas are folders, ${this.depth === 1 ? "the outermost" : `up to ${this.depth} deep`}.`];
    const made = [element("p", { class: "caption" }, ...about,
                          " A cell has the links from the area on its left to the one above it.")];
    if (this.links.length > 0) {
      made.push(this.matrix(), this.panel, ...this.pairs());
    }
    made.push(this.numbers());
    return made;
  }

  /** The areas that matter most, if there are too many for a matrix, by name. */
  axis() {
    /** @type {Map<string, number>} */
    const weights = new Map();
    for (const { from, to, added, removed } of this.links) {
      for (const area of [from, to]) {
        weights.set(area, (weights.get(area) ?? 0) + added + removed);
      }
    }
    const names = [...weights].sort((a, b) => b[1] - a[1]).slice(0, mostAreas).map(([name]) => name);
    const chosen = new Set(names);
    return this.areas.filter(({ area }) => chosen.has(area));
  }

  matrix() {
    const axis = this.axis();
    const places = new Map(axis.map(({ area }, i) => [area, i]));
    const byPlace = new Map(this.links.map((link) =>
        [`${places.get(link.from)} ${places.get(link.to)}`, link]));
    const table = element("table", { class: "matrix", role: "grid", "aria-label": "Links between areas" },
        element("thead", {}, element("tr", {}, element("td", { class: "corner" }, "from \u2193  to \u2192"),
            ...axis.map(({ area }) => element("th", { scope: "col", title: visibleText(clipped(area, 200)) },
                element("span", {}, shortArea(area)))))),
        element("tbody", {}, ...axis.map((row, r) => element("tr", {},
            element("th", { scope: "row", title: visibleText(clipped(row.area, 200)) }, shortArea(row.area)),
            ...axis.map((column, c) => element("td", { class: r === c ? "own" : "" },
                r === c ? this.cell({ from: row.area, to: row.area, left: row.inside[0], right: row.inside[1],
                                      added: 0, removed: 0, examples: [] })
                        : this.cell(byPlace.get(`${r} ${c}`))))))));
    table.addEventListener("keydown", (event) => this.key(event, table));
    this.cells = [...table.querySelectorAll("button")];
    if (this.cells.length > 0) {
      this.cells[0].tabIndex = 0;
    }
    const legend = element("p", { class: "legend" }, ...Object.entries(shifts).map(([name, { sign, edit, words }]) =>
        element("span", {}, element("span", { class: `shift ${name} ${edit}` }, sign), ` ${words}`)));
    const left = this.areas.length - axis.length;
    return element("div", { class: "frame areas" }, element("div", { class: "scroll" }, table), legend,
                   left > 0 && element("p", { class: "legend" }, `Not drawn: ${counted(left, "area")} with ` +
                       `${axis.length === mostAreas ? "fewer" : "no"} changes in links to others.`));
  }

  /** @param {AreaLink | undefined} link */
  cell(link) {
    if (!link || (link.from === link.to && link.left === link.right)) {
      return null;
    }
    const shift = shiftOf(link.left, link.right);
    const { sign, edit, words } = shifts[shift];
    const many = Math.abs(link.right - link.left);
    return element("button", {
      type: "button", class: `shift ${shift} ${edit}`, tabindex: -1, "aria-pressed": "false",
      title: `${visibleText(clipped(link.from))} \u2192 ${visibleText(clipped(link.to))}: ` +
          `${counted(link.left, "link")} before, ${plainNumber(link.right)} now (${words})`,
      onclick: (/** @type {Event} */ event) => this.open(link, /** @type {HTMLElement} */ (event.currentTarget)),
    }, sign, many > 0 && plainNumber(many));
  }

  /**
   * The arrow keys go to the next cell that has something.
   * @param {KeyboardEvent} event
   * @param {HTMLElement} table
   */
  key(event, table) {
    const step = { ArrowLeft: [0, -1], ArrowRight: [0, 1], ArrowUp: [-1, 0], ArrowDown: [1, 0] }[event.key];
    const at = /** @type {HTMLTableCellElement | null} */ (document.activeElement?.closest("td"));
    if (!step || !at) {
      return;
    }
    event.preventDefault();
    const places = this.cells.map((cell) => {
      const held = /** @type {HTMLTableCellElement} */ (cell.closest("td"));
      return { cell, row: /** @type {HTMLTableRowElement} */ (held.parentElement).rowIndex, column: held.cellIndex };
    });
    const from = { row: /** @type {HTMLTableRowElement} */ (at.parentElement).rowIndex, column: at.cellIndex };
    // Straight ahead first, else the nearest one on that side.
    const ahead = places.map((place) => {
      const along = (place.row - from.row) * step[0] + (place.column - from.column) * step[1];
      const aside = Math.abs((place.row - from.row) * step[1]) + Math.abs((place.column - from.column) * step[0]);
      return { cell: place.cell, along, cost: along + 3 * aside };
    }).filter(({ along }) => along > 0).sort((a, b) => a.cost - b.cost);
    if (ahead.length > 0) {
      table.querySelectorAll("button").forEach((cell) => { cell.tabIndex = -1; });
      ahead[0].cell.tabIndex = 0;
      ahead[0].cell.focus();
    }
  }

  /** Those that are new or gone in words, and then the others. */
  pairs() {
    const list = element("ul", { class: "plain-list pairs" });
    return cutList(this.links, mostPairs, (link) => {
      const { sign, edit } = shifts[shiftOf(link.left, link.right)];
      return element("li", {}, element("button", { type: "button", class: "edge-link", onclick: () => this.open(link, null) },
          element("span", { class: `sign ${edit}`, "aria-hidden": "true" }, sign),
          element("span", { class: "link-text" }, pathText(link.from, 60), element("span", { class: "arrow" }, " \u2192 "),
                  pathText(link.to, 60)),
          element("span", { class: `fact ${edit}` }, wordsOf(link))));
    }, list, "pair of areas", "pairs of areas");
  }

  /**
   * Shows the links of a cell.
   * @param {AreaLink} link
   * @param {HTMLElement | null} cell
   */
  open(link, cell) {
    const isOpen = cell?.getAttribute("aria-pressed") === "true";
    this.cells.forEach((each) => each.setAttribute("aria-pressed", String(each === cell && !isOpen)));
    this.panel.hidden = isOpen;
    if (isOpen) {
      return;
    }
    const { entries, whole } = this.entriesOf(link);
    const list = element("ul", { class: "plain-list" });
    this.panel.replaceChildren(
        element("h4", {}, pathText(link.from), element("span", { class: "arrow" }, link.from === link.to ? ", inside" : " \u2192 "),
                link.from !== link.to && pathText(link.to), " ",
                element("span", { class: "count" }, `${counted(link.left, "link")} before, ${plainNumber(link.right)} now`)),
        ...(whole
            ? cutList(entries, mostLinksOfCell, ({ from, to, edit }) => element("li", {}, this.guide.link(from, to, edit)), list, "link")
            : [list, element("p", { class: "note" }, "Some of them; the others are in the tree.")]));
    if (!whole) {
      list.append(...link.examples.map(([from, to]) => {
        const entry = this.data.entryOfLink(from, to);
        return element("li", {}, this.guide.link(from, to, entry < 0 ? (link.right > link.left ? 0 : 1) : this.data.edit(entry)));
      }));
    }
    this.panel.scrollIntoView({ block: "nearest" });
  }

  /**
   * The links between two areas that were added or removed, if the page can tell which those are:
   * the areas of files by a property are not in its data.
   * @param {AreaLink} link
   */
  entriesOf(link) {
    const { data } = this;
    const entries = [];
    const counts = [0, 0];
    if (this.property === null && this.depth !== null) {
      for (let file = 0; file < data.files; ++file) {
        if (areaOf(data.id(file), this.depth) !== link.from) {
          continue;
        }
        const own = data.entryOfFile[file];
        for (let entry = own + 1; entry < data.after(own); ++entry) {
          const target = data.targetOfEntry[entry];
          if (!data.isFile(target) || areaOf(data.id(target), this.depth) !== link.to) {
            continue;
          }
          const edit = data.edit(entry);
          counts[0] += edit === 0 ? 0 : 1;
          counts[1] += edit === 1 ? 0 : 1;
          if (edit < 2) {
            entries.push({ from: data.id(file), to: data.id(target), edit });
          }
        }
      }
    }
    return { entries: entries.sort((a, b) => a.edit - b.edit), whole: counts[0] === link.left && counts[1] === link.right };
  }

  /** Every area in numbers. */
  numbers() {
    const change = (/** @type {number[]} */ [left, right]) =>
        left === right ? plainNumber(left) : `${plainNumber(left)} \u2192 ${plainNumber(right)}`;
    const count = (/** @type {number} */ number, /** @type {string} */ edit, /** @type {string} */ sign) =>
        element("td", { class: number ? edit : "zero" }, number ? `${sign}${plainNumber(number)}` : "\u2013");
    const pairs = (/** @type {number[]} */ both) => element("td", { class: both[0] === both[1] ? "zero" : "moved" }, change(both));
    return element("details", { class: "fold" }, element("summary", {}, `${counted(this.areas.length, "area")} in numbers`),
        element("div", { class: "scroll" }, element("table", { class: "counts" },
            element("thead", {}, element("tr", {}, ...["Area", "Files", "Added", "Removed", "Properties changed", "Links inside", "to others", "from others"]
                .map((head) => element("th", { scope: "col" }, head)))),
            element("tbody", {}, ...this.areas.map((area) => element("tr", {},
                element("th", { scope: "row" }, pathText(area.area, 60)), pairs(area.files), count(area.added, "added", "+"),
                count(area.removed, "removed", "\u2212"), count(area.changed, "changed", "~"), pairs(area.inside),
                pairs(area.out), pairs(area.in)))))));
  }
}

/** @param {AreaLink} link */
function rankOf({ left, right }) {
  return { new: 0, gone: 1 }[/** @type {"new"} */ (shiftOf(left, right))] ?? 2;
}

/**
 * The leading folders of an ID.
 * @param {string} id
 * @param {number} depth
 */
function areaOf(id, depth) {
  return id.split("/").slice(0, -1).slice(0, depth).join("/") || ".";
}

/** @param {string} area */
function shortArea(area) {
  return element("bdi", {}, visibleText(area.length > 28 ? `\u2026${area.slice(-27)}` : area));
}
