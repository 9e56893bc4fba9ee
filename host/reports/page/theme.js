// Light, dark, or the system's choice.

const themes = ["auto", "light", "dark"];
const themeKey = "depcompare-theme";

/** @param {string} theme */
function setTheme(theme) {
  document.documentElement.dataset.theme = theme;
  const button = /** @type {HTMLElement} */ (document.getElementById("theme"));
  button.textContent = { auto: "\u25d0", light: "\u2600", dark: "\u263e" }[theme] ?? "";
  button.title = `Colours: ${theme === "auto" ? "the system's" : theme}`;
  button.setAttribute("aria-label", button.title);
  button.hidden = false;
}

export function setUpTheme() {
  let theme = "auto";
  try {
    theme = localStorage.getItem(themeKey) ?? theme;
  } catch {
    // Some browsers store nothing for local files; then the choice lasts as long as the page.
  }
  setTheme(themes.includes(theme) ? theme : "auto");
  document.getElementById("theme")?.addEventListener("click", () => {
    const now = document.documentElement.dataset.theme ?? "auto";
    const next = themes[(themes.indexOf(now) + 1) % themes.length];
    setTheme(next);
    try {
      localStorage.setItem(themeKey, next);
    } catch {
      // As above.
    }
  });
}
