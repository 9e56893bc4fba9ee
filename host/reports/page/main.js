// Puts the page together.
import { addressOf, openAddress } from "./address.js";
import { Comparison, loadInsights } from "./data.js";
import { DetailPane } from "./detail.js";
import { edits, signOf } from "./edits.js";
import { Guide } from "./guide.js";
import { hiddenBy, overviewOf, talliesOf } from "./overview.js";
import { clipped, counted, cutFromLeft, element, graphText, plainNumber, visibleText } from "./text.js";
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
    /** The section of the overview that the address leads to. @type {string | null} */
    this.section = null;
    this.query = /** @type {HTMLInputElement} */ (byID("query"));
    byID("tallies").append(...talliesOf(data));
    this.chips = edits.map((_, edit) => this.chip(edit));
    byID("chips").append(...this.chips);
    this.switches = this.makeSwitches();
    byID("switches").append(...this.switches.map(({ box }) => box));
    byID("app").hidden = false;
    document.documentElement.classList.add("scripted");
    this.guide = new Guide(data, (place) => this.follow(place), (edit, all) => {
      this.view.only = 1 << edit;
      this.filter(all ? 0 : this.view.choice);
      this.showPane("files");
    });
    this.detail = new DetailPane(byID("detail"), data, this.view, this.guide, () => this.filter(0));
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
    for (const name of ["files", "details"]) {
      byID(`show-${name}`).addEventListener("click", () => this.showPane(name));
    }
    // Of fragments, too; a second event would open the address that this one has put right.
    window.addEventListener("popstate", () => this.open());
  }

  /** Goes to where the address says. */
  open() {
    this.section = new URLSearchParams(location.hash.slice(1)).get("at");
    const { place, missing } = openAddress(location.hash, this.data, this.view);
    this.query.value = this.view.query;
    this.view.reveal(place);
    this.tree.active = place;
    this.refresh();
    this.tree.show(place);
    this.showPane("details");
    const [from, to] = missing.map((id) => graphText(clipped(id)));
    byID("notice").replaceChildren(...(to ? ["The address leads to a link from ", from, " to ", to] : ["The address leads to ", from ?? ""]),
                                   ", which this comparison does not have.");
    byID("notice").hidden = missing.length === 0;
    this.scrollToSection(this.section);
  }

  /** @param {string | null} section of the overview */
  scrollToSection(section) {
    if (section !== null) {
      document.getElementById(`at-${section}`)?.scrollIntoView();
    }
  }

  /** @param {any} insights */
  showOverview(insights) {
    byID("overview").append(...overviewOf(this.data, insights, this.guide));
    this.scrollToSection(this.section);
  }

  /**
   * Where there is room for one half of the page only.
   * @param {string} name "files" or "details"
   */
  showPane(name) {
    document.documentElement.dataset.pane = name;
    for (const each of ["files", "details"]) {
      byID(`show-${each}`).setAttribute("aria-pressed", String(each === name));
    }
    if (name === "files") {
      this.tree.show(this.tree.active);
    }
  }

  /**
   * Shows an entry or folder in the other half.
   * @param {number} place
   */
  show(place) {
    const { data, view } = this;
    if (place !== this.detail.place) {
      byID("pane").scrollTop = 0;
      byID("notice").hidden = true;
    }
    byID("overview").hidden = place !== 0;
    this.detail.show(place);
    const id = place < 0 ? view.folders.nameOf(~place) : place === 0 ? ""
        : data.isGroup(place) ? data.id(data.targetOfEntry[place]) : view.folders.nameOfFile(data.fileOfEntry[place]);
    byID("show-details").textContent = place === 0 ? "Overview"
        : `Details: ${place > 0 && data.isGroup(place) ? "\u2192 " : ""}${visibleText(cutFromLeft(id, 24))}`;
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
      chip.title = `Show only what is ${edits[edit].name}: ${edits[edit].words}`;
    });
    this.switches.forEach(({ input, bit }) => {
      input.checked = ((view.choice >> bit) & 1) === 1;
    });
    const shown = view.counts.reduce((sum, count, edit) =>
        sum + (view.only === 0 || (view.only >> edit) & 1 ? count : 0), 0);
    const hidden = hiddenBy(data, view.choice);
    const state = view.query !== "" ? this.matches(shown)
        : [element("b", {}, plainNumber(shown)), ` of ${counted(data.count - 1, "file or link", "files and links")}`,
           hidden && element("span", { class: "hidden-by", title: `Hidden by the filters: ${hidden}` },
                             `Hidden by filter: ${hidden}`)];
    byID("state").replaceChildren(...state.filter((part) => part !== ""));
    this.tree.show(this.tree.active);
    this.show(this.tree.active);
    this.writeAddress(false);
  }

  /**
   * How many entries have the words that are searched for, and how many of them are hidden.
   * @param {number} shown
   */
  matches(shown) {
    const hidden = this.view.hiddenHits;
    return [element("b", {}, plainNumber(shown)), shown === 1 ? " match" : " matches",
            hidden > 0 ? element("span", { class: "hidden-by" }, `${plainNumber(hidden)} more ${hidden === 1 ? "is" : "are"} hidden by the filters. `,
                                 element("button", { type: "button", class: "quiet", id: "show-hidden", onclick: () => {
                                   this.view.only = 0;
                                   this.filter(0);
                                 } }, "Show them")) : ""];
  }

  /** @param {number} place */
  select(place) {
    this.show(place);
    this.writeAddress(false);
  }

  /**
   * Goes to an entry or folder as a link does, with a step in the history.
   * @param {number} place
   */
  follow(place) {
    this.view.reveal(place);
    this.tree.show(place);
    this.show(place);
    this.showPane("details");
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
    const insights = loadInsights();
    const page = new Page(await Comparison.load());
    document.documentElement.dataset.ready = String(Math.round(performance.now() - began));
    page.showOverview(await insights);
  } catch (error) {
    byID("plain").prepend(element("p", { class: "trouble", role: "alert" },
                                  `The interactive part could not start (${error}). The changes are listed below.`));
    byID("app").hidden = true;
    document.documentElement.classList.remove("scripted");
    throw error;
  }
}

start();
