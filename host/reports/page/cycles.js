// Cycles as rings, with the links that closed or opened them marked.
import { Comparison } from "./data.js";
import { badgeOf, editOf, edits } from "./edits.js";
import { cutList, Guide } from "./guide.js";
import { boxHeight, boxWidth, nodeBox, shape } from "./picture.js";
import { counted, element } from "./text.js";

/** @typedef {{edit: string, left: string[][], right: string[][], closing: string[][], opened: string[][], cycle: string[]}} Family */

const mostFamilies = 6;
const mostLinksOfCycle = 6;
const mostInRing = 14;
const mostNodes = 12;

/**
 * @param {any} cycles
 * @returns {string} what became of them, in words
 */
export function cycleWords(cycles) {
  const counts = edits.slice(0, 3).map(({ name }) =>
      cycles.families.filter((/** @type {Family} */ family) => family.edit === name).length);
  const words = ["new", "gone", "changed"].map((word, edit) => counts[edit] > 0 && `${counts[edit]} ${word}`)
      .filter(Boolean);
  if (cycles.unchanged > 0) {
    words.push(words.length > 0 ? `${cycles.unchanged} as before` : `${cycles.unchanged === 1 ? "the same" : "the same ones"} as before`);
  }
  return words.join(", ");
}

/**
 * @param {any} cycles
 * @param {Comparison} data
 * @param {Guide} guide
 * @returns {Node[]}
 */
export function cyclesOf(cycles, data, guide) {
  const order = edits.map(({ name }) => name);
  const families = /** @type {Family[]} */ (cycles.families).slice().sort((a, b) =>
      order.indexOf(a.edit) - order.indexOf(b.edit));
  return [element("p", { class: "caption" },
                  `${counted(cycles.left, "group")} of nodes that all reach each other before, ${cycles.right} now: ${cycleWords(cycles) || "none"}.`),
          ...cutList(families, mostFamilies, (family) => familyOf(family, data, guide), element("div", { class: "families" }), "cycle")];
}

/**
 * @param {Family} family
 * @param {Comparison} data
 * @param {Guide} guide
 */
function familyOf(family, data, guide) {
  const edit = editOf(family.edit);
  const size = (/** @type {string[][]} */ groups) => groups.map((group) => counted(group.length, "node")).join(" and ");
  const sizes = edit === 0 ? size(family.right) : edit === 1 ? size(family.left)
      : `${size(family.left)} \u2192 ${size(family.right)}`;
  const left = new Set(family.left.flat());
  const right = new Set(family.right.flat());
  const nodes = [["joined", 0, [...right].filter((id) => edit === 2 && !left.has(id))],
                 ["left", 1, [...left].filter((id) => edit === 2 && !right.has(id))]];
  const box = element("div", { class: "family" }, element("h4", {}, badgeOf(edit), ` ${sizes}`));
  if (family.cycle.length > 0) {
    const marked = edit === 1 ? { links: family.opened, edit: 1 } : { links: family.closing, edit: 0 };
    if (family.cycle.length <= mostInRing) {
      box.append(element("div", { class: "frame" }, element("div", { class: "scroll" }, ringOf(family.cycle, marked, data, guide))));
    }
    box.append(chainOf([...family.cycle, family.cycle[0]], marked, guide));
  }
  for (const [words, one, some] of /** @type {[string, number, string[]][]} */ (nodes)) {
    if (some.length > 0) {
      box.append(element("p", { class: "group-note" }, `${counted(some.length, "node")} ${words}: `),
                 ...cutList(some, mostNodes, (id) => element("li", {}, guide.node(id)),
                            element("ul", { class: `plain-list columns ${edits[one].name}` }), "node"));
    }
  }
  for (const [words, one, links] of /** @type {[string, number, string[][]][]} */ (
      [["New links inside", 0, family.closing], ["Gone links inside", 1, family.opened]])) {
    if (links.length > 1 || (links.length === 1 && family.cycle.length === 0)) {
      box.append(element("p", { class: "group-note" }, `${words}:`), ...cutList(
          links, mostLinksOfCycle, ([from, to]) => element("li", {}, guide.link(from, to, one)),
          element("ul", { class: "plain-list" }), "link"));
    }
  }
  return box;
}

/** @typedef {{links: string[][], edit: number}} Marked */

/**
 * @param {Marked} marked
 * @param {string} from
 * @param {string} to
 */
function isMarked(marked, from, to) {
  return marked.links.some(([upstream, downstream]) => upstream === from && downstream === to);
}

/**
 * A path in words, one node after the other.
 * @param {string[]} ids
 * @param {Marked} marked
 * @param {Guide} guide
 */
