// The frame, its lists and the lists for those without scripts, held against axe's rules.
import assert from "node:assert/strict";
import { createRequire } from "node:module";
import { after, before, test } from "node:test";
import { addressOf, exportSite, here, kind, openBrowser, search, shown } from "./browser.js";

const axe = createRequire(import.meta.url).resolve("axe-core/axe.min.js");
let browser;
let site;
let tab;

before(async () => {
  site = exportSite(`${here}book/book.hhp`);
  browser = await openBrowser();
});
after(() => browser.close());

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
  test(`finds nothing in the frame and its tabs (${scheme})`, { skip: kind === "firefox" }, async () => {
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

test("finds nothing in the list of keywords", async () => {
  await open("keywords.html");
  assert.deepEqual(await findings(), []);
});
