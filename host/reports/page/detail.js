// One entry in full: its name and edit, its tables with both sides, and a file's neighbourhood.
import { Comparison } from "./data.js";
import { badgeOf, edits, signOf } from "./edits.js";
import { overviewOf } from "./overview.js";
import { legend, neighboursOf, pictureOf } from "./picture.js";
import { counted, element, graphText, pathText, plainNumber, wholeText } from "./text.js";
import { View } from "./view.js";

/** @typedef {import("./data.js").Row} Row */
/** @typedef {import("./data.js").Table} Table */
/** @typedef {import("./picture.js").Neighbour} Neighbour */

const longList = 60;
const longTable = 500;

export class DetailPane {
  /**
   * @param {HTMLElement} box
   * @param {Comparison} data
   * @param {View} view
   * @param {(entry: number) => void} follow
   * @param {() => void} unfilter
   */
  constructor(box, data, view, follow, unfilter) {
    this.box = box;
    this.data = data;
    this.view = view;
    this.follow = follow;
    this.unfilter = unfilter;
    this.entry = -1;
  }

  /** @param {number} entry */
  async show(entry) {
    const isNew = entry !== this.entry;
    this.entry = entry;
    const detail = await this.data.detail(entry);
    if (entry !== this.entry) {
      return;  // the reader has gone on
    }
    const file = this.data.fileOfEntry[entry];
    const parts = [this.heading(entry), ...this.ends(entry, detail.ends)];
    if (entry === 0) {
      parts.push(...overviewOf(this.data, this.follow));
    }
    parts.push(...this.tables(entry, detail.tables));
    if (entry !== 0 && !this.data.isGroup(entry)) {
      parts.push(...this.neighbourhood(file));
    }
    this.box.replaceChildren(...parts);
    if (isNew) {
      this.box.scrollTop = 0;
    }
  }

  /** @param {number} entry */
  heading(entry) {
    const { data, view } = this;
    const about = element("p", { class: "about" });
    if (entry !== 0 || data.edit(0) !== 3) {
      about.append(badgeOf(data.edit(entry)));
    }
    if (data.isMoved(entry)) {
      about.append(element("span", { class: "tag" }, "moved"));
    }
    if (!data.isShown(entry, view.choice)) {
      about.append(element("span", { class: "tag" }, "hidden by the filters"));
    }
    const file = data.fileOfEntry[entry];
    if (entry === 0) {
      return element("header", { class: "of" }, element("h2", {}, "Whole graph"), about);
    }
    if (!data.isGroup(entry)) {
      about.append(...this.nameAndType(file));
      return element("header", { class: "of" },
                     element("h2", {}, wholeText(data.id(file), pathText)), about);
    }
    const target = data.targetOfEntry[entry];
    about.append(...this.nameAndType(target, "the latter "));
    return element("header", { class: "of" },
                   element("h2", { class: "pair" }, this.nodeLink(file, entry), 
                           element("span", { class: "needs" }, " needs "), this.nodeLink(target, entry)),
                   about);
  }

  /**
   * A node's name and type, unless its ID implies them.
   * @param {number} node
   * @param {string} whose
   */
  nameAndType(node, whose = "") {
    const parts = [];
    const name = this.data.name(node);
    if (name !== "" && !this.data.id(node).endsWith(name)) {
      parts.push(element("span", { class: "fact" }, `${whose}named `, wholeText(name)));
    }
    if (!this.data.isFile(node)) {
      parts.push(element("span", { class: "fact" }, `${whose}of type `,
                         wholeText(this.data.typeName(node))));
    }
    return parts;
  }

  /**
   * @param {number} node
   * @param {number} from the entry that is shown
   */
  nodeLink(node, from) {
    const { data } = this;
    if (!data.isFile(node) || data.entryOfFile[node] === from) {
      return pathText(data.id(node));
    }
    return element("a", {
      href: `#file=${encodeURIComponent(data.id(node).slice(0, 2000))}`,
      onclick: (/** @type {Event} */ event) => {
        event.preventDefault();
        this.follow(data.entryOfFile[node]);
      },
    }, pathText(data.id(node)));
  }

  /**
   * The names and types on both sides, if they differ.
   * @param {number} entry
   * @param {import("./data.js").End[][] | null} ends
   * @returns {Node[]}
   */
  ends(entry, ends) {
    if (!ends) {
      return [];
    }
    const words = ends[0].length === 1 ? ["The file"] : ["The file that needs", "What it needs"];
    const rows = [];
    for (let end = 0; end < ends[0].length; ++end) {
      for (const key of /** @type {["name", "type"]} */ (["name", "type"])) {
        const [left, right] = [ends[0][end][key], ends[1][end][key]];
        if (left !== right) {
          rows.push(element("tr", { class: "changed" }, element("td", {}, signOf(2)),
                            element("th", { scope: "row" }, `${words[end]}: ${key}`),
                            element("td", {}, wholeText(left)), element("td", {}, wholeText(right))));
        }
      }
    }
    return [element("section", {}, element("h3", {}, "Name and type"),
                    table(["", "", "Old", "New"], rows))];
  }

