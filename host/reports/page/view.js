// What the reader wants to see: filters, edits, words, open files and folders; and the lines that follow
// from it.
import { Comparison } from "./data.js";
import { Folders } from "./folders.js";

/** A file that is there only for what is below it has no sign. */
export class View {
  /** @param {Comparison} data */
  constructor(data) {
    this.data = data;
    this.folders = new Folders(data);
    this.choice = /** @type {number} */ (data.head.choice);
    /** The edits to show, one bit per edit; 0: all. */
    this.only = 0;
    this.query = "";
    /** @type {Uint8Array | null} */
    this.hits = null;
    /** By file, and by folder. @type {{files: Uint8Array, folders: Uint8Array}} */
    this.open = { files: new Uint8Array(data.files), folders: new Uint8Array(this.folders.count) };
    if (this.folders.count > 0 && this.folders.ends[0] === this.folders.order.length) {
      this.open.folders[0] = 1;  // the only one on its level
    }
    this.openBeforeSearch = this.open;
    /** The entries and folders that have a line, from the top. @type {Int32Array} */
    this.lines = new Int32Array(0);
    this.lineOfFile = new Int32Array(data.files);
    this.lineOfFolder = new Int32Array(this.folders.count);
    // Among those on the same level that are shown.
    this.rankOfFile = new Int32Array(data.files);
    this.rankOfFolder = new Int32Array(this.folders.count);
    /** By folder: files and folders right in it that are shown, and all files in it. */
    this.shownIn = new Int32Array(this.folders.count);
    this.shownFilesIn = new Int32Array(this.folders.count);
    this.shownAtTop = 0;
    this.shownFiles = 0;
    /** Entries by edit, whatever `only` says. */
    this.counts = [0, 0, 0, 0];
    /** Entries with the words that are not shown. */
    this.hiddenHits = 0;
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
    this.open = this.hits ? { files: this.filesWithHitsBelow(), folders: new Uint8Array(this.folders.count).fill(1) }
                          : this.openBeforeSearch;
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
    return this.data.isShown(entry, this.choice) && this.hasWords(entry) && this.isChosen(entry);
  }

  /**
   * @param {number} entry
   * @returns {boolean} whether its edit is among those to show
   */
  isChosen(entry) {
    return this.only === 0 || ((this.only >> this.data.edit(entry)) & 1) === 1;
  }

  /** @param {number} entry */
  hasWords(entry) {
    const file = this.data.fileOfEntry[entry];
    const target = this.data.targetOfEntry[entry];
    return !this.hits || this.hits[file] === 1 || (target >= 0 && this.hits[target] === 1);
  }

  update() {
    this.lines = new Int32Array(this.data.count + this.folders.count);
    this.lineCount = 1;  // entry 0 comes first
    this.counts = [0, 0, 0, 0];
    this.shownFiles = 0;
    this.hiddenHits = 0;
    this.lineOfFile.fill(-1);
    this.lineOfFolder.fill(-1);
    this.shownAtTop = this.walk(0, this.folders.order.length, true);
    this.lines = this.lines.subarray(0, this.lineCount);
  }

  /**
   * Gives lines to what is between two places of the folders' order.
   * @param {number} begin
   * @param {number} end
   * @param {boolean} inOpen whether the folder around it is open
   * @returns {number} how many files and folders on this level are shown
   */
  walk(begin, end, inOpen) {
    const { order, ends } = this.folders;
    let shown = 0;
    for (let i = begin; i < end;) {
      const place = order[i];
      const line = this.lineCount;
      if (inOpen) {
        this.lines[this.lineCount++] = place;
      }
      if (place >= 0) {
        const file = this.data.fileOfEntry[place];
        if (this.addFile(file, inOpen && this.open.files[file] === 1)) {
          this.lineOfFile[file] = inOpen ? line : -1;
          this.rankOfFile[file] = ++shown;
          ++this.shownFiles;
        } else {
          this.lineCount = line;
        }
        ++i;
      } else {
        const filesBefore = this.shownFiles;
        const inside = this.walk(i + 1, ends[~place], inOpen && this.open.folders[~place] === 1);
        this.shownIn[~place] = inside;
        this.shownFilesIn[~place] = this.shownFiles - filesBefore;
        if (inside > 0) {
          this.lineOfFolder[~place] = inOpen ? line : -1;
          this.rankOfFolder[~place] = ++shown;
        } else {
          this.lineCount = line;
        }
        i = ends[~place];
      }
    }
    return shown;
  }

  /**
   * Counts a file's entries, and gives lines to its groups if it is open.
   * @param {number} file
   * @param {boolean} isOpen
   * @returns {boolean} whether one of them is shown
   */
  addFile(file, isOpen) {
    const { data } = this;
    const entry = data.entryOfFile[file];
    const end = data.after(entry);
    let stays = false;
    for (let each = entry; each < end; ++each) {
      if (!this.hasWords(each)) {
        continue;
      }
      const passes = data.isShown(each, this.choice);
      this.counts[data.edit(each)] += passes ? 1 : 0;
      if (!passes || !this.isChosen(each)) {
        ++this.hiddenHits;
        continue;
      }
      stays = true;
      if (each !== entry && isOpen) {
        this.lines[this.lineCount++] = each;
      }
    }
    return stays;
  }

  /**
   * @param {number} place
   * @returns {number} its line, or -1
   */
  lineOf(place) {
    if (place <= 0) {
      return place === 0 ? 0 : this.lineOfFolder[~place];
    }
    const file = this.data.fileOfEntry[place];
    const line = this.lineOfFile[file];
    if (line < 0 || !this.data.isGroup(place)) {
      return line;
    }
    for (let at = line + 1; at < this.lines.length && this.data.isGroup(this.lines[at]); ++at) {
      if (this.lines[at] === place) {
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
   * @param {number} place
   * @returns {number} how many lines it has below it when it is open
   */
  below(place) {
    return place < 0 ? this.shownIn[~place]
        : place === 0 || this.data.isGroup(place) ? 0 : this.shownGroups(this.data.fileOfEntry[place]);
  }

  /** @param {number} place */
  isOpen(place) {
    return (place < 0 ? this.open.folders[~place] : this.open.files[this.data.fileOfEntry[place]]) === 1;
  }

  /**
   * What a place is right in.
   * @param {number} place
   * @returns {number} a file or a folder, or 0
   */
  parentOf(place) {
    if (place > 0 && this.data.isGroup(place)) {
      return this.data.entryOfFile[this.data.fileOfEntry[place]];
    }
    const folder = place < 0 ? this.folders.parents[~place]
        : place === 0 ? -1 : this.folders.folderOfFile[this.data.fileOfEntry[place]];
    return folder < 0 ? 0 : ~folder;
  }

  /**
   * @param {number} place a file or folder
   * @param {boolean} open
   */
  setOpen(place, open) {
    if (place < 0) {
      this.open.folders[~place] = open ? 1 : 0;
    } else {
      this.open.files[this.data.fileOfEntry[place]] = open ? 1 : 0;
    }
    this.update();
  }

  /** @param {boolean} open */
  setAllOpen(open) {
    this.open.files.fill(open ? 1 : 0);
    this.open.folders.fill(open ? 1 : 0);
    this.update();
  }

  /**
   * Makes sure that it has a line, if the filters allow it.
   * @param {number} place
   */
  reveal(place) {
    for (let above = this.parentOf(place); above !== 0; above = this.parentOf(above)) {
      if (!this.isOpen(above)) {
        this.setOpen(above, true);
      }
    }
  }
}
