// The tree of entries. Only visible lines are in the document; the focus stays on the tree, whose
// active descendant is the active line.
import { Comparison } from "./data.js";
import { beginOfName } from "./folders.js";
import { lineElement } from "./line.js";
import { verdictOf } from "./overview.js";
import { element } from "./text.js";
import { View } from "./view.js";

const lineHeight = 26;
/** Browsers limit the height of a box. */
const mostHeight = 12e6;
const linesBeyond = 8;
const patience = 700;  // ms between the letters of a word

export class Tree {
  /**
   * @param {HTMLElement} box
   * @param {Comparison} data
   * @param {View} view
   * @param {(place: number) => void} select
   * @param {(entry: number) => void} follow
   */
  constructor(box, data, view, select, follow) {
    this.box = box;
    this.data = data;
    this.view = view;
    this.select = select;
    this.follow = follow;
    this.active = 0;  // an entry or folder
    this.word = "";
    this.wordTime = 0;
    this.layer = element("div", { class: "lines", role: "none" });
    this.extent = element("div", { class: "extent", role: "none" }, this.layer);
    box.append(this.extent);
    box.addEventListener("scroll", () => this.schedule());
    box.addEventListener("keydown", (event) => this.key(event));
    box.addEventListener("click", (event) => this.click(event));
    new ResizeObserver(() => this.schedule()).observe(box);
    this.draw();
  }

  schedule() {
    this.frame ??= requestAnimationFrame(() => {
      this.frame = undefined;
      this.draw();
    });
  }

  /** How many pixels of scrolling a line takes. */
  get scale() {
    return Math.min(1, mostHeight / (this.view.lines.length * lineHeight));
  }

  draw() {
    const { box, view } = this;
    const count = view.lines.length;
    this.extent.style.height = `${count * lineHeight * this.scale}px`;
    const top = box.scrollTop / this.scale;
    const first = Math.max(0, Math.floor(top / lineHeight) - linesBeyond);
    const last = Math.min(count, Math.ceil((top + box.clientHeight) / lineHeight) + linesBeyond);
    this.layer.style.transform =
        `translateY(${box.scrollTop - (top - first * lineHeight)}px)`;
    const lines = [];
    for (let line = first; line < last; ++line) {
      lines.push(lineElement(this.data, view, line, this.active));
    }
    this.layer.replaceChildren(...lines);
    if (count === 1) {
      this.layer.append(element("p", { class: "none" }, verdictOf(this.data) ||
                                (view.query || view.only ? "Nothing matches."
                                                         : "The filters hide everything.")));
    }
    const activeLine = view.lineOf(this.active);
    if (activeLine >= first && activeLine < last) {
      box.setAttribute("aria-activedescendant", `line-${this.active}`);
    } else {
      box.removeAttribute("aria-activedescendant");
    }
  }

  /**
   * Makes the entry or folder active and scrolls to it.
   * @param {number} place
   */
  show(place) {
    this.active = place;
    const line = this.view.lineOf(place);
    if (line >= 0) {
      const top = line * lineHeight * this.scale;
      const { scrollTop, clientHeight } = this.box;
      const above = scrollTop - top;
      const below = top + lineHeight - (scrollTop + clientHeight);
      if (Math.max(above, below) > 3 * lineHeight) {
        this.box.scrollTop = top - clientHeight / 3;
      } else if (above > 0 || below > 0) {
        this.box.scrollTop += above > 0 ? -above : below;
      }
    }
    this.draw();
  }

  /** @param {number} line */
  go(line) {
    const { lines } = this.view;
    const entry = lines[Math.max(0, Math.min(lines.length - 1, line))];
    this.show(entry);
    this.select(entry);
  }

  /** @param {MouseEvent} event */
  click(event) {
    const target = /** @type {HTMLElement} */ (event.target);
    const line = /** @type {HTMLElement | null} */ (target.closest(".line"));
    if (line) {
      const entry = this.view.lines[Number(line.dataset.line)];
      if (entry < 0 || target.closest(".twisty") || entry === this.active) {
        this.toggle(entry);
      }
      this.go(this.view.lineOf(entry));
    }
  }

  /** @param {number} place */
  toggle(place) {
    if (this.view.below(place) > 0) {
      this.view.setOpen(place, !this.view.isOpen(place));
      this.show(place);
    }
  }

  /** @param {KeyboardEvent} event */
  key(event) {
    if (event.ctrlKey || event.metaKey || event.altKey) {
      return;
    }
    const line = Math.max(0, this.view.lineOf(this.active));
    const page = Math.max(1, Math.floor(this.box.clientHeight / lineHeight) - 1);
    /** @type {Record<string, () => void>} */
    const keys = {
      ArrowDown: () => this.go(line + 1),
      ArrowUp: () => this.go(line - 1),
      PageDown: () => this.go(line + page),
      PageUp: () => this.go(line - page),
      Home: () => this.go(0),
      End: () => this.go(this.view.lines.length - 1),
      ArrowRight: () => this.inward(line),
      ArrowLeft: () => this.outward(),
      Enter: () => this.enter(),
      " ": () => this.enter(),
      "*": () => {
        this.view.setAllOpen(true);
        this.show(this.active);
      },
    };
    if (keys[event.key]) {
      event.preventDefault();
      keys[event.key]();
    } else if (event.key.length === 1 && event.key !== "/") {
      event.preventDefault();
      this.type(event.key, line);
    }
  }

  enter() {
    if (this.active > 0 && this.data.isGroup(this.active)) {
      this.follow(this.active);
    } else {
      this.toggle(this.active);
    }
  }

  /** @param {number} line */
  inward(line) {
    if (this.active === 0 || (this.view.below(this.active) > 0 && this.view.isOpen(this.active))) {
      this.go(line + 1);
    } else {
      this.toggle(this.active);
    }
  }

  outward() {
    if (this.view.below(this.active) > 0 && this.view.isOpen(this.active)) {
      this.toggle(this.active);
    } else {
      this.go(this.view.lineOf(this.view.parentOf(this.active)));
    }
  }

  /**
   * Goes to the next line that begins with the letters typed so far, or whose name without folders
   * does.
   * @param {string} letter
   * @param {number} line
   */
  type(letter, line) {
    const now = performance.now();
    this.word = now - this.wordTime > patience ? letter : this.word + letter;
    this.wordTime = now;
    const word = this.word.toLowerCase();
    const { lines } = this.view;
    const begin = this.word.length > 1 ? 0 : 1;
    for (let step = begin; step < lines.length; ++step) {
      const at = (line + step) % lines.length;
      if (this.beginsWith(lines[at], word)) {
        this.go(at);
        return;
      }
    }
  }

  /**
   * @param {number} place
   * @param {string} word
   */
  beginsWith(place, word) {
    if (place === 0) {
      return "overview".startsWith(word);
    }
    const id = place < 0 ? this.view.folders.nameOf(~place)
        : this.data.id(this.data.isGroup(place) ? this.data.targetOfEntry[place] : this.data.fileOfEntry[place]);
    return [0, beginOfName(id)].some((begin) => id.slice(begin, begin + word.length).toLowerCase() === word);
  }
}