export function chainOf(ids, marked, guide) {
  const list = element("ol", { class: "chain" });
  ids.forEach((id, i) => {
    const isNew = i > 0 && isMarked(marked, ids[i - 1], id);
    const { name, sign } = edits[marked.edit];
    list.append(element("li", { class: isNew ? name : "" },
        i > 0 && element("span", { class: "step" }, isNew ? `${sign} \u2192 ` : "\u2192 ",
                         isNew && element("span", { class: "unseen" }, `by the ${name} link `)),
        guide.node(id)));
  });
  return list;
}

/**
 * Hidden from screen readers, since the chain below it says the same.
 * @param {string[]} cycle
 * @param {Marked} marked
 * @param {Comparison} data
 * @param {Guide} guide
 */
function ringOf(cycle, marked, data, guide) {
  const count = cycle.length;
  const width = 640;
  const [rx, ry] = [count === 1 ? 0 : 205, count < 3 ? 0 : 34 + 15 * count];
  const centres = cycle.map((_, i) => {
    const angle = 2 * Math.PI * i / count - (count < 3 ? Math.PI : Math.PI / 2);
    return { x: width / 2 + rx * Math.cos(angle), y: ry * Math.sin(angle) };
  });
  const top = Math.min(...centres.map(({ y }) => y)) - boxHeight / 2 - 34;
  const height = Math.max(...centres.map(({ y }) => y)) + boxHeight / 2 + 34 - top;
  const svg = shape("svg", { class: "picture ring", viewBox: `0 ${top} ${width} ${height}`, width, height, "aria-hidden": "true" });
  cycle.forEach((id, i) => {
    const next = cycle[(i + 1) % count];
    const edit = isMarked(marked, id, next) ? marked.edit : 3;
    svg.append(count === 1 ? loopAt(centres[0], edit) : arcBetween(centres[i], centres[(i + 1) % count], edit));
  });
  cycle.forEach((id, i) => {
    const node = data.nodeWithID(id);
    if (node >= 0) {
      svg.append(nodeBox(data, node, centres[i].x - boxWidth / 2, centres[i].y - boxHeight / 2, false,
                         data.isFile(node) ? () => guide.follow(data.entryOfFile[node]) : null));
    }
  });
  return svg;
}

/** @typedef {{x: number, y: number}} Point */

/**
 * Where a line from the box's centre to `to` leaves the box.
 * @param {Point} centre
 * @param {Point} to
 * @param {number} gap
 */
function borderOf(centre, to, gap) {
  const [dx, dy] = [to.x - centre.x, to.y - centre.y];
  const scale = Math.min((boxWidth / 2 + gap) / Math.max(Math.abs(dx), 1e-6), (boxHeight / 2 + gap) / Math.max(Math.abs(dy), 1e-6));
  return { x: centre.x + dx * scale, y: centre.y + dy * scale };
}

/**
 * @param {number} edit
 * @param {string} path
 * @param {Point} tip
 * @param {number} angle of the tip, in degrees
 * @param {Point} middle
 */
function arrow(edit, path, tip, angle, middle) {
  const { name, sign } = edits[edit];
  const made = shape("g", { class: `edge ${name}` }, shape("path", { class: "curve", d: path }),
                     shape("path", { class: "tip", d: "M-7 -4L1 0L-7 4Z", transform: `translate(${tip.x} ${tip.y}) rotate(${angle})` }));
  if (edit !== 3) {
    made.append(shape("circle", { class: "dot", cx: middle.x, cy: middle.y, r: 8 }),
                shape("text", { class: "edge-sign", x: middle.x, y: middle.y + 4, "text-anchor": "middle" }, sign));
  }
  return made;
}

/**
 * @param {Point} from
 * @param {Point} to
 * @param {number} edit
 */
function arcBetween(from, to, edit) {
  const [dx, dy] = [to.x - from.x, to.y - from.y];
  const length = Math.hypot(dx, dy);
  const bend = Math.min(44, length / 5);
  // The ring runs clockwise, so that its outside is on the left of each arc.
  const control = { x: (from.x + to.x) / 2 + dy / length * bend, y: (from.y + to.y) / 2 - dx / length * bend };
  const [start, end] = [borderOf(from, control, 2), borderOf(to, control, 5)];
  const angle = Math.atan2(end.y - control.y, end.x - control.x) * 180 / Math.PI;
  return arrow(edit, `M${start.x} ${start.y}Q${control.x} ${control.y} ${end.x} ${end.y}`, end, angle,
               { x: (start.x + 2 * control.x + end.x) / 4, y: (start.y + 2 * control.y + end.y) / 4 });
}

/**
 * @param {Point} at
 * @param {number} edit
 */
function loopAt({ x, y }, edit) {
  const [right, top] = [x + boxWidth / 2, y - boxHeight / 2];
  return arrow(edit, `M${right} ${y}C${right + 50} ${y} ${right + 30} ${top - 30} ${right - 30} ${top - 4}`,
               { x: right - 30, y: top - 4 }, 155, { x: right + 26, y: top - 8 });
}
