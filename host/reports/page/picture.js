// The neighbourhood of a file as a picture: what needs it, the file, what it needs.
import { Comparison } from "./data.js";
import { edits, unchangedEdit } from "./edits.js";
import { beginOfName } from "./folders.js";
import { clipped, cutFromLeft, element, plainNumber, visibleText } from "./text.js";

/** @typedef {{entry: number, node: number, edit: number}} Neighbour a group and its other end */

const width = 760;
export const boxWidth = 184;
export const boxHeight = 28;
const step = 36;
const margin = 26;  // above the boxes, for headings
const mostBoxes = 10;
const fewOfEdit = 3;
const roomInBox = 25;

/**
 * @param {string} name
 * @param {Record<string, string | number | undefined>} attributes
 * @param {...(Node | string)} content
 * @returns {SVGElement}
 */
export function shape(name, attributes, ...content) {
  const made = document.createElementNS("http://www.w3.org/2000/svg", name);
  for (const [key, value] of Object.entries(attributes)) {
    if (value !== undefined) {
      made.setAttribute(key, String(value));
    }
  }
  made.append(...content);
  return made;
}

/**
 * By edit, then by ID: what did not change comes last.
 * @param {Comparison} data
 * @param {Neighbour[]} neighbours
 */
function sorted(data, neighbours) {
  return neighbours.sort((a, b) => a.edit - b.edit || (data.id(a.node) < data.id(b.node) ? -1 : 1));
}

/**
 * Those that the picture has room for: of each edit a few, so that no edit hides another, and then the
 * first ones.
 * @param {Neighbour[]} neighbours
 * @param {number} room
 */
function chosen(neighbours, room) {
  const ranks = [0, 0, 0, 0];
  const ranked = neighbours.map((each) => {
    const rank = ranks[each.edit]++;
    return { each, late: each.edit === unchangedEdit ? 2 : rank < fewOfEdit ? 0 : 1 };
  });
  const some = new Set(ranked.sort((a, b) => a.late - b.late).slice(0, room).map(({ each }) => each));
  return neighbours.filter((each) => some.has(each));
}

/**
 * @param {Comparison} data
 * @param {number} file
 * @returns {{needsIt: Neighbour[], itNeeds: Neighbour[]}}
 */
export function neighboursOf(data, file) {
  const needsIt = [...data.groupsTo(file)].map(
      (entry) => ({ entry, node: data.fileOfEntry[entry], edit: data.edit(entry) }));
  const itNeeds = [];
  const own = data.entryOfFile[file];
  for (let entry = own + 1; entry < data.after(own); ++entry) {
    itNeeds.push({ entry, node: data.targetOfEntry[entry], edit: data.edit(entry) });
  }
  return { needsIt: sorted(data, needsIt), itNeeds: sorted(data, itNeeds) };
}

/**
 * @param {string} id
 * @returns {string} its name, or all of an ID in `<` and `>`
 */
function labelOfNode(id) {
  return cutFromLeft(id.startsWith("<") ? id : id.slice(beginOfName(id)), roomInBox);
}

/**
 * The edit of a node, which only files have.
 * @param {Comparison} data
 * @param {number} node
 */
function editOfNode(data, node) {
  return data.isFile(node) ? data.edit(data.entryOfFile[node]) : null;
}

/**
 * @param {Comparison} data
 * @param {number} node
 * @param {number} x
 * @param {number} y
 * @param {boolean} middle
 * @param {(() => void) | null} go
 */
export function nodeBox(data, node, x, y, middle, go) {
  const edit = editOfNode(data, node);
  const id = data.id(node);
  const sign = edit === null || edit === unchangedEdit ? "" : `${edits[edit].sign} `;
  const words = edit === null ? data.typeName(node) : edits[edit].name;
  const box = shape("g", {
    class: `box ${edit === null ? "other" : edits[edit].name}${middle ? " middle" : ""}${go ? " link" : ""}`,
    transform: `translate(${x} ${y})`,
  });
  box.append(shape("title", {}, `${visibleText(clipped(id, 400))} (${words})`));
  box.append(shape("rect", { width: boxWidth, height: boxHeight, rx: edit === null ? 14 : 5 }));
  box.append(shape("text", { x: boxWidth / 2, y: boxHeight / 2 + 4.5, "text-anchor": "middle" },
                   sign && shape("tspan", { class: "box-sign" }, sign),
                   shape("tspan", {}, visibleText(labelOfNode(id)))));
  if (go) {
    box.addEventListener("click", go);
  }
  return box;
}

/**
 * @param {number} edit
 * @param {[number, number]} from
 * @param {[number, number]} to
 * @param {boolean} signAtBegin where the line is apart from others
 */
