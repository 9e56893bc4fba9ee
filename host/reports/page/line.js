// A line of the tree.
import { Comparison } from "./data.js";
import { signOf, tallyOf } from "./edits.js";
import { clipped, element, graphText, pathText, visibleText } from "./text.js";
import { View } from "./view.js";

/**
 * @param {Comparison} data
 * @param {number} entry
 * @returns {Node[]}
 */
function labelOf(data, entry) {
  if (entry === 0) {
    return [element("span", { class: "whole-graph" }, "Whole graph")];
  }
  const group = data.isGroup(entry);
  const node = group ? data.targetOfEntry[entry] : data.fileOfEntry[entry];
  const id = data.id(node);
  const name = data.name(node);
  const parts = [];
  if (group) {
    parts.push(element("span", { class: "arrow", "aria-hidden": "true" }, "\u2192"));
  }
  const text = pathText(id);
  text.title = visibleText(clipped(id, 1000));
  parts.push(text);
  if (name !== "" && !id.endsWith(name)) {
    parts.push(element("span", { class: "other-name" }, graphText(clipped(name, 60))));
  }
  if (!data.isFile(node)) {
    parts.push(element("span", { class: "tag" }, graphText(clipped(data.typeName(node), 30))));
  }
  if (data.isMoved(entry)) {
    parts.push(element("span", { class: "tag" }, "moved"));
  }
  const tally = group ? tallyOf(data.rowChanges(entry), "Dependencies")
                      : tallyOf(data.groupChanges(entry), "Groups of dependencies");
  if (tally) {
    parts.push(tally);
  }
  return parts;
}

/**
 * @param {Comparison} data
 * @param {View} view
 * @param {number} line
 * @param {number} active the active entry
 * @returns {HTMLElement}
 */
export function lineElement(data, view, line, active) {
  const entry = view.lines[line];
  const group = data.isGroup(entry);
  const file = data.fileOfEntry[entry];
  const shown = view.shows(entry);
  const level = entry === 0 ? 1 : group ? 3 : 2;
  const groups = group || entry === 0 ? 0 : view.shownGroups(file);
  const made = element("div", {
    class: `line level-${level}${shown ? "" : " context"}`,
    role: "treeitem",
    id: `line-${entry}`,
    "aria-level": level,
    "aria-selected": entry === active ? "true" : "false",
    "aria-setsize": level === 1 ? 1 : level === 2 ? view.shownFiles : view.shownGroups(file),
    "aria-posinset": level === 1 ? 1 : level === 2 ? view.rankOfFile[file]
                                                   : line - view.lineOfFile[file],
    "aria-expanded": entry === 0 ? "true" : groups > 0 && String(view.open[file] === 1),
    "data-line": line,
  });
  made.append(element("span", {
    class: groups > 0 ? `twisty${view.open[file] ? " open" : ""}` : "twisty leaf",
    "aria-hidden": "true",
  }));
  if (shown) {
    made.append(signOf(data.edit(entry)));
  } else if (entry !== 0) {
    made.append(element("span", { class: "sign context", title: "Hidden by the filters; listed for what is below" }));
  }
  made.append(...labelOf(data, entry));
  return made;
}
