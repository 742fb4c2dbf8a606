// Help files of the kinds that people have, made by the compiler that lies beside the program.
import { spawnSync } from "node:child_process";
import { mkdirSync, writeFileSync } from "node:fs";
import { basename, dirname, join } from "node:path";
import { here, programBeside, scratchFolder } from "./browser.js";

const encoders = new Map();

// `text` in a charset that browsers know.
function encode(text, charset) {
  if (!encoders.has(charset)) {
    const decoder = new TextDecoder(charset, { fatal: true });
    const bytes = new Map();
    const add = (...code) => {
      try {
        const character = decoder.decode(Uint8Array.from(code));
        if ([...character].length === 1 && !bytes.has(character)) bytes.set(character, code);
      } catch { /* no character */ }
    };
    for (let first = 0; first < 0x100; ++first) add(first);
    if (charset === "shift_jis") {
      for (let first = 0x81; first < 0xFD; ++first) {
        for (let second = 0x40; second < 0xFD; ++second) add(first, second);
      }
    }
    encoders.set(charset, bytes);
  }
  return Buffer.from([...text].flatMap((character) => {
    const code = encoders.get(charset).get(character);
    if (!code) throw new Error(`${character} is not in ${charset}`);
    return code;
  }));
}

const sitemapItem = ({ name, local, see }, inner = "") => {
  const param = (key, value) => value ? `<param name="${key}" value="${value}">` : "";
  return `<LI><OBJECT type="text/sitemap">${param("Name", name)}${param("Local", local)}` +
    `${param("See Also", see)}</OBJECT>\n${inner}`;
};
const sitemap = (items) => `<UL>\n${items.map((item) =>
  sitemapItem(item, item.below ? sitemap(item.below) : "")).join("")}</UL>\n`;

// Writes a project and compiles it; the path of the help file. `files` are texts in `charset`, or
// Buffers; `contents` and `index` have entries of {name, local, see, below}.
function compile({ name, charset, language, options = "", contents, index, listFolder = "", files }) {
  const folder = scratchFolder("project");
  const write = (path, content) => {
    mkdirSync(dirname(join(folder, path)), { recursive: true });
    writeFileSync(join(folder, path), typeof content === "string" ? encode(content, charset) : content);
  };
  for (const [path, content] of Object.entries(files)) write(path, content);
  const lists = { "Contents file": [contents, "toc.hhc"], "Index file": [index, "words.hhk"] };
  let lines = `[OPTIONS]\nCompiled file=${name}.chm\nLanguage=${language}\n${options}`;
  for (const [option, [items, file]] of Object.entries(lists)) {
    if (!items) continue;
    write(listFolder + file, `<HTML><BODY>\n${sitemap(items)}</BODY></HTML>\n`);
    lines += `${option}=${listFolder + file}\n`;
  }
  write(`${name}.hhp`, `${lines}[FILES]\n${Object.keys(files).join("\n")}\n`);
  const run = spawnSync(programBeside("hhc"), ["--gnu", `${name}.hhp`], { cwd: folder, encoding: "utf8" });
  if (run.status !== 0) throw new Error(`${name}: ${run.stdout}${run.stderr}`);
  return join(folder, `${name}.chm`);
}

const page = (charset, title, body) =>
  `<html><head><meta http-equiv="Content-Type" content="text/html; charset=${charset}">` +
  `<title>${title}</title></head><body>${body}</body></html>`;

// A picture of one dot.
const picture = Buffer.from("R0lGODlhAQABAIAAAAAAAP///yH5BAEAAAAALAAAAAABAAEAAAIBRAA7", "base64");

// One page, and lists that name nothing else.
const small = () => compile({
  name: "small", charset: "windows-1252", language: "0x409", options: "Full-text search=Yes\n",
  contents: [{ name: "Untitled", local: "Untitled1.htm" }],
  index: [],
  files: { "Untitled1.htm": page("windows-1252", "", "<p>The only page.</p>") },
});

// Cyrillic names, titles and pages, and no index.
const cyrillic = () => compile({
  name: "cyrillic", charset: "windows-1251", language: "0x419",
  options: "Full-text search=Yes\nTitle=Справка\nDefault topic=Главная.htm\n",
  contents: [
    { name: "Главная", local: "Главная.htm" },
    { name: "Работа", below: [{ name: "Анализатор кода", local: "Анализатор кода.htm" }] },
  ],
  files: {
    "Главная.htm": page("windows-1251", "Главная страница",
      "<h1>Главная</h1><p>Программа находит ошибки. <a href=\"Анализатор кода.htm\">Дальше</a></p>"),
    "Анализатор кода.htm": page("windows-1251", "Анализатор кода",
      "<h1>Анализатор</h1><p>Ошибки показаны списком.</p>"),
  },
});

