// Drives pages of the program in Chromium, from files, as a reader would.
import assert from "node:assert/strict";
import { spawnSync } from "node:child_process";
import { mkdtempSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import { createRequire } from "node:module";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { after, before, test } from "node:test";

const { PROGRAM, EXAMPLES, BROWSER, MODULES } = process.env;
const { chromium } = createRequire(MODULES)("playwright-core");
const folder = mkdtempSync(join(tmpdir(), "depcompare-page-"));
const ninja = [`${EXAMPLES}/ninja-v1.8.2.graphml`, `${EXAMPLES}/ninja-v1.12.1.graphml`];
const notes = [`${EXAMPLES}/notes-1.0.graphml`, `${EXAMPLES}/notes-1.1.graphml`];
const browserOptions = [
  ...(process.getuid?.() === 0 ? ["--no-sandbox"] : []), "--disable-gpu", "--disable-dev-shm-usage",
  "--disable-quic", "--no-first-run", "--disable-background-networking", "--disable-component-update",
  "--disable-sync",
];
let context;

/** Runs the program; 1 says that the graphs differ. */
function run(...words) {
  const { status, stdout, stderr } = spawnSync(PROGRAM, words, { encoding: "utf8", maxBuffer: 1e9 });
  assert.ok(status === 0 || status === 1, stderr);
  return stdout;
}

function written(name, graphs, ...options) {
  const path = join(folder, name);
  run("-f", "html", "-o", path, ...options, ...graphs);
  return path;
}

/** Opens a page, and sees to it that nothing goes wrong in it and nothing is asked of the network. */
async function open(path, hash = "", options = {}) {
  const page = await context.newPage();
  page.troubles = [];
  page.on("pageerror", (error) => page.troubles.push(error.message));
  page.on("console", (message) => message.type() === "error" && page.troubles.push(message.text()));
  page.on("request", (request) => request.url().startsWith("file:") || page.troubles.push(request.url()));
  page.on("dialog", (dialog) => page.troubles.push(`dialog: ${dialog.message()}`));
  await page.emulateMedia({ colorScheme: "light", media: "screen", ...options });
  await page.goto(`file://${path}${hash}`);
  await page.waitForSelector("html[data-ready]");
  return page;
}

async function close(page) {
  assert.deepEqual(page.troubles, []);
  await page.close();
}

/** The lines of the tree in sight, as "- -> log.h": sign, then label. */
function lines(page) {
  return page.$$eval(".line", (all) => all.map((line) => [
    line.querySelector(".sign [aria-hidden]")?.textContent ?? "",
    line.querySelector(".arrow") ? "->" : "",
    (line.querySelector(".path") ?? line.querySelector(".whole-graph")).textContent,
  ].filter(Boolean).join(" ")));
}

const active = (page) => page.$eval("[aria-selected=true]", (line) =>
    (line.querySelector(".path") ?? line).textContent);
const heading = (page) => page.textContent("#detail h2");
const texts = (page, selector) => page.$$eval(selector, (all) => all.map((each) => each.textContent));

before(async () => {
  context = await chromium.launchPersistentContext(join(folder, "profile"), {
    executablePath: BROWSER,
    viewport: { width: 1280, height: 900 },
    args: browserOptions,
  });
});

after(async () => {
  await context?.close();
  rmSync(folder, { recursive: true, force: true });
});

test("under every choice of filters the tree shows what the JSON report has", async () => {
  const page = await open(written("ninja.html", ninja));
  for (const filters of [[], ["unchanged"], ["nonstructural"], ["unchanged", "nonstructural"]]) {
    const options = filters.length ? filters.flatMap((name) => ["--filter", name]) : ["--no-filter"];
    const { tree } = JSON.parse(run("-f", "json", ...options, ...ninja));
    const entries = tree.children.flatMap((file) => [file, ...file.children]);
    const visible = entries.filter((entry) => entry.visible);
    for (const name of ["unchanged", "nonstructural"]) {
      await page.setChecked(`[data-filter=${name}]`, filters.includes(name));
    }
    for (const edit of ["added", "removed", "changed", "unchanged"]) {
      assert.equal(await page.textContent(`[data-edit=${edit}] .count`),
                   String(visible.filter((entry) => entry.edit === edit).length), `${edit}, ${filters}`);
    }
    await page.click("#open-all");
    assert.match(await page.textContent("#state"), new RegExp(`^${visible.length} of `));
    // The rows of the first entries.
    await page.focus("#tree");
    await page.keyboard.press("Home");
    for (const { detail } of entries.slice(0, 15)) {
      await page.keyboard.press("ArrowDown");
      const name = await active(page);
      await page.waitForFunction((end) => document.querySelector("#detail h2").textContent.endsWith(end), name);
      assert.equal(await page.locator("#detail .rows tbody tr").count(),
                   (detail.parts ?? [detail]).flatMap(({ rows }) => rows ?? []).length, `${name}, ${filters}`);
    }
  }
  await close(page);
});

test("the small pair opens with every line, and a group's table has both sides", async () => {
  const page = await open(written("notes.html", notes));
  assert.deepEqual(await lines(page), [
    "Whole graph", "app.cc", "\u2212 -> log.h", "+ -> net.h", "\u2212 log.h", "+ net.cc",
    "+ -> net.h", "+ net.h", "store.cc", "~ -> sqlite3.h"]);
  await page.click("text=sqlite3.h");
  assert.equal(await heading(page), "store.cc needs sqlite3.h");
  assert.deepEqual(await texts(page, "#detail .rows tbody tr:nth-child(1) td"),
                   ["\u2212removed ", "store.cc", "sqlite3.h", ""]);
  await page.click("text=log.h >> nth=1");
  assert.deepEqual(await texts(page, "#detail .rows tbody td"), ["\u2212removed ", "lines", "40", ""]);
  await close(page);
});

test("chips and words narrow the tree, words open what they find below", async () => {
  const page = await open(join(folder, "ninja.html"), "#hide=");
  await page.fill("#query", "Graph.H");
  const found = await lines(page);
  assert.ok(found.length > 3);
  assert.ok(found.slice(1).every((line) => !line.includes("->") || line.includes("graph.h") ||
      found.includes("~ src/graph.h")));
  assert.ok(found.some((line) => line === "= -> src/graph.h"), String(found));
  await page.click("[data-edit=added]");
  const added = await lines(page);
  assert.ok(added.slice(1).every((line) => !/^[=~\u2212]/.test(line)), String(added));
  await page.fill("#query", "no such file");
  assert.deepEqual(await texts(page, ".tree .none"), ["Nothing matches."]);
  await close(page);
});

test("the keyboard reaches everything", async () => {
  const page = await open(join(folder, "notes.html"));
  await page.focus("#tree");
  const expect = async (keys) => {
    for (const [key, expected] of keys) {
      await page.keyboard.press(key);
      assert.equal(await active(page), expected, key);
      const descendant = await page.getAttribute("#tree", "aria-activedescendant");
      assert.equal(await page.getAttribute(`#${descendant}`, "aria-selected"), "true");
    }
  };
  await expect([
    ["ArrowDown", "app.cc"], ["ArrowRight", "log.h"], ["ArrowLeft", "app.cc"], ["ArrowLeft", "app.cc"],
    ["ArrowDown", "log.h"], ["ArrowUp", "app.cc"], ["ArrowRight", "app.cc"], ["End", "sqlite3.h"],
    ["Home", "Whole graph"], ["s", "store.cc"]]);
  await page.waitForTimeout(800);  // or the next letter would belong to the same word
  await expect([
    ["n", "net.h"], ["e", "net.h"], ["t", "net.h"], [".", "net.h"], ["c", "net.cc"], ["Home", "Whole graph"],
    ["ArrowRight", "app.cc"], ["ArrowRight", "log.h"], ["Enter", "log.h"], ["PageUp", "Whole graph"],
    ["PageDown", "sqlite3.h"], ["Home", "Whole graph"], ["ArrowDown", "app.cc"], ["Enter", "app.cc"]]);
  assert.equal(await page.getAttribute("[aria-selected=true]", "aria-expanded"), "false");
  await page.keyboard.press("*");
  assert.deepEqual(await page.$$eval(".line", (all) => all.slice(0, 4).map((line) => ["level", "posinset", "setsize", "expanded"]
      .map((name) => line.getAttribute(`aria-${name}`)).join("/"))), ["1/1/1/true", "2/1/5/true", "3/1/2/", "3/2/2/"]);
  assert.equal(await page.evaluate(() => document.activeElement.id), "tree");
  await page.keyboard.press("/");
  assert.equal(await page.evaluate(() => document.activeElement.id), "query");
  await close(page);
});

test("the address leads back to the same view", async () => {
  const path = join(folder, "ninja.html");
  const page = await open(path, "#file=src%2Fbuild.cc&hide=unchanged&only=added,changed&search=build");
  assert.equal(await heading(page), "src/build.cc");
  assert.equal(await page.inputValue("#query"), "build");
  assert.deepEqual(await page.$$eval("[role=switch]", (all) => all.map((each) => each.checked)), [true, false]);
  assert.deepEqual(await page.$$eval(".chip", (all) => all.map((chip) => chip.ariaPressed)),
                   ["true", "false", "true", "false"]);
  await page.fill("#query", "");
  await page.click(".box.link >> nth=0");
  const there = await heading(page);
  assert.notEqual(there, "src/build.cc");
  const copy = await open(path, new URL(page.url()).hash);
  assert.equal(await heading(copy), there);
  assert.deepEqual(await lines(copy), await lines(page));
  assert.deepEqual(await texts(copy, ".chip[aria-pressed=true] .count"),
                   await texts(page, ".chip[aria-pressed=true] .count"));
  assert.equal(await copy.locator(".chip[aria-pressed=true]").count(), 2);
  await close(copy);
  await page.goBack();
  await page.waitForFunction(() => document.querySelector("#detail h2").textContent === "src/build.cc");
  await close(page);
});

test("the picture marks every edge, and the lists beside it say the same", async () => {
  const page = await open(join(folder, "notes.html"), "#file=app.cc&hide=");
  const lists = await page.$$eval(".list", (all) => all.map((list) => [...list.querySelectorAll("li")].map((item) =>
      item.querySelector(".sign").title.split(":")[0] + " " + item.querySelector(".path").textContent)));
  assert.deepEqual(lists, [[], ["removed log.h", "added net.h", "unchanged store.h"]]);
  assert.deepEqual(await texts(page, ".picture .more"), ["nothing needs it"]);
  const drawn = await page.$$eval(".picture .edge", (all) => all.map((edge) => edge.classList[1]).sort());
  assert.deepEqual(drawn, lists[1].map((line) => line.split(" ")[0]).sort());
  assert.equal(new Set(await page.$$eval(".legend .curve", (all) => all.map((curve) => {
    const { strokeDasharray, strokeWidth } = getComputedStyle(curve);
    return `${strokeDasharray} ${strokeWidth}`;
  }))).size, 4);
  await close(page);
});

test("hostile text is shown and does nothing", async () => {
  const names = ["</script><script>alert(1)</script>", "<img src=x onerror=alert(2)>",
                 "a\u202e\u200b\u2060\u180e\u00ad\u{e0041}txt", "--><!--", "\"'&amp;{{data}}", "very/" + "long".repeat(250000)];
  const escaped = (text) => text.replace(/[&<>"']/g, (letter) => `&#${letter.charCodeAt(0)};`);
  const graph = (content) => "<graphml xmlns='http://graphml.graphdrawing.org/xmlns'><graph edgedefault='directed'>" +
      content + "</graph></graphml>";
  writeFileSync(join(folder, "old.graphml"), graph(""));
  writeFileSync(join(folder, "<b>&new.graphml"), graph(names.map((name) => `<node id="${escaped(name)}">` +
      `<data key="${escaped(name.slice(0, 99))}">${escaped(name)}</data></node>` +
      `<edge source="${escaped(name)}" target="${escaped(names[0])}"/>`).join("")));
  const path = written("hostile.html", [join(folder, "old.graphml"), join(folder, "<b>&new.graphml")], "--no-filter");
  assert.equal((readFileSync(path, "utf8").match(/<script>/g) ?? []).length, 1);
  const page = await open(path);
  assert.equal(await page.title(), "old.graphml \u2192 <b>&new.graphml");
  const shown = await lines(page);
  const plain = await page.textContent("#plain");
  for (const name of names.slice(0, 5)) {
    const visible = name.replace(/[^ -~]/gu, (letter) => {
      const digits = letter.codePointAt(0).toString(16);
      return digits.length < 3 ? `\\x${digits}` : digits.length < 5 ? `\\u${digits}` : `\\u{${digits}}`;
    });
    assert.ok(shown.includes(`+ ${visible}`), `${visible} in ${shown}`);
    assert.ok(plain.includes(visible), `${visible} in ${plain}`);
  }
  await page.click(".line .path >> text=very/");
  await page.waitForSelector("#detail .long");
  assert.ok((await page.$$eval(".line", (all) => Math.max(...all.map((line) => line.textContent.length)))) < 1000);
  await page.click("#detail .long summary >> nth=0");
  assert.equal((await page.textContent("#detail .long .whole")).length, names[5].length);
  assert.equal(await page.locator("img").count(), 0);
  const start = Date.now();
  await page.click("#close-all");
  assert.ok(Date.now() - start < 2000);
  await close(page);
});

test("colours follow the system and the button; the signs stay", async () => {
  const background = (page) => page.evaluate(() => getComputedStyle(document.body).backgroundColor);
  const page = await open(join(folder, "notes.html"));
  const light = await background(page);
  await page.emulateMedia({ colorScheme: "dark" });
  const dark = await background(page);
  assert.notEqual(light, dark);
  await page.click("#theme");
  assert.equal(await background(page), light);
  await page.reload();
  await page.waitForSelector("html[data-ready]");
  assert.equal(await background(page), light);
  await page.click("#theme");
  await page.emulateMedia({ colorScheme: "light" });
  assert.equal(await background(page), dark);
  await page.click("#theme");
  await close(page);
});

test("in print, and without scripts, the changes are there as text", async () => {
  const shown = (page) => page.evaluate(() => document.querySelector("#plain").innerText.replace(/\s+/g, " "));
  const printed = await open(join(folder, "notes.html"), "", { media: "print" });
  const text = await shown(printed);
  assert.match(text, /Files 2 1 1 2 Groups 2 1 1 2 Dependencies 3 2 0 2/);
  assert.match(text, /app\.cc .* \u2192 log\.h .* include .*\u2212 log\.h .* lines: 40 .*\+ net\.cc/);
  assert.equal(await printed.isVisible("#app"), false);
  await close(printed);

  const withoutScripts = await chromium.launch({ executablePath: BROWSER, args: browserOptions });
  const page = await withoutScripts.newPage({ javaScriptEnabled: false });
  await page.goto(`file://${join(folder, "notes.html")}`);
  assert.equal(await page.isVisible("#plain"), true);
  assert.equal(await page.isVisible("#app"), false);
  assert.equal(await page.locator(".changes > li").count(), 5);
  await withoutScripts.close();
});

test("100,000 files and 300,000 groups open and answer at once", async () => {
  const count = 100000;
  const ids = Array.from({ length: count }, (_, i) => `src/part${Math.floor(i / 50)}/file${i}.cc`);
  const edges = ids.flatMap((source, i) => [0, 1, 2].map(
      (k) => ({ source, target: ids[(i * 7919 + k) % count] })));
  const graphs = [edges, edges.filter((_, i) => i % 7)].map((some, side) => {
    const path = join(folder, `large${side}.json`);
    const nodes = Object.fromEntries(ids.map((id) => [id, {}]));
    writeFileSync(path, JSON.stringify({ graph: { nodes, edges: some } }));
    return path;
  });
  const page = await open(written("large.html", graphs, "--no-filter"));
  const ready = Number(await page.getAttribute("html", "data-ready"));
  console.log(`open after ${ready} ms of script`);
  assert.ok(ready < 2000, `${ready} ms`);
  assert.match(await page.textContent("#state"), /^400,000 of 400,000 files and groups/);
  const took = await page.evaluate(async () => {
    const times = {};
    const time = async (name, act) => {
      const start = performance.now();
      act();
      await new Promise((done) => requestAnimationFrame(() => setTimeout(done)));
      times[name] = Math.round(performance.now() - start);
    };
    const tree = document.querySelector("#tree");
    const query = document.querySelector("#query");
    await time("filter", () => document.querySelector("[data-filter=unchanged]").click());
    await time("open all", () => document.querySelector("#open-all").click());
    await time("scroll", () => { tree.scrollTop = tree.scrollHeight / 2; });
    await time("search", () => { query.value = "file77"; query.dispatchEvent(new Event("input")); });
    return times;
  });
  console.log(JSON.stringify(took));
  for (const [what, time] of Object.entries(took)) {
    assert.ok(time < 1000, `${what}: ${time} ms`);
  }
  assert.ok(await page.locator(".line").count() < 100);
  await page.fill("#query", "");
  await page.focus("#tree");
  await page.keyboard.press("End");
  assert.match(await active(page), /file/);
  assert.ok(await page.$eval("#tree", (tree) => {
    const [box, line] = [tree, tree.querySelector("[aria-selected=true]")].map((each) => each.getBoundingClientRect());
    return line.top >= box.top - 1 && line.bottom <= box.bottom + 1;
  }));
  await close(page);
});