  /**
   * @param {number} entry
   * @param {Table[]} tables
   * @returns {Node[]}
   */
  tables(entry, tables) {
    const made = [];
    let hidden = 0;
    for (const each of tables) {
      const rows = each.rows.filter((row) => (row.choices >> this.view.choice) & 1);
      hidden += each.rows.length - rows.length;
      if (rows.length > 0) {
        made.push(this.table(each.labels, rows));
      }
    }
    const all = tables.reduce((sum, each) => sum + each.rows.length, 0);
    if (hidden > 0) {
      made.push(element("p", { class: "note" },
                        `${counted(hidden, "row is", "rows are")} hidden by the filters. `,
                        element("button", { type: "button", class: "quiet", onclick: this.unfilter },
                                "Switch the filters off")));
    } else if (all === 0 && entry !== 0 && !this.data.isGroup(entry)) {
      made.push(element("p", { class: "note" }, "The file has no properties."));
    }
    if (this.data.isGroup(entry) && this.data.changedWithoutRow(entry) && hidden === 0) {
      made.push(element("p", { class: "note" }, "No dependency was added or removed; the name or type of an end changed."));
    }
    return made;
  }

  /**
   * @param {string[]} labels of the name and the value
   * @param {Row[]} rows
   */
  table(labels, rows) {
    const lines = labels[0].split("\n");
    const nameLabel = lines[lines.length - 1];
    const valueLabel = labels[1].split("\n").pop() ?? "";
    const caption = lines.length > 1 ? lines[0] : "";
    const sameNames = rows.every(({ sides: [left, right] }) => !left || !right || left.name === right.name);
    const of = (/** @type {string} */ label, /** @type {string} */ side) =>
        label === "" ? side : `${label}, ${side.toLowerCase()}`;
    const heads = sameNames
        ? ["", nameLabel, of(valueLabel, "Old"), of(valueLabel, "New")]
        : ["", of(nameLabel, "Old"), of(valueLabel, "Old"), of(nameLabel, "New"), of(valueLabel, "New")];
    const box = element("section", {}, caption && element("h3", {}, graphText(caption)));
    const drawn = rows.slice(0, longTable).map((row) => tableRow(row, sameNames));
    const made = table(heads, drawn);
    box.append(made);
    if (rows.length > longTable) {
      const more = element("button", { type: "button", class: "quiet" },
                           `Show ${counted(rows.length - longTable, "more row", "more rows")}`);
      more.addEventListener("click", () => {
        made.tBodies[0].append(...rows.slice(longTable).map((row) => tableRow(row, sameNames)));
        more.remove();
      });
      box.append(more);
    }
    return box;
  }

  /** @param {number} file */
  neighbourhood(file) {
    const neighbours = neighboursOf(this.data, file);
    const { needsIt, itNeeds } = neighbours;
    return [element("section", { class: "neighbourhood" },
                    element("h3", {}, "Neighbourhood"),
                    element("div", { class: "frame" },
                            pictureOf(this.data, file, neighbours, this.follow), legend()),
                    element("div", { class: "lists" },
                            this.list("Needs it", "Nothing needs it.", needsIt),
                            this.list("It needs", "It needs nothing.", itNeeds)))];
  }

  /**
   * @param {string} heading
   * @param {string} none
   * @param {Neighbour[]} neighbours
   */
  list(heading, none, neighbours) {
    const box = element("div", { class: "list" },
                        element("h4", {}, heading, " ",
                                element("span", { class: "count" }, plainNumber(neighbours.length))));
    if (neighbours.length === 0) {
      box.append(element("p", { class: "note" }, none));
      return box;
    }
    const items = (/** @type {Neighbour[]} */ some) => some.map(({ entry, node, edit }) => element(
        "li", {}, element("a", {
          class: "edge-link", href: "#", title: "Show the dependencies",
          onclick: (/** @type {Event} */ event) => {
            event.preventDefault();
            this.follow(entry);
          },
        }, signOf(edit), pathText(this.data.id(node), 80))));
    const list = element("ul", {}, ...items(neighbours.slice(0, longList)));
    box.append(list);
    if (neighbours.length > longList) {
      const more = element("button", { type: "button", class: "quiet" },
                           `Show all ${plainNumber(neighbours.length)}`);
      more.addEventListener("click", () => {
        list.append(...items(neighbours.slice(longList)));
        more.remove();
      });
      box.append(more);
    }
    return box;
  }
}

/**
 * @param {string[]} heads
 * @param {HTMLElement[]} rows
 * @returns {HTMLTableElement}
 */
function table(heads, rows) {
  return /** @type {HTMLTableElement} */ (element(
      "table", { class: "rows" },
      element("thead", {}, element("tr", {}, ...heads.map((head) => head === ""
          ? element("td", {}) : element("th", { scope: "col" }, graphText(head))))),
      element("tbody", {}, ...rows)));
}

/**
 * @param {Row} row
 * @param {boolean} sameNames
 */
function tableRow(row, sameNames) {
  const [left, right] = row.sides;
  const cells = [element("td", {}, signOf(row.edit))];
  if (sameNames) {
    cells.push(element("td", {}, wholeText((right ?? left)?.name ?? "")));
  }
  for (const side of [left, right]) {
    if (!sameNames) {
      cells.push(element("td", { class: side ? "" : "absent" }, side && wholeText(side.name)));
    }
    cells.push(element("td", { class: side ? "" : "absent", "aria-label": side ? false : "absent" },
                       side && (side.value === "" ? element("i", { class: "empty" }, "empty")
                                                  : wholeText(side.value))));
  }
  return element("tr", { class: edits[row.edit].name }, ...cells);
}