// Pages, pictures, styles and the lists in folders; sub-entries and a reference in the index; the
// lists in binary form as well.
const folders = () => compile({
  name: "folders", charset: "windows-1252", language: "0x409", listFolder: "lists/",
  options: "Full-text search=Yes\nBinary TOC=Yes\nBinary Index=Yes\nTitle=Kettles\nDefault topic=html/start.htm\n",
  contents: [
    { name: "Start", local: "../html/start.htm" },
    { name: "Use", local: "../html/use/boil.htm", below: [
      { name: "Boiling", local: "../html/use/boil.htm#how" },
      { name: "Cleaning", local: "../html/use/clean.htm" },
    ] },
  ],
  index: [
    { name: "kettle", local: "../html/start.htm", below: [{ name: "cleaning", local: "../html/use/clean.htm" }] },
    { name: "pot", see: "kettle" },
  ],
  files: {
    "html/start.htm": page("windows-1252", "Start",
      "<link rel=stylesheet href=\"../styles/all.css\"><p>A kettle. <img src=\"..\\pictures\\dot.gif\" alt=dot></p>"),
    "html/use/boil.htm": page("windows-1252", "Boiling water", "<h2 id=how>How</h2><p>It boils.</p>"),
    "html/use/clean.htm": page("windows-1252", "Cleaning", "<p>Vinegar. <a href=\"/html/start.htm\">Back</a></p>"),
    "styles/all.css": "body { background: url(../pictures/dot.gif); }",
    "pictures/dot.gif": picture,
  },
});

const objectOf = (id, command, item) =>
  `<object id="${id}" classid="clsid:adb880a6-d8ff-11cf-9377-00aa003b7a11">` +
  `<param name="Command" value="${command}"><param name="Button" value="Text:More">` +
  `<param name="Item1" value=""><param name="Item2" value="${item}"></object>`;

// Objects of the help viewer, and keywords and names that pages bring themselves.
const objects = () => compile({
  name: "objects", charset: "windows-1252", language: "0x409",
  options: "Full-text search=Yes\nBinary Index=Yes\nAuto Index=Yes\nTitle=Control\n",
  contents: [{ name: "Calls", local: "calls.htm", below: [{ name: "Target", local: "target.htm" }] }],
  index: [{ name: "control", see: "control", below: [{ name: "calling", local: "calls.htm" }] }],
  files: {
    "calls.htm": page("windows-1252", "Calls",
      objectOf("a", "ALink, MENU", "a_target") + objectOf("k", "KLink, MENU", "aim")),
    "target.htm": page("windows-1252", "Target",
      "<object classid=\"clsid:1e2a7bd0-dab9-11d0-b93a-00c04fc99f9e\">" +
      "<param name=\"Keyword\" value=\"aim\"><param name=\"ALink Name\" value=\"a_target\"></object><p>Hit.</p>"),
  },
});

// Japanese names, titles and pages.
const japanese = () => compile({
  name: "japanese", charset: "shift_jis", language: "0x411",
  options: "Full-text search=Yes\nTitle=庭のヘルプ\nDefault topic=はじめに.htm\n",
  contents: [
    { name: "はじめに", local: "はじめに.htm" },
    { name: "表示", below: [{ name: "能力表", local: "sub/能力表.htm" }] },
  ],
  index: [{ name: "能力", local: "sub/能力表.htm" }, { name: "庭", local: "はじめに.htm" }],
  files: {
    "はじめに.htm": page("shift_jis", "はじめに",
      "<h1>庭</h1><p>東京都の庭です。<a href=\"sub/能力表.htm\">能力表</a></p>"),
    "sub/能力表.htm": page("shift_jis", "能力表", "<p>京都の能力とソフトの表。</p>"),
    "tools.htm": page("shift_jis", "Tools", "<p>Kana、kanjiとHTMLのtools.</p>"),
  },
});

