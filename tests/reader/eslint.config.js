import js from "@eslint/js";

const browser = [
  "CSS", "HTMLElement", "IntersectionObserver", "NodeFilter", "URL", "addEventListener", "clearTimeout", "document",
  "history", "innerWidth", "localStorage", "location", "matchMedia", "parent", "performance", "print", "self", "setTimeout", "window",
];
const shared = {
  scrivo: "readonly", ContentsTree: "readonly", KeywordList: "readonly", WordBreaker: "readonly",
  SearchEngine: "readonly", SearchPanel: "readonly",
};

export default [
  js.configs.recommended,
  {
    files: ["**/reader/*.js"],
    ignores: ["**/tests/**"],
    languageOptions: {
      sourceType: "script",
      globals: { ...Object.fromEntries(browser.map((name) => [name, "readonly"])), ...shared },
    },
    rules: {
      // What one script declares the others use.
      "no-redeclare": ["error", { builtinGlobals: false }],
      "no-unused-vars": ["error", { vars: "local" }],
      "eqeqeq": "error",
      "no-var": "error",
      "prefer-const": "error",
    },
  },
  {
    files: ["**/tests/reader/*.js"],
    languageOptions: {
      sourceType: "module",
      globals: Object.fromEntries(["process", "Buffer", "TextDecoder", "URL", "addEventListener", "window", "console", "document", "location", "history",
        "getComputedStyle", "axe", "scrivo", "SearchEngine", "Event", "MutationObserver"].map((name) => [name, "readonly"])),
    },
    rules: { "eqeqeq": "error", "no-var": "error", "prefer-const": "error" },
  },
];
