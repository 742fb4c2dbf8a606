// Measures the search of an exported site in headless Chromium, from a disk.
//
//   node bench/search_bench.mjs SITE [CHROMIUM]
//
// 200 queries, the same for the same site: words of titles and texts, one- and two-letter
// beginnings, the commonest words, and phrases of two of these. Each is asked in a new tab, and
// takes from the first file that it reads until its ten best pages are described. The bytes are
// those of all data files that it reads. Needs the packages of tests/reader (npm ci there).
import { readdirSync, readFileSync, statSync } from "node:fs";
import { resolve } from "node:path";
import { fileURLToPath, pathToFileURL } from "node:url";

const site = resolve(process.argv[2]);
process.env.SCRIVO_BROWSER = "chrome";
process.env.SCRIVO_BROWSER_PATH = process.argv[3] ?? "/usr/bin/chromium";
const { openBrowser } = await import("../tests/reader/browser.js");

// What a data file gives to scrivo.put.
function read(name) {
  const script = readFileSync(`${site}/data/${name}.js`, "utf8");
  return JSON.parse(script.slice(script.indexOf(",") + 1, script.lastIndexOf(")"))
    .replace(/\\x3C/g, "<").replace(/,([\]}])/g, "$1"));
}

let state = 1;
const draw = (below) => {
  state = (state * 1103515245 + 12345) % 0x80000000;
  return Math.floor(state / 0x80000000 * below);
};

const wordsOf = (text) => text.match(/[\p{L}\p{N}_]+/gu) ?? [];

// The queries, drawn from the pieces of all pages' texts.
function makeQueries() {
  const titles = [];
  const texts = [];
  const counts = new Map();
  for (const file of readdirSync(`${site}/data/text`)) {
    for (const [, , title, , text] of read(`text/${file.replace(/\.js$/, "")}`)) {
      const words = wordsOf(text);
      titles.push(wordsOf(title));
      texts.push(words);
      for (const word of words) counts.set(word.toLowerCase(), (counts.get(word.toLowerCase()) ?? 0) + 1);
    }
  }
  const common = [...counts].sort((a, b) => b[1] - a[1]).slice(0, 12).map(([word]) => word);
  const some = (lists) => {
    const words = lists[draw(lists.length)];
    const from = draw(Math.max(1, words.length - 2));
    return words.slice(from, from + 1 + draw(3)).join(" ");
  };
  const many = (count, make) => Array.from({ length: count }, (_, number) => make(number));
  const pair = () => `"${common[draw(common.length)]} ${common[draw(common.length)]}"`;
  return {
    "words of titles": many(70, () => `${some(titles)} `),
    "words of texts": many(80, () => `${some(texts)} `),
    "one letter": many(16, (number) => "abcdefgilmnoprst"[number]),
    "two letters": many(8, (number) => ["st", "co", "in", "re", "pr", "de", "ca", "un"][number]),
    "the commonest words": many(10, (number) => `${common[number]} `),
    "phrases of two of them": many(16, pair),
  };
}

const middle = (numbers) => numbers.sort((a, b) => a - b)[numbers.length >> 1];
const worst = (numbers) => Math.max(...numbers);

const browser = await openBrowser();
const all = { times: [], bytes: [] };
const line = (kind, { times, bytes }) =>
  `| ${kind} | ${times.length} | ${middle(times).toFixed(0)} ms | ${worst(times).toFixed(0)} ms ` +
  `| ${middle(bytes).toLocaleString("en")} | ${worst(bytes).toLocaleString("en")} |`;
console.log("| queries | | median | worst | bytes read, median | worst |\n|---|---|---|---|---|---|");
for (const [kind, queries] of Object.entries(makeQueries())) {
  const those = { times: [], bytes: [] };
  for (const query of queries) {
    const tab = await browser.newPage();
    await tab.goto(`${pathToFileURL(site)}/index.html`);
    await tab.waitForSelector("#tree a");
    let bytes = 0;
    tab.on("request", (request) => { bytes += statSync(fileURLToPath(request.url())).size; });
    const time = await tab.evaluate(async (text) => {
      const start = performance.now();
      const engine = await SearchEngine.open();
      const found = await engine.find(engine.parse(text));
      await Promise.all(found.slice(0, 10).map((hit) => engine.describe(hit)));
      return performance.now() - start;
    }, query);
    for (const kept of [those, all]) {
      kept.times.push(time);
      kept.bytes.push(bytes);
    }
    await tab.close();
  }
  console.log(line(kind, those));
}
console.log(line("all", all));
await browser.close();
