// Text of graphs in the document: always as text, with nothing in it that cannot be seen or that
// changes the text around it.

/**
 * Characters that cannot be seen, or that change how the text around them is shown, but for variation
 * selectors of emoji and Han characters; the same as in the other reports.
 */
const unsafeText = new RegExp(
    "(?!(?<=\\p{Emoji})(?<!\\p{ASCII})[\\ufe0e\\ufe0f]" +
    "|(?<=\\p{Ideographic})[\\ufe00-\\ufe02\\u{e0100}-\\u{e01ef}])" +
    "[\\p{Cc}\\p{Cf}\\p{Zl}\\p{Zp}\\p{Default_Ignorable_Code_Point}\\u2800]", "u");
const unsafeTexts = new RegExp(unsafeText.source, "gu");

/** Longer texts are shortened if there is no room for them. */
export const longText = 240;

/**
 * @param {string} letter
 * @returns {string}
 */
function escapeOf(letter) {
  const known = { "\n": "\\n", "\r": "\\r", "\t": "\\t" }[letter];
  if (known) {
    return known;
  }
  const code = letter.codePointAt(0) ?? 0;
  const digits = code.toString(16);
  return code < 0x100 ? `\\x${digits.padStart(2, "0")}`
      : code < 0x10000 ? `\\u${digits.padStart(4, "0")}` : `\\u{${digits}}`;
}

/**
 * The text with unsafe characters written as escapes.
 * @param {string} text
 * @returns {string}
 */
export function visibleText(text) {
  return unsafeText.test(text) ? text.replace(unsafeTexts, escapeOf) : text;
}

/**
 * The text, or its beginning and end if it is longer than `room`.
 * @param {string} text
 * @param {number} room in UTF-16 units
 * @returns {string}
 */
export function clipped(text, room = longText) {
  if (text.length <= room) {
    return text;
  }
  const head = Math.floor(room / 3);
  return wholeLetters(text.slice(0, head) + "\u2026" + text.slice(text.length - (room - head - 1)));
}

/**
 * The text, or its end if it is longer than `room`, since the end of a path says more than its
 * beginning; a text that begins with `<` still does.
 * @param {string} text
 * @param {number} room in UTF-16 units
 * @returns {string}
 */
export function cutFromLeft(text, room = longText) {
  if (text.length <= room) {
    return text;
  }
  const bracket = text.startsWith("<") ? "<" : "";
  return wholeLetters(`${bracket}\u2026${text.slice(text.length - room + bracket.length + 1)}`);
}

/**
 * @param {string} text
 * @returns {string} without halves of letters
 */
function wholeLetters(text) {
  return text.replace(/[\ud800-\udbff](?![\udc00-\udfff])/g, "")
      .replace(/(?<![\ud800-\udbff])[\udc00-\udfff]/g, "");
}

/**
 * @typedef {Node | string | number | null | undefined | false} Content
 */

/**
 * Makes an element. Attributes that are false or missing are left out; names with "on" make
 * listeners.
 * @param {string} name
 * @param {Record<string, any>} attributes
 * @param {...Content} content
 * @returns {HTMLElement}
 */
export function element(name, attributes = {}, ...content) {
  const made = document.createElement(name);
  for (const [key, value] of Object.entries(attributes)) {
    if (key.startsWith("on")) {
      made.addEventListener(key.slice(2), value);
    } else if (value !== false && value !== undefined && value !== null) {
      made.setAttribute(key, value === true ? "" : String(value));
    }
  }
  for (const part of content) {
    if (part instanceof Node) {
      made.append(part);
    } else if (part !== null && part !== undefined && part !== false) {
      made.append(String(part));
    }
  }
  return made;
}

/**
 * Text of a graph, isolated from the direction of the text around it.
 * @param {string} text
 * @param {string} kind its class
 * @returns {HTMLElement}
 */
export function graphText(text, kind = "text") {
  return element("bdi", { class: kind }, visibleText(text));
}

/**
 * A path whose name is more prominent than its folders. Where it has too little room the style sheet
 * cuts it from the left, but for a `<` at its beginning.
 * @param {string} path
 * @param {number} room
 * @returns {HTMLElement}
 */
export function pathText(path, room = longText) {
  const shown = visibleText(cutFromLeft(path, room));
  const begin = shown.startsWith("<") ? 1 : 0;
  const end = Math.max(begin, shown.lastIndexOf("/", shown.length - 2) + 1);
  return element("span", { class: "path" }, begin > 0 && element("span", { class: "bracket" }, "<"),
                 element("span", { class: "cut" }, element("bdi", {},
                     end > begin && element("span", { class: "folder" }, shown.slice(begin, end)),
                     element("span", { class: "base" }, shown.slice(end) || "\u00a0"))));
}

/**
 * All of a text; a long one is shortened until a click opens it.
 * @param {string} text
 * @param {(text: string) => HTMLElement} show
 * @returns {HTMLElement}
 */
export function wholeText(text, show = graphText) {
  if (text.length <= 4 * longText) {
    return show(text);
  }
  const box = element("details", { class: "long" },
                      element("summary", {}, graphText(clipped(text)),
                              ` (${plainNumber(text.length)} characters)`));
  box.addEventListener("toggle", () => {
    if (box.childElementCount === 1) {
      box.append(element("div", { class: "whole" }, graphText(text)));
    }
  });
  return box;
}

/**
 * @param {number} number
 * @returns {string}
 */
export function plainNumber(number) {
  return number.toLocaleString("en-US");
}

/**
 * The number with the word that goes with it.
 * @param {number} number
 * @param {string} one
 * @param {string} several
 * @returns {string}
 */
export function counted(number, one, several = one + "s") {
  return `${plainNumber(number)} ${number === 1 ? one : several}`;
}
