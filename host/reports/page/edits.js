// The four edits, and how each looks: never by colour alone.
import { element } from "./text.js";

/** By code. */
export const edits = [
  { name: "added", sign: "+", words: "only in the new graph" },
  { name: "removed", sign: "\u2212", words: "only in the old graph" },
  { name: "changed", sign: "~", words: "a link in both graphs with other dependencies, a file with other properties" },
  { name: "unchanged", sign: "=", words: "in both graphs, unchanged" },
];

export const unchangedEdit = 3;

/**
 * @param {string} name
 * @returns {number} the edit of this name
 */
export function editOf(name) {
  return edits.findIndex((edit) => edit.name === name);
}

/**
 * @param {number} edit
 * @returns {HTMLElement}
 */
export function signOf(edit) {
  const { name, sign, words } = edits[edit];
  return element("span", { class: `sign ${name}`, title: `${name}: ${words}` },
                 element("span", { "aria-hidden": "true" }, sign),
                 element("span", { class: "unseen" }, `${name} `));
}

/**
 * @param {number} edit
 * @param {string} what is changed, if not all of it can be
 * @returns {HTMLElement}
 */
export function badgeOf(edit, what = "") {
  const { name, sign, words } = edits[edit];
  return element("span", { class: `badge ${name}`, title: words }, `${sign} ${name === "changed" ? what : ""}${name}`);
}

/**
 * Counts by edit, those of nothing left out: "+2 -1 ~3".
 * @param {number[]} counts added, removed, changed
 * @param {string} what
 * @returns {HTMLElement | null}
 */
export function tallyOf(counts, what) {
  const parts = counts.map((count, edit) => count > 0 && element(
      "span", { class: `tally ${edits[edit].name}` }, `${edits[edit].sign}${count}`))
      .filter(Boolean);
  if (parts.length === 0) {
    return null;
  }
  const words = counts.map((count, edit) => count > 0 && `${count} ${edits[edit].name}`)
      .filter(Boolean).join(", ");
  return element("span", { class: "tallies-of", title: `${what}: ${words}` }, ...parts);
}
