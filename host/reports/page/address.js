// The address's fragment: which entry, and how the reader sees it.
import { Comparison } from "./data.js";
import { edits } from "./edits.js";
import { View } from "./view.js";

/** Longer IDs are not written out. */
const longID = 500;

/**
 * @param {Comparison} data
 * @param {View} view
 * @param {number} entry
 * @returns {string}
 */
export function addressOf(data, view, entry) {
  const parts = new URLSearchParams();
  if (entry !== 0) {
    const file = data.id(data.fileOfEntry[entry]);
    const target = data.isGroup(entry) ? data.id(data.targetOfEntry[entry]) : "";
    if (file.length + target.length > longID) {
      parts.set("entry", String(entry));
    } else {
      parts.set("file", file);
      if (data.isGroup(entry)) {
        parts.set("needs", target);
      }
    }
  }
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
 * @returns {number} the entry; 0 if it does not exist
 */
export function openAddress(address, data, view) {
  const parts = new URLSearchParams(address.replace(/^#/, ""));
  view.choice = parts.has("hide") ? bitsOf(data.filters, parts.get("hide")) : data.head.choice;
  view.only = bitsOf(edits, parts.get("only"));
  view.search(parts.get("search") ?? "");
  view.update();
  const number = Number(parts.get("entry"));
  if (Number.isInteger(number) && number > 0 && number < data.count) {
    return number;
  }
  const id = parts.get("file");
  const file = id === null ? -1 : data.fileWithID(id);
  if (file < 0) {
    return 0;
  }
  const entry = data.entryOfFile[file];
  const needs = parts.get("needs");
  for (let each = entry + 1; needs !== null && each < data.after(entry); ++each) {
    if (data.id(data.targetOfEntry[each]) === needs) {
      return each;
    }
  }
  return entry;
}
