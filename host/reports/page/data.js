// The comparison as the page holds it: columns with one value per entry, unpacked at the start, and
// blocks of tables, unpacked when one of their entries is shown.
//
// Entry 0 is the pair of graphs. After it come the files, each followed by its groups.

import { decoded, numbersIn, Texts, unpack } from "./packed.js";

/** @typedef {{name: string, value: string}} Parameter */
/** @typedef {{edit: number, choices: number, sides: (Parameter | null)[]}} Row */
/** @typedef {{labels: string[], rows: Row[]}} Table */
/** @typedef {{name: string, type: string}} End */
/** @typedef {{ends: End[][] | null, tables: Table[]}} Detail */

/**
 * What the differences mean, as in the JSON report.
 * @returns {Promise<any>} null if the page does not have it
 */
export async function loadInsights() {
  return document.getElementById("data-insights") ? JSON.parse(decoded(await unpack("insights"))) : null;
}

export class Comparison {
  /** @returns {Promise<Comparison>} */
  static async load() {
    const head = JSON.parse(decoded(await unpack("head")));
    const names = ["entries", "changes", "group-counts", "targets", "ids", "id-lengths", "names",
                   "name-lengths", "types"];
    const columns = await Promise.all(names.map(unpack));
    return new Comparison(head, Object.fromEntries(names.map((name, i) => [name, columns[i]])));
  }

  /**
   * @param {any} head
   * @param {Record<string, Uint8Array>} columns
   */
  constructor(head, columns) {
    this.head = head;
    /** By the bit that each has in a choice. */
    this.filters = /** @type {{name: string, title: string, hides: string}[]} */ (head.filters);
    this.codes = columns.entries;
    this.count = this.codes.length;
    this.files = /** @type {number} */ (head.files);
    this.changes = numbersIn(columns.changes, 3 * this.count);
    this.ids = new Texts(decoded(columns.ids), numbersIn(columns["id-lengths"], head.nodes));
    this.names = new Texts(decoded(columns.names), numbersIn(columns["name-lengths"], head.nodes));
    this.types = numbersIn(columns.types, head.nodes);
    /** By the ID of a renamed node, its ID in the left file. */
    this.oldIDs = /** @type {Map<string, string>} */ (new Map(head.renamed));
    /** By entry, the values of properties that tell, old and new, if they differ. */
    this.tellingValues = /** @type {Map<number, (string | null)[][]>} */ (new Map(head.tellingValues));
    this.groupCounts = numbersIn(columns["group-counts"], this.files);
    this.entryOfFile = new Int32Array(this.files);
    /** By entry; -1 for the pair of graphs. */
    this.fileOfEntry = new Int32Array(this.count).fill(-1);
    /** By entry, a node; -1 for all but groups. */
    this.targetOfEntry = new Int32Array(this.count).fill(-1);
    this.readTree(numbersIn(columns.targets, head.groups));
    /** @type {Map<number, Promise<any[]>>} */
    this.blocks = new Map();
    /** @type {{first: Int32Array, entries: Int32Array} | null} */
    this.dependents = null;
    /** @type {string[] | null} */
    this.lowered = null;
    /** @type {Map<string, number> | null} */
    this.nodesByID = null;
  }

  /** @param {Int32Array} targets by group */
  readTree(targets) {
    let entry = 1;
    let group = 0;
    for (let file = 0; file < this.files; ++file) {
      this.entryOfFile[file] = entry;
      this.fileOfEntry[entry++] = file;
      for (const end = entry + this.groupCounts[file]; entry < end; ++entry) {
        this.fileOfEntry[entry] = file;
        this.targetOfEntry[entry] = targets[group++];
      }
    }
  }

  /** @param {number} entry */
  isGroup(entry) {
    return this.targetOfEntry[entry] >= 0;
  }
  /** @param {number} entry */
  edit(entry) {
    return this.codes[entry] & 3;
  }
  /** @param {number} entry */
  isMoved(entry) {
    return (this.codes[entry] & 4) !== 0;
  }
  /**
   * It changed, but no row of its tables did.
   * @param {number} entry
   */
  changedWithoutRow(entry) {
    return (this.codes[entry] & 8) !== 0;
  }
  /**
   * @param {number} entry
   * @param {number} choice of filters
   */
  isShown(entry, choice) {
    return ((this.codes[entry] >> (4 + choice)) & 1) !== 0;
  }
  /**
   * The rows of the entry's tables: added, removed, changed.
   * @param {number} entry
   */
  rowChanges(entry) {
    return [...this.changes.subarray(3 * entry, 3 * entry + 3)];
  }
  /**
   * The entry's groups: added, removed, changed.
   * @param {number} entry of a file
   */
  groupChanges(entry) {
    const counts = [0, 0, 0, 0];
    for (const end = this.after(entry++); entry < end; ++entry) {
      ++counts[this.edit(entry)];
    }
    return counts.slice(0, 3);
  }
  /**
   * The entry after this file and its groups.
   * @param {number} entry of a file
   */
  after(entry) {
    return entry + 1 + this.groupCounts[this.fileOfEntry[entry]];
  }
  /** @param {number} node */
  isFile(node) {
    return node < this.files;
  }
  /** @param {number} node */
  id(node) {
    return this.ids.at(node);
  }
  /**
   * Empty if it is the ID.
   * @param {number} node
   */
  name(node) {
    return this.names.at(node);
  }
  /** @param {number} node */
  typeName(node) {
    return /** @type {string} */ (this.head.types[this.types[node]]);
  }

