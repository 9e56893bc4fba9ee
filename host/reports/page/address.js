// The address's fragment: which entry, and how the reader sees it.
import { Comparison } from "./data.js";
import { edits } from "./edits.js";
import { longID, partsOf } from "./guide.js";
import { View } from "./view.js";

/**
 * @param {Comparison} data
 * @param {View} view
 * @param {number} place an entry or folder
 * @returns {string}
 */
export function addressOf(data, view, place) {
  const parts = new URLSearchParams(place < 0 ? { folder: view.folders.paths[~place].slice(0, longID) } : partsOf(data, place));
  if (view.choice !== data.head.choice) {
    parts.set("hide", listOf(data.filters, view.choice));
  }
  if (view.only !== 0) {
    parts.set("only", listOf(edits, view.only));
  }
  if (view.query !== "") {
    parts.set("search", view.query.slice(0, longID));
  }
  return `#${parts}`;
}

/**
 * @param {{name: string}[]} all
 * @param {number} bits
 * @returns {string} the names of those whose bit is set
 */
function listOf(all, bits) {
  return all.filter((_, bit) => (bits >> bit) & 1).map(({ name }) => name).join(",");
}

/**
 * @param {{name: string}[]} all
 * @param {string | null} list of names
 */
function bitsOf(all, list) {
  const listed = (list ?? "").split(",");
  return all.reduce((bits, { name }, bit) => bits | (listed.includes(name) ? 1 << bit : 0), 0);
}

/**
 * Sets the view as the address says.
 * @param {string} address
 * @param {Comparison} data
 * @param {View} view
 * @returns {{place: number, missing: string[]}} the entry or folder, the nearest one if it does not
 *          exist, and then what the address asks for: a node or folder, or both ends of a link
 */
export function openAddress(address, data, view) {
  const parts = new URLSearchParams(address.replace(/^#/, ""));
  view.choice = parts.has("hide") ? bitsOf(data.filters, parts.get("hide")) : data.head.choice;
  view.only = bitsOf(edits, parts.get("only"));
  view.search(parts.get("search") ?? "");
  view.update();
  const number = parts.get("entry");
  if (number !== null) {
    const exists = /^\d+$/.test(number) && Number(number) < data.count;
    return { place: exists ? Number(number) : 0, missing: exists ? [] : [`entry ${number}`] };
  }
  const path = parts.get("folder");
  if (path !== null) {
    const folder = view.folders.byPath.get(path);
    return { place: folder === undefined ? 0 : ~folder, missing: folder === undefined ? [path] : [] };
  }
  const id = parts.get("file");
  if (id === null) {
    return { place: 0, missing: [] };
  }
  const file = data.fileWithID(id);
  if (file < 0) {
    return { place: 0, missing: [id] };
  }
  const needs = parts.get("needs");
  const entry = needs === null ? -1 : data.entryOfLink(id, needs);
  return needs === null || entry >= 0 ? { place: entry < 0 ? data.entryOfFile[file] : entry, missing: [] }
                                      : { place: data.entryOfFile[file], missing: [id, needs] };
}
