// A line of the tree.
import { Comparison } from "./data.js";
import { edits, signOf, tallyOf } from "./edits.js";
import { clipped, element, graphText, pathText, plainNumber, visibleText } from "./text.js";
import { View } from "./view.js";

/** Deeper lines are not indented further. */
const mostIndents = 12;

/**
 * @param {Comparison} data
 * @param {View} view
 * @param {number} entry
 * @returns {(Node | null)[]}
 */
function labelOf(data, view, entry) {
  if (entry === 0) {
    return [element("span", { class: "whole-graph" }, "Overview")];
  }
  const group = data.isGroup(entry);
  const node = group ? data.targetOfEntry[entry] : data.fileOfEntry[entry];
  const id = data.id(node);
  const name = data.name(node);
  const parts = [];
  if (group) {
    parts.push(element("span", { class: "arrow", "aria-hidden": "true" }, "\u2192"));
  }
  const text = pathText(group ? id : view.folders.nameOfFile(node));
  text.title = visibleText(clipped(id, 1000));
  parts.push(text);
  const oldID = group ? undefined : data.oldIDs.get(id);
  if (oldID !== undefined) {
    parts.push(element("span", { class: "other-name" }, "\u2190 ", pathText(oldID)));
  }
  for (const values of data.tellingValues.get(entry) ?? []) {
    const [before, after] = values.map((value) => value === null ? null : graphText(clipped(value, 60)));
    parts.push(element("span", { class: "other-name telling" },
                       ...(before && after ? [before, " \u2192 ", after] : [`${edits[before ? 1 : 0].sign} `, before ?? after])));
  }
  if (name !== "" && !id.endsWith(name)) {
    parts.push(element("span", { class: "other-name" }, graphText(clipped(name, 60))));
  }
  if (!data.isFile(node)) {
    parts.push(element("span", { class: "tag" }, graphText(clipped(data.typeName(node), 30))));
  }
  if (data.isMoved(entry)) {
    parts.push(element("span", { class: "tag" }, "moved"));
  }
  parts.push(group ? tallyOf(data.rowChanges(entry), "Dependencies")
                   : tallyOf(data.groupChanges(entry), "Links"));
  return parts;
}

/**
 * @param {View} view
 * @param {number} folder
 * @returns {(Node | null)[]}
 */
function folderLabelOf(view, folder) {
  const text = pathText(view.folders.nameOf(folder));
  text.title = visibleText(clipped(view.folders.paths[folder], 1000));
  const [added, removed, ...links] = view.folders.tallies[folder];
  return [text, element("span", { class: "count", title: "Files in it that are shown" }, plainNumber(view.shownFilesIn[folder])),
          tallyOf([added, removed], "Files"), tallyOf(links, "Links")];
}

/**
 * @param {Comparison} data
 * @param {View} view
 * @param {number} line
 * @param {number} active the active entry or folder
 * @returns {HTMLElement}
 */
export function lineElement(data, view, line, active) {
  const place = view.lines[line];
  const file = data.fileOfEntry[place];
  const folder = place < 0;
  const shown = folder || view.shows(place);
  const parent = view.parentOf(place);
  let level = place === 0 ? 1 : 2;
  for (let above = parent; above !== 0; above = view.parentOf(above)) {
    ++level;
  }
  const below = view.below(place);
  const group = !folder && data.isGroup(place);
  const kind = folder ? "folder-line" : group ? "group-line" : place === 0 ? "first-line" : "file-line";
  const made = element("div", {
    class: `line ${kind}${shown ? "" : " context"}`,
    role: "treeitem",
    id: `line-${place}`,
    "aria-level": level,
    "aria-selected": place === active ? "true" : "false",
    "aria-setsize": place === 0 ? 1 : group ? view.shownGroups(file) : parent === 0 ? view.shownAtTop : view.shownIn[~parent],
    "aria-posinset": place === 0 ? 1 : folder ? view.rankOfFolder[~place]
        : group ? line - view.lineOfFile[file] : view.rankOfFile[file],
    "aria-expanded": place === 0 ? "true" : below > 0 && String(view.isOpen(place)),
    "data-line": line,
  });
  made.style.paddingLeft = `${6 + 14 * Math.max(0, Math.min(mostIndents, level - 2)) + (group ? 12 : 0)}px`;
  made.append(element("span", {
    class: below > 0 ? `twisty${view.isOpen(place) ? " open" : ""}` : "twisty leaf",
    "aria-hidden": "true",
  }));
  if (folder) {
    const edit = view.folders.editOf(~place);
    made.append(edit < 2 ? signOf(edit) : element("span", { class: "sign" }));
  } else if (shown) {
    made.append(signOf(data.edit(place)));
  } else if (place !== 0) {
    made.append(element("span", { class: "sign context", title: "Hidden by the filters; listed for what is below" }));
  }
  made.append(...(folder ? folderLabelOf(view, ~place) : labelOf(data, view, place)).filter((part) => part !== null));
  return made;
}
