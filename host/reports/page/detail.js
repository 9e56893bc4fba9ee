// One entry in full: its name and edit, its tables with both sides, and a file's neighbourhood.
import { Comparison } from "./data.js";
import { badgeOf, edits, signOf, tallyOf, unchangedEdit } from "./edits.js";
import { cutList, Guide } from "./guide.js";
import { mostChanged } from "./overview.js";
import { legend, neighboursOf, pictureOf } from "./picture.js";
import { clipped, counted, element, graphText, pathText, plainNumber, wholeText } from "./text.js";
import { View } from "./view.js";

/** @typedef {import("./data.js").Row} Row */
/** @typedef {import("./data.js").Table} Table */
/** @typedef {import("./picture.js").Neighbour} Neighbour */

const longList = 24;
const longTable = 500;
const mostChangedLinks = 12;

export class DetailPane {
  /**
   * @param {HTMLElement} box
   * @param {Comparison} data
   * @param {View} view
   * @param {Guide} guide
   * @param {() => void} unfilter
   */
  constructor(box, data, view, guide, unfilter) {
    this.box = box;
    this.data = data;
    this.view = view;
    this.guide = guide;
    this.unfilter = unfilter;
    this.place = -1;
  }

  /** @param {number} place an entry or folder */
  async show(place) {
    this.place = place;
    if (place < 0) {
      this.box.replaceChildren(...this.folder(~place));
      return;
    }
    const detail = await this.data.detail(place);
    if (place !== this.place) {
      return;  // the reader has gone on
    }
    const parts = place === 0 ? [] : [this.heading(place), ...this.ends(place, detail.ends)];
    if (place !== 0 && !this.data.isGroup(place)) {
      parts.push(...this.neighbourhood(place));
    }
    this.box.replaceChildren(...parts, ...this.tables(place, detail.tables));
    const picture = this.box.querySelector(".frame .scroll");
    if (picture) {
      picture.scrollLeft = (picture.scrollWidth - picture.clientWidth) / 2;
    }
  }

  /** @param {number} folder */
  folder(folder) {
    const { folders } = this.view;
    const [added, removed, ...links] = folders.tallies[folder];
    const most = mostChanged(this.data, this.guide, folders.filesIn(folder));
    const about = element("p", { class: "about" }, element("span", { class: "fact" }, counted(folders.files[folder], "file")),
                          tallyOf([added, removed], "Files"));
    if (links.some((count) => count > 0)) {
      about.append(element("span", { class: "fact" }, "links of its files"), tallyOf(links, "Links") ?? "");
    }
    return [element("header", { class: "of" }, element("h2", {}, wholeText(folders.paths[folder], pathText)), about),
            most ?? element("p", { class: "note" }, "No link of its files was added, removed or changed.")];
  }

  /**
   * What differs in each link of a file.
   * @param {number} own the file's entry
   * @returns {Node[]}
   */
  changedLinks(own) {
    const { data } = this;
    const entries = Array.from({ length: data.after(own) - own - 1 }, (_, i) => own + 1 + i)
        .filter((entry) => data.edit(entry) !== unchangedEdit).sort((a, b) => data.edit(a) - data.edit(b) || a - b);
    if (entries.length === 0) {
      return [];
    }
    const parts = cutList(entries, mostChangedLinks, (entry) => {
      const item = element("li", {}, this.guide.to(entry, { class: "edge-link" }, signOf(data.edit(entry)),
                                                   pathText(data.id(data.targetOfEntry[entry]), 80)));
      data.detail(entry).then(({ tables }) => {
        const rows = tables.flatMap(({ labels, rows: some }) => some.filter((row) => row.edit !== unchangedEdit)
            .map((row) => rowInWords(row, data.edit(entry), labels[0].includes("\n") ? labels[0].split("\n")[0] : "")));
        item.append(...cutList(rows, 4, (row) => row, element("ul", { class: "link-rows" }), "dependency", "dependencies"));
      });
      return item;
    }, element("ul", { class: "plain-list changed-links" }), "link");
    return [element("section", {}, element("h3", {}, "What changed in its links ", element("span", { class: "count" }, plainNumber(entries.length))),
                    ...parts)];
  }

  /** @param {number} entry */
  heading(entry) {
    const { data, view } = this;
    const about = element("p", { class: "about" });
    about.append(badgeOf(data.edit(entry), data.isGroup(entry) ? "" : "properties "));
    if (data.isMoved(entry)) {
      about.append(element("span", { class: "tag" }, "moved"));
    }
    if (!data.isShown(entry, view.choice)) {
      about.append(element("span", { class: "tag" }, "hidden by the filters"));
    }
    const file = data.fileOfEntry[entry];
    if (!data.isGroup(entry)) {
      const oldID = data.oldIDs.get(data.id(file));
      if (oldID !== undefined) {
        about.append(element("span", { class: "fact" }, "\u2190 ", wholeText(oldID, pathText)));
      }
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
    return this.guide.to(data.entryOfFile[node], {}, pathText(data.id(node)));
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
    const made = table(heads, []);
    const [, ...more] = cutList(rows, longTable, (row) => tableRow(row, sameNames), made.tBodies[0], "row");
    box.append(made, ...more);
    return box;
  }

  /** @param {number} own a file's entry */
  neighbourhood(own) {
    const file = this.data.fileOfEntry[own];
    const neighbours = neighboursOf(this.data, file);
    const { needsIt, itNeeds } = neighbours;
    return [element("section", { class: "neighbourhood" },
                    element("h3", {}, "Neighbourhood"),
                    element("div", { class: "frame" }, element("div", { class: "scroll" },
                            pictureOf(this.data, file, neighbours, this.guide.follow)), legend())),
            ...this.changedLinks(own),
            element("section", { class: "lists" }, this.list("Needs it", "Nothing needs it.", needsIt),
                    this.list("It needs", "It needs nothing.", itNeeds))];
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
    box.append(...cutList(neighbours, longList, ({ entry, node, edit }) => element("li", {}, this.guide.to(
        entry, { class: "edge-link", title: "Show the dependencies" }, signOf(edit), pathText(this.data.id(node), 80))),
                          element("ul"), "link"));
    return box;
  }
}

/**
 * A row of a link's table on one line.
 * @param {Row} row
 * @param {number} linkEdit
 * @param {string} caption
 */
function rowInWords({ edit, sides: [left, right] }, linkEdit, caption) {
  const text = (/** @type {import("./data.js").Parameter | null} */ side) => side &&
      [side.name, side.value].filter(Boolean).map((part) => clipped(part, 80)).join(" \u2192 ");
  const [before, after] = [text(left), text(right)];
  return element("li", {}, edit !== linkEdit && signOf(edit), caption && element("span", { class: "caption" }, graphText(caption), " "),
                 ...(before && after && before !== after ? [graphText(before), element("b", {}, " \u21d2 "), graphText(after)]
                                                         : [graphText(after ?? before ?? "")]));
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
