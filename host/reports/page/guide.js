// Ways from one place of the page to another: links to entries and to nodes by ID, and long lists.
import { Comparison } from "./data.js";
import { edits, signOf } from "./edits.js";
import { counted, element, pathText } from "./text.js";

/** Longer IDs are not written into addresses. */
export const longID = 500;

export class Guide {
  /**
   * @param {Comparison} data
   * @param {(place: number) => void} follow goes to an entry or a folder
   * @param {(edit: number, all: boolean) => void} showOnly shows entries of one edit, under no filter
   *        if all are wanted
   */
  constructor(data, follow, showOnly) {
    this.data = data;
    this.follow = follow;
    this.showOnly = showOnly;
  }

  /**
   * Words that lead to all entries of an edit.
   * @param {number} edit
   * @param {string} words
   * @param {boolean} all
   */
  toEdit(edit, words, all = false) {
    const { name } = edits[edit];
    return element("button", { type: "button", class: `edit-words ${name}`, title: `Show only what is ${name}`,
                               onclick: () => this.showOnly(edit, all) }, words);
  }

  /**
   * A link to an entry.
   * @param {number} entry
   * @param {Record<string, any>} attributes
   * @param {...import("./text.js").Content} content
   */
  to(entry, attributes, ...content) {
    return element("a", {
      href: this.addressOf(entry),
      ...attributes,
      onclick: (/** @type {MouseEvent} */ event) => {
        if (!event.ctrlKey && !event.metaKey && !event.shiftKey) {
          event.preventDefault();
          this.follow(entry);
        }
      },
    }, ...content);
  }

  /**
   * @param {number} entry
   * @returns {string} the fragment that leads to it
   */
  addressOf(entry) {
    return `#${new URLSearchParams(partsOf(this.data, entry))}`;
  }

  /**
   * The node's ID, which leads to its file, if it is one.
   * @param {string} id
   * @param {number} room
   */
  node(id, room = 80) {
    const node = this.data.nodeWithID(id);
    const text = pathText(id, room);
    return node >= 0 && this.data.isFile(node) ? this.to(this.data.entryOfFile[node], {}, text) : text;
  }

  /**
   * A link between two nodes, which leads to its entry.
   * @param {string} upstream
   * @param {string} downstream
   * @param {number} edit
   * @param {boolean} whole whether the upstream end is written, too
   */
  link(upstream, downstream, edit, whole = true) {
    const entry = this.data.entryOfLink(upstream, downstream);
    const content = [signOf(edit), element("span", { class: "link-text" },
        whole && pathText(upstream, 70), whole && element("span", { class: "arrow" }, " \u2192 "),
        pathText(downstream, 70))];
    return entry < 0 ? element("span", { class: "edge-link" }, ...content)
                     : this.to(entry, { class: "edge-link", title: "Show the dependencies" }, ...content);
  }
}

/**
 * What an address says of a place.
 * @param {Comparison} data
 * @param {number} entry
 * @returns {Record<string, string>}
 */
export function partsOf(data, entry) {
  if (entry === 0) {
    return {};
  }
  const file = data.id(data.fileOfEntry[entry]);
  const needs = data.isGroup(entry) ? data.id(data.targetOfEntry[entry]) : null;
  if (file.length + (needs?.length ?? 0) > longID) {
    return { entry: String(entry) };
  }
  return needs === null ? { file } : { file, needs };
}

/**
 * The first items, and a button that appends the others.
 * @template T
 * @param {T[]} all
 * @param {number} most
 * @param {(one: T, index: number) => Node} make
 * @param {HTMLElement} list where items go
 * @param {string} one what an item is called
 * @param {string} several
 * @returns {HTMLElement[]} the list, and the button if there is one
 */
export function cutList(all, most, make, list, one, several = one + "s") {
  // One line more takes no more room than the button would.
  const first = all.length <= most + 1 ? all.length : most;
  list.append(...all.slice(0, first).map(make));
  if (first === all.length) {
    return [list];
  }
  const more = element("button", { type: "button", class: "quiet more-items" },
                       `Show ${counted(all.length - first, `more ${one}`, `more ${several}`)}`);
  more.addEventListener("click", () => {
    const next = list.childElementCount;
    list.append(...all.slice(first).map((each, i) => make(each, first + i)));
    more.remove();
    /** @type {HTMLElement | null} */ (list.children[next]?.querySelector("a, button"))?.focus();
  });
  return [list, more];
}
