// The frame, its lists and the lists for those without scripts, held against axe's rules. What axe
// finds in the help files' own pages is listed, and no failure: it is for their authors to mend.
import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { createRequire } from "node:module";
import { after, before, test } from "node:test";
import { books } from "./books.js";
import { addressOf, exportSite, here, kind, openBrowser, search, shown } from "./browser.js";

const axe = createRequire(import.meta.url).resolve("axe-core/axe.min.js");
let browser;
let site;
let tab;

// Its rules judge the document, which is the same in every browser.
const skip = kind === "firefox";

before(async () => {
  if (skip) return;
  site = exportSite(`${here}book/book.hhp`);
  browser = await openBrowser();
});
after(() => browser?.close());

async function open(name) {
  tab = await browser.newPage();
  await tab.goto(addressOf(site, name));
}

// What axe finds in the document itself; the pages in its frame are their authors'.
async function findings() {
  await tab.addScriptTag({ path: axe });
  const { violations } = await tab.evaluate(() =>
    axe.run({ exclude: [["iframe"]] }, { iframes: false, resultTypes: ["violations"] }));
  return violations.flatMap((rule) => rule.nodes.map((node) => `${rule.id}: ${node.html}`));
}

for (const scheme of ["light", "dark"]) {
  test(`finds nothing in the frame and its tabs (${scheme})`, { skip }, async () => {
    await open("index.html");
    await tab.emulateMediaFeatures([{ name: "prefers-color-scheme", value: scheme }]);
    await shown(tab, "start.htm");
    await tab.click("#tree > li:nth-child(2) > a");
    assert.deepEqual(await findings(), []);
    await tab.click("#tab-index");
    await tab.waitForSelector("#keywords li");
    assert.deepEqual(await findings(), []);
    await search(tab, "rose");
    assert.deepEqual(await findings(), []);
    await tab.setViewport({ width: 360, height: 640 });
    assert.deepEqual(await findings(), []);
    await tab.click("#menu");
    assert.deepEqual(await findings(), []);
  });
}

test("finds nothing in the list of keywords", { skip }, async () => {
  await open("keywords.html");
  assert.deepEqual(await findings(), []);
});

// The addresses of a site's pages, from the texts of its search.
const pagesOf = () => tab.evaluate(async () => {
  const engine = await SearchEngine.open();
  const about = await scrivo.load("search");
  const pages = Array.from({ length: about.pages }, (_, page) => engine.describe({ page, at: 0 }));
  return (await Promise.all(pages)).map(({ address }) => address);
});

const garden = { name: "garden", make: () => `${here}book/book.hhp` };
for (const book of [garden, ...books.filter(({ isPlain }) => !isPlain)]) {
  test(`lists what it finds in the pages of ${book.name}`, { skip }, async (context) => {
    const own = exportSite(book.make());
    tab = await browser.newPage();
    await tab.goto(addressOf(own));
    await tab.waitForSelector("#tree a");
    const addresses = await pagesOf();
    assert.ok(addresses.length > 0);
    const found = new Map();  // rule -> places, and the page with the first one
    for (const address of addresses) {
      await tab.goto(addressOf(own, `pages/${address}`));
      // Not as a script of the page, which runs none but ours.
      await tab.evaluate(readFileSync(axe, "utf8"));
      const { violations } = await tab.evaluate(() => axe.run({ resultTypes: ["violations"] }));
      for (const { id, nodes } of violations) {
        assert.ok(!nodes.some(({ html }) => html.includes("scrivo-contents")), id);
        const { count = 0, first = address } = found.get(id) ?? {};
        found.set(id, { count: count + nodes.length, first });
      }
    }
    const rules = [...found].sort().map(([id, { count, first }]) => `${id} ${count} (${decodeURI(first)})`);
    context.diagnostic(`axe in ${addresses.length} pages of ${book.name}: ${rules.join(", ") || "nothing"}`);
    await tab.close();
  });
}
