// Puts the page together.
import { addressOf, openAddress } from "./address.js";
import { Comparison } from "./data.js";
import { DetailPane } from "./detail.js";
import { edits, signOf } from "./edits.js";
import { hiddenBy, talliesOf } from "./overview.js";
import { counted, element, plainNumber } from "./text.js";
import { setUpTheme } from "./theme.js";
import { Tree } from "./tree.js";
import { View } from "./view.js";

/** Trees with fewer lines open at once. */
const fewEntries = 60;

/** @param {string} id */
function byID(id) {
  return /** @type {HTMLElement} */ (document.getElementById(id));
}

class Page {
  /** @param {Comparison} data */
  constructor(data) {
    this.data = data;
    this.view = new View(data);
    if (data.count < fewEntries) {
      this.view.setAllOpen(true);
    }
    this.query = /** @type {HTMLInputElement} */ (byID("query"));
    byID("tallies").append(...talliesOf(data));
    this.chips = edits.map((_, edit) => this.chip(edit));
    byID("chips").append(...this.chips);
    this.switches = this.makeSwitches();
    byID("switches").append(...this.switches.map(({ box }) => box));
    byID("app").hidden = false;
    document.documentElement.classList.add("scripted");
    const follow = (/** @type {number} */ entry) => this.follow(entry);
    this.detail = new DetailPane(byID("detail"), data, this.view, follow, () => this.filter(0));
    this.tree = new Tree(byID("tree"), data, this.view, (entry) => this.select(entry),
                         (entry) => this.follow(data.isGroup(entry) && data.isFile(data.targetOfEntry[entry])
                             ? data.entryOfFile[data.targetOfEntry[entry]] : entry));
    this.listen();
    this.open();
  }

  listen() {
    this.query.addEventListener("input", () => {
      this.view.search(this.query.value);
      this.refresh();
    });
    this.query.addEventListener("keydown", (event) => {
      if (event.key === "ArrowDown" || event.key === "Enter") {
        event.preventDefault();
        byID("tree").focus();
        this.tree.go(this.view.query && this.view.lines.length > 1 ? 1 : this.view.lineOf(this.tree.active));
      }
    });
    document.addEventListener("keydown", (event) => {
      if (event.key === "/" && document.activeElement !== this.query && !event.ctrlKey && !event.metaKey) {
        event.preventDefault();
        this.query.focus();
        this.query.select();
      }
    });
    byID("open-all").addEventListener("click", () => {
      this.view.setAllOpen(true);
      this.refresh();
    });
    byID("close-all").addEventListener("click", () => {
      this.view.setAllOpen(false);
      this.refresh();
    });
    window.addEventListener("hashchange", () => this.open());
    window.addEventListener("popstate", () => this.open());
  }

  /** Goes to where the address says. */
  open() {
    const entry = openAddress(location.hash, this.data, this.view);
    this.query.value = this.view.query;
    this.view.reveal(entry);
    this.tree.active = entry;
    this.refresh();
    this.tree.show(entry);
  }

  /** @param {number} edit */
  chip(edit) {
    const { name } = edits[edit];
    return element("button", {
      type: "button", class: `chip ${name}`, "aria-pressed": "false", "data-edit": name,
      title: `Show only what is ${name}`,
      onclick: () => {
        this.view.only ^= 1 << edit;
        this.view.update();
        this.refresh();
      },
    }, signOf(edit), element("span", { "aria-hidden": "true" }, name), " ", element("span", { class: "count" }));
  }

  makeSwitches() {
    return this.data.filters.map(({ name, title, hides }, bit) => {
      const input = /** @type {HTMLInputElement} */ (element("input", {
        type: "checkbox", role: "switch", "data-filter": name,
        onchange: () => {
          this.filter(this.view.choice ^ (1 << bit));
        },
      }));
      return { input, bit, box: element("label", { class: "switch", title: `Hides ${hides}` }, input,
                                        element("span", {}, `Hide ${title}`)) };
    });
  }

  /** @param {number} choice */
  filter(choice) {
    this.view.choice = choice;
    this.view.update();
    this.refresh();
  }

  /** Brings everything in line with the view. */
  refresh() {
    const { data, view } = this;
    this.chips.forEach((chip, edit) => {
      const count = /** @type {HTMLElement} */ (chip.querySelector(".count"));
      count.textContent = plainNumber(view.counts[edit]);
      chip.setAttribute("aria-pressed", String(((view.only >> edit) & 1) === 1));
      chip.classList.toggle("zero", view.counts[edit] === 0);
    });
    this.switches.forEach(({ input, bit }) => {
      input.checked = ((view.choice >> bit) & 1) === 1;
    });
    const shown = view.counts.reduce((sum, count, edit) =>
        sum + (view.only === 0 || (view.only >> edit) & 1 ? count : 0), 0);
    const hidden = hiddenBy(data, view.choice);
    byID("state").replaceChildren(
        element("b", {}, plainNumber(shown)), ` of ${counted(data.count - 1, "file or group", "files and groups")}`,
        hidden && element("span", { class: "hidden-by", title: `Hidden by the filters: ${hidden}` },
                          `Hidden by filter: ${hidden}`));
    this.tree.show(this.tree.active);
    this.detail.show(this.tree.active);
    this.writeAddress(false);
  }

  /** @param {number} entry */
  select(entry) {
    this.detail.show(entry);
    this.writeAddress(false);
  }

  /**
   * Goes to an entry as a link does, with a step in the history.
   * @param {number} entry
   */
  follow(entry) {
    this.view.reveal(entry);
    this.tree.show(entry);
    this.detail.show(entry);
    this.writeAddress(true);
  }

  /** @param {boolean} newStep */
  writeAddress(newStep) {
    const address = addressOf(this.data, this.view, this.tree.active);
    if (address !== (location.hash || "#")) {
      const change = newStep ? "pushState" : "replaceState";
      history[change](null, "", address === "#" ? location.href.replace(/#.*$/s, "") || "#" : address);
    }
  }
}

async function start() {
  const began = performance.now();
  setUpTheme();
  try {
    new Page(await Comparison.load());
    document.documentElement.dataset.ready = String(Math.round(performance.now() - began));
  } catch (error) {
    byID("plain").prepend(element("p", { class: "trouble", role: "alert" },
                                  `The interactive part could not start (${error}). The changes are listed below.`));
    byID("app").hidden = true;
    document.documentElement.classList.remove("scripted");
    throw error;
  }
}

start();