function edge(edit, [fromX, fromY], [toX, toY], signAtBegin) {
  const { name, sign } = edits[edit];
  const middle = (fromX + toX) / 2;
  const made = shape("g", { class: `edge ${name}` });
  const tip = toX - 7;
  made.append(shape("path", {
    class: "curve",
    d: `M${fromX} ${fromY}C${middle} ${fromY} ${middle} ${toY} ${tip} ${toY}`,
  }));
  made.append(shape("path", { class: "tip", d: `M${tip - 1} ${toY - 4}L${toX} ${toY}L${tip - 1} ${toY + 4}Z` }));
  if (edit !== unchangedEdit) {
    const [x, y] = signAtBegin ? [fromX + 15, fromY] : [toX - 22, toY];
    made.append(shape("circle", { class: "dot", cx: x, cy: y, r: 7 }));
    made.append(shape("text", { class: "edge-sign", x, y: y + 4, "text-anchor": "middle" }, sign));
  }
  return made;
}

/**
 * The places of a column's boxes; if not everything fits, the last place is for the rest.
 * @param {number} count
 * @param {number} height
 */
function column(count, height) {
  const boxes = count > mostBoxes ? mostBoxes : count;
  const top = margin + (height - margin - (boxes * step - (step - boxHeight))) / 2;
  return { boxes, drawn: count > mostBoxes ? mostBoxes - 1 : count, top };
}

/**
 * How many of each edit are not drawn.
 * @param {Neighbour[]} all
 * @param {Neighbour[]} drawn
 */
function restOf(all, drawn) {
  const left = edits.map((_, edit) => [all, drawn].map((some) => some.filter((each) => each.edit === edit).length))
      .map(([every, shown], edit) => every > shown && `${edits[edit].sign}${plainNumber(every - shown)}`);
  return `and ${left.filter(Boolean).join("  ")} more`;
}

/**
 * Hidden from screen readers, since the lists beside it say the same.
 * @param {Comparison} data
 * @param {number} file
 * @param {{needsIt: Neighbour[], itNeeds: Neighbour[]}} neighbours
 * @param {(entry: number) => void} follow
 * @returns {SVGElement}
 */
export function pictureOf(data, file, neighbours, follow) {
  const { needsIt, itNeeds } = neighbours;
  const most = Math.max(1, Math.min(mostBoxes, Math.max(needsIt.length, itNeeds.length)));
  const height = margin + most * step + 4;
  const svg = shape("svg", {
    class: "picture", viewBox: `0 0 ${width} ${height}`, width, height, "aria-hidden": "true",
  });
  const middleX = (width - boxWidth) / 2;
  const middleY = margin + (height - margin - boxHeight) / 2;
  for (const [text, x] of /** @type {[string, number][]} */ (
      [["needs it", boxWidth / 2], ["this file", width / 2], ["it needs", width - boxWidth / 2]])) {
    svg.append(shape("text", { class: "heading", x, y: 14, "text-anchor": "middle" }, text));
  }
  const lines = shape("g", {});
  const boxes = shape("g", {});
  for (const [list, x, inward] of /** @type {[Neighbour[], number, boolean][]} */ (
      [[needsIt, 0, true], [itNeeds, width - boxWidth, false]])) {
    const { boxes: count, drawn, top } = column(list.length, height);
    const some = chosen(list, drawn);
    for (let i = 0; i < count; ++i) {
      const y = top + i * step;
      const port = middleY + boxHeight / 2 + (i - (count - 1) / 2) * Math.min(2.2, 20 / count);
      if (i === drawn) {
        boxes.append(shape("text", { class: "more", x: x + boxWidth / 2, y: y + boxHeight / 2 + 4, "text-anchor": "middle" },
                           restOf(list, some)));
        continue;
      }
      const { node, edit } = some[i];
      const outer = y + boxHeight / 2;
      lines.prepend(inward ? edge(edit, [boxWidth, outer], [middleX, port], true)
                           : edge(edit, [middleX + boxWidth, port], [x, outer], false));
      boxes.append(nodeBox(data, node, x, y, false,
                           data.isFile(node) ? () => follow(data.entryOfFile[node]) : null));
    }
    if (list.length === 0) {
      boxes.append(shape("text", { class: "more", x: x + boxWidth / 2, y: middleY + boxHeight / 2 + 4, "text-anchor": "middle" },
                         inward ? "nothing needs it" : "it needs nothing"));
    }
  }
  boxes.append(nodeBox(data, file, middleX, middleY, true, null));
  svg.append(lines, boxes);
  return svg;
}

/**
 * The meaning of the lines.
 * @returns {HTMLElement}
 */
export function legend() {
  return element("p", { class: "legend" }, ...edits.map(({ name, sign }) => {
    const sample = shape("svg", { class: `edge ${name}`, width: 34, height: 10, "aria-hidden": "true" },
                         shape("path", { class: "curve", d: "M1 5H33" }));
    return element("span", {}, sample, ` ${sign} ${name}`);
  }));
}