// A page with frames of its own, and links for all kinds of windows.
export const framed = () => compile({
  name: "framed", charset: "windows-1252", language: "0x409", options: "Default topic=frames.htm\n",
  contents: [{ name: "Frames", local: "frames.htm" }, { name: "Two", local: "two.htm" }],
  files: {
    "frames.htm": "<html><head><title>Frames</title></head><frameset cols=\"20%,*\">" +
      "<frame name=menu src=menu.htm><frame name=main src=one.htm></frameset></html>",
    "menu.htm": page("windows-1252", "Menu", "<base target=main><a href=two.htm>two</a> " +
      "<a id=top href=two.htm target=_top>two</a> <a id=parent href=two.htm target=_PARENT>two</a>"),
    "one.htm": page("windows-1252", "One", "Page one."),
    "two.htm": page("windows-1252", "Two", "<base target=_top><a id=one href=one.htm>one</a> " +
      "<a id=out target=_self href=\"https://example.com/\">out</a>"),
  },
});

// Texts of words that are drawn by a generator, the same in each run: rare ones and common ones,
// with accents, in titles and in bodies.
const words = () => {
  let state = 12345;
  const draw = (below) => {
    state = (state * 1103515245 + 12345) % 0x80000000;
    return Math.floor(state / 0x80000000 * below);
  };
  const letters = "etaoinshrdluéüçæßcmfwypvbgkqjxz";
  const vocabulary = Array.from({ length: 900 }, () =>
    Array.from({ length: 1 + draw(9) }, () => letters[Math.min(draw(letters.length), draw(letters.length))]).join(""));
  const word = () => {
    const one = vocabulary[Math.min(draw(900), draw(900))];
    return draw(9) === 0 ? one.toUpperCase().replace("SS", "ß") : one;
  };
  const run = (count) => Array.from({ length: count }, word);
  const files = {};
  for (let i = 0; i < 60; ++i) {
    const body = run(40 + draw(200)).map((one) =>
      [`${one} `, `${one}, `, `<b>${one}</b> `, `${one}. `, `${one}'s `, `(${one}) `, `${one}-`, `${one}<br>`][draw(8)]);
    files[`p${i}.htm`] = page("windows-1252", run(1 + draw(4)).join(" "),
      `<h1>${run(3).join(" ")}</h1><p>${body.join("")}</p>`);
  }
  return compile({
    name: "words", charset: "windows-1252", language: "0x409", options: "Full-text search=Yes\n", files,
  });
};

// The web that comes with the program.
function sample() {
  const file = join(scratchFolder("sample"), "sample.chm");
  const web = join(here, "../../samples/Scrivo Builder sample web");
  const run = spawnSync(process.env.SCRIVO, ["compile", "--quiet", web, "-o", file], { encoding: "utf8" });
  if (run.status !== 0) throw new Error(run.stderr);
  return file;
}

// What each book shows: the entries of its contents with the addresses that they lead to, keywords,
// a word to look for with the titles it finds, and a text of the default page. The pages of one
// that `isPlain` are all of one kind, a few are opened; `opened` is how many entries are seen at first.
export const books = [
  { name: "small", make: small, title: "small.chm", tree: { Untitled: "Untitled1.htm" }, keywords: [],
    search: ["only", ["Untitled1.htm"]], text: "The only page." },
  { name: "cyrillic", make: cyrillic, title: "Справка",
    tree: { "Главная": "Главная.htm", "Работа": null, "Анализатор кода": "Анализатор кода.htm" },
    keywords: [], search: ["ошибки", ["Главная страница", "Анализатор кода"]],
    text: "Программа находит ошибки." },
  { name: "folders", make: folders, title: "Kettles",
    tree: { Start: "html/start.htm", Use: "html/use/boil.htm", Boiling: "html/use/boil.htm#how",
      Cleaning: "html/use/clean.htm" },
    keywords: ["kettle", "cleaning", "pot, see kettle"], search: ["vinegar", ["Cleaning"]], text: "A kettle." },
  { name: "objects", make: objects, title: "Control", opened: 2,
    tree: { Calls: "calls.htm", Target: "target.htm" }, keywords: ["aim", "control", "calling"],
    search: ["hit", ["Target"]], text: "More" },
  { name: "japanese", make: japanese, title: "庭のヘルプ",
    tree: { "はじめに": "はじめに.htm", "表示": null, "能力表": "sub/能力表.htm" },
    keywords: ["庭", "能力"], search: ["能力", ["能力表", "はじめに"]], text: "東京都の庭です。" },
  { name: "sample", make: sample },
  { name: "words", make: words, isPlain: true },
  // Help files and projects of one's own: SCRIVO_BOOKS has their paths, parted by ":".
  ...(process.env.SCRIVO_BOOKS ?? "").split(":").filter(Boolean)
    .map((path) => ({ name: join(basename(dirname(path)), basename(path)), make: () => path })),
];
