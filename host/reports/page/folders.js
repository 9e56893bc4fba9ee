// The folders of the files. Where entries and folders are both meant, a folder is a negative number:
// `~folder`.
import { Comparison } from "./data.js";
import { unchangedEdit } from "./edits.js";

/** Deeper folders are parts of the names below them. */
const mostDepth = 32;

/**
 * @param {string} id
 * @returns {number} where the ID's name begins, after its folders
 */
export function beginOfName(id) {
  return id.length < 2 ? 0 : id.lastIndexOf("/", id.length - 2) + 1;
}

export class Folders {
  /** @param {Comparison} data */
  constructor(data) {
    this.data = data;
    /** With a slash at the end. @type {string[]} */
    this.paths = [];
    /** By folder, another one or -1. @type {number[]} */
    this.parents = [];
    /** Files and folders from the top, what is in a folder right after it. @type {Int32Array} */
    this.order = new Int32Array(0);
    /** By folder, the place in `order` after all that is in it. @type {number[]} */
    this.ends = [];
    /** By folder, the place in `order`. @type {number[]} */
    this.begins = [];
    /** By file, -1 at the top. */
    this.folderOfFile = new Int32Array(data.files).fill(-1);
    /** By folder: files added, removed; links added, removed, changed. @type {number[][]} */
    this.tallies = [];
    /** By folder, all files in it. @type {number[]} */
    this.files = [];
    /** @type {Map<string, number>} */
    this.byPath = new Map();
    this.read();
  }

  get count() {
    return this.paths.length;
  }

  read() {
    /** @typedef {{path: string, inside: (Made | number)[]}} Made */
    /** @type {Map<string, Made>} */
    const made = new Map([["", { path: "", inside: [] }]]);
    /** @param {string} path @returns {Made} */
    const folderAt = (path) => {
      let folder = made.get(path);
      if (!folder) {
        folder = { path, inside: [] };
        made.set(path, folder);
        folderAt(path.slice(0, beginOfName(path))).inside.push(folder);
      }
      return folder;
    };
    for (let file = 0; file < this.data.files; ++file) {
      folderAt(folderPath(this.data.id(file))).inside.push(file);
    }
    const order = new Int32Array(this.data.files + made.size);
    let next = 0;
    /** @param {Made} folder @param {number} parent */
    const place = (folder, parent) => {
      for (const each of folder.inside) {
        if (typeof each === "number") {
          this.folderOfFile[each] = parent;
          order[next++] = this.data.entryOfFile[each];
          this.tally(each, parent);
          continue;
        }
        let inner = each;
        const paths = [inner.path];
        while (inner.inside.length === 1 && typeof inner.inside[0] !== "number") {
          inner = inner.inside[0];
          paths.push(inner.path);
        }
        const number = this.paths.push(inner.path) - 1;
        paths.forEach((path) => this.byPath.set(path, number));
        this.parents.push(parent);
        this.tallies.push([0, 0, 0, 0, 0]);
        this.files.push(0);
        this.begins.push(next);
        this.ends.push(next);
        order[next++] = ~number;
        place(inner, number);
        this.ends[number] = next;
      }
    };
    place(folderAt(""), -1);
    this.order = order.subarray(0, next);
  }

  /**
   * Adds a file's counts to those of its folders.
   * @param {number} file
   * @param {number} folder
   */
  tally(file, folder) {
    if (folder < 0) {
      return;
    }
    const entry = this.data.entryOfFile[file];
    const edit = this.data.edit(entry);
    const links = this.data.groupChanges(entry);
    for (; folder >= 0; folder = this.parents[folder]) {
      ++this.files[folder];
      const tally = this.tallies[folder];
      if (edit < 2) {
        ++tally[edit];
      }
      links.forEach((count, i) => { tally[2 + i] += count; });
    }
  }

  /**
   * The folder's name as it is written below the folder that it is in.
   * @param {number} folder
   */
  nameOf(folder) {
    return this.paths[folder].slice(this.parents[folder] < 0 ? 0 : this.paths[this.parents[folder]].length);
  }

  /**
   * The file's name as it is written below its folder.
   * @param {number} file
   */
  nameOfFile(file) {
    const folder = this.folderOfFile[file];
    return this.data.id(file).slice(folder < 0 ? 0 : this.paths[folder].length);
  }

  /**
   * The files in a folder and in those in it.
   * @param {number} folder
   */
  filesIn(folder) {
    return [...this.order.subarray(this.begins[folder], this.ends[folder])].filter((place) => place >= 0)
        .map((entry) => this.data.fileOfEntry[entry]);
  }

  /**
   * The edit that all of its files have.
   * @param {number} folder
   * @returns {number} unchanged if they differ
   */
  editOf(folder) {
    const [added, removed] = this.tallies[folder];
    return added > 0 && removed > 0 || added + removed < this.files[folder] ? unchangedEdit : added > 0 ? 0 : 1;
  }

  /**
   * How deep a file or folder is.
   * @param {number} folder
   */
  depthOf(folder) {
    let depth = 0;
    for (; folder >= 0; folder = this.parents[folder]) {
      ++depth;
    }
    return depth;
  }
}

/** @param {string} id */
function folderPath(id) {
  const end = beginOfName(id);
  let begin = 0;
  for (let depth = 0; depth < mostDepth && begin < end; ++depth) {
    begin = id.indexOf("/", begin) + 1;
  }
  return id.slice(0, begin);
}
