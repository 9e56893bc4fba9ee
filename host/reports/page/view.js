// What the reader wants to see: filters, edits, words, open files; and the lines that follow from it.
import { Comparison } from "./data.js";

/** A file that is there only for what is below it has no sign. */
export class View {
  /** @param {Comparison} data */
  constructor(data) {
    this.data = data;
    this.choice = /** @type {number} */ (data.head.choice);
    /** The edits to show, one bit per edit; 0: all. */
    this.only = 0;
    this.query = "";
    /** @type {Uint8Array | null} */
    this.hits = null;
    /** By file. @type {Uint8Array} */
    this.open = new Uint8Array(data.files);
    this.openBeforeSearch = this.open;
    /** The entries that have a line, from the top. @type {Int32Array} */
    this.lines = new Int32Array(0);
    this.lineOfFile = new Int32Array(data.files);
    this.rankOfFile = new Int32Array(data.files);
    this.shownFiles = 0;
    /** Entries by edit, whatever `only` says. */
    this.counts = [0, 0, 0, 0];
    this.update();
  }

  /** @param {string} query */
  search(query) {
    if (query === this.query) {
      return;
    }
    if (this.query === "") {
      this.openBeforeSearch = this.open;
    }
    this.query = query;
    this.hits = this.data.nodesWith(query);
    this.open = this.hits ? this.filesWithHitsBelow() : this.openBeforeSearch;
    this.update();
  }

  /** @returns {Uint8Array} */
  filesWithHitsBelow() {
    const open = new Uint8Array(this.data.files);
    for (let entry = 1; entry < this.data.count; ++entry) {
      const target = this.data.targetOfEntry[entry];
      if (target >= 0 && this.hits?.[target]) {
        open[this.data.fileOfEntry[entry]] = 1;
      }
    }
    return open;
  }

  /**
   * @param {number} entry
   * @returns {boolean} whether it is shown for itself
   */
  shows(entry) {
    return this.passes(entry) && (this.only === 0 || ((this.only >> this.data.edit(entry)) & 1) === 1);
  }

  /**
   * @param {number} entry
   * @returns {boolean} whether it passes filters and words
   */
  passes(entry) {
    if (!this.data.isShown(entry, this.choice)) {
      return false;
    }
    const file = this.data.fileOfEntry[entry];
    const target = this.data.targetOfEntry[entry];
    return !this.hits || this.hits[file] === 1 || (target >= 0 && this.hits[target] === 1);
  }

  update() {
    const { data } = this;
    const lines = new Int32Array(data.count);
    let count = 1;  // entry 0 comes first
    this.counts = [0, 0, 0, 0];
    this.shownFiles = 0;
    this.lineOfFile.fill(-1);
    for (let file = 0; file < data.files; ++file) {
      const entry = data.entryOfFile[file];
      const end = data.after(entry);
      const line = count;
      let stays = false;
      lines[count++] = entry;
      for (let each = entry; each < end; ++each) {
        if (!this.passes(each)) {
          continue;
        }
        ++this.counts[data.edit(each)];
        if (this.only !== 0 && ((this.only >> data.edit(each)) & 1) === 0) {
          continue;
        }
        stays = true;
        if (each !== entry && this.open[file] === 1) {
          lines[count++] = each;
        }
      }
      if (stays) {
        this.lineOfFile[file] = line;
        this.rankOfFile[file] = ++this.shownFiles;
      } else {
        count = line;
      }
    }
    this.lines = lines.slice(0, count);
  }

  /**
   * @param {number} entry
   * @returns {number} its line, or -1
   */
  lineOf(entry) {
    if (entry === 0) {
      return 0;
    }
    const file = this.data.fileOfEntry[entry];
    const line = this.lineOfFile[file];
    if (line < 0 || !this.data.isGroup(entry)) {
      return line;
    }
    for (let at = line + 1; at < this.lines.length && this.data.isGroup(this.lines[at]); ++at) {
      if (this.lines[at] === entry) {
        return at;
      }
    }
    return -1;
  }

  /**
   * @param {number} file
   * @returns {number} how many of its groups are shown
   */
  shownGroups(file) {
    let count = 0;
    const entry = this.data.entryOfFile[file];
    for (let each = entry + 1; each < this.data.after(entry); ++each) {
      count += this.shows(each) ? 1 : 0;
    }
    return count;
  }

  /**
   * @param {number} file
   * @param {boolean} open
   */
  setOpen(file, open) {
    this.open[file] = open ? 1 : 0;
    this.update();
  }

  /** @param {boolean} open */
  setAllOpen(open) {
    this.open.fill(open ? 1 : 0);
    this.update();
  }

  /**
   * Makes sure that the entry has a line, if the filters allow it.
   * @param {number} entry
   */
  reveal(entry) {
    if (this.data.isGroup(entry) && !this.open[this.data.fileOfEntry[entry]]) {
      this.setOpen(this.data.fileOfEntry[entry], true);
    }
  }
}