  /**
   * @param {string} id
   * @returns {number} the node, of several the one that is a file; or -1
   */
  nodeWithID(id) {
    if (!this.nodesByID) {
      this.nodesByID = new Map();
      for (let node = this.head.nodes - 1; node >= 0; --node) {
        this.nodesByID.set(this.id(node), node);
      }
    }
    return this.nodesByID.get(id) ?? -1;
  }

  /**
   * @param {string} id
   * @returns {number} the file, or -1
   */
  fileWithID(id) {
    const node = this.nodeWithID(id);
    return this.isFile(node) ? node : -1;
  }

  /**
   * @param {string} upstream
   * @param {string} downstream
   * @returns {number} the group of the dependencies between two nodes, or -1
   */
  entryOfLink(upstream, downstream) {
    const file = this.fileWithID(upstream);
    const target = this.nodeWithID(downstream);
    if (file >= 0 && target >= 0) {
      const own = this.entryOfFile[file];
      const place = this.targetOfEntry.subarray(own + 1, this.after(own)).indexOf(target);
      return place < 0 ? -1 : own + 1 + place;
    }
    return -1;
  }

  /**
   * @param {number} node
   * @returns {Int32Array} the groups that lead to it
   */
  groupsTo(node) {
    if (!this.dependents) {
      const first = new Int32Array(this.head.nodes + 1);
      for (const target of this.targetOfEntry) {
        if (target >= 0) {
          ++first[target + 1];
        }
      }
      for (let i = 1; i < first.length; ++i) {
        first[i] += first[i - 1];
      }
      const next = first.slice();
      const entries = new Int32Array(first[first.length - 1]);
      for (let entry = 0; entry < this.count; ++entry) {
        const target = this.targetOfEntry[entry];
        if (target >= 0) {
          entries[next[target]++] = entry;
        }
      }
      this.dependents = { first, entries };
    }
    const { first, entries } = this.dependents;
    return entries.subarray(first[node], first[node + 1]);
  }

  /**
   * @param {string} query
   * @returns {Uint8Array | null} by node, whether it has all words; null for an empty query
   */
  nodesWith(query) {
    const words = query.toLowerCase().split(/\s+/).filter(Boolean);
    if (words.length === 0) {
      return null;
    }
    if (!this.lowered) {
      this.lowered = [];
      for (let node = 0; node < this.head.nodes; ++node) {
        this.lowered.push(`${this.id(node)}\n${this.name(node)}`.toLowerCase());
      }
    }
    const hits = new Uint8Array(this.head.nodes);
    this.lowered.forEach((text, node) => {
      hits[node] = words.every((word) => text.includes(word)) ? 1 : 0;
    });
    return hits;
  }

  /**
   * @param {number} entry
   * @returns {Promise<Detail>}
   */
  async detail(entry) {
    const starts = /** @type {number[]} */ (this.head.blocks);
    let block = 0;
    for (let size = starts.length; size > 1;) {
      const half = size >> 1;
      block = starts[block + half] <= entry ? block + half : block;
      size -= half;
    }
    let unpacked = this.blocks.get(block);
    if (!unpacked) {
      if (this.blocks.size >= 8) {
        this.blocks.clear();
      }
      unpacked = unpack(`block-${block}`).then((bytes) => JSON.parse(decoded(bytes)));
      this.blocks.set(block, unpacked);
    }
    const [ends, tables] = (await unpacked)[entry - starts[block]];
    return {
      ends: ends?.map((side) => side.map(([name, type]) => ({ name, type }))) ?? null,
      tables: tables.map(([name, value, rows]) => ({
        labels: [name, value],
        rows: rows.map(([edit, choices, ...sides]) => ({
          edit,
          choices,
          sides: sides.map((side) => side && { name: side[0], value: side[1] }),
        })),
      })),
    };
  }
}
