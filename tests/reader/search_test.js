// The search, in a real browser.
import assert from "node:assert/strict";
import { after, before, test } from "node:test";
import { addressOf, exportSite, here, openBrowser, pageIn, search, shown, text } from "./browser.js";

let browser;
let tab;

before(async () => {
  browser = await openBrowser();
  tab = await browser.newPage();
  await tab.goto(addressOf(exportSite(`${here}book/book.hhp`)));
  await tab.waitForSelector("#tree a");
});
after(() => browser.close());

const marks = async (selector) => text(tab, `${selector} mark`);

test("finds words, the best page first", async () => {
  // In the title, in a heading, in the text.
  assert.deepEqual(await search(tab, "roses "), ["Roses"]);
  assert.deepEqual(await search(tab, "rose "), ["Roses", "Welcome to the garden", "Tulips"]);
  assert.deepEqual(await search(tab, "nothing-like-it"), []);
  assert.deepEqual(await text(tab, "#search-status"), ["No page has all these words."]);
});

test("takes the word that is being typed, and one with a star, for a beginning", async () => {
  assert.deepEqual(await search(tab, "weed"), ["Outside the contents"]);
  assert.deepEqual(await search(tab, "weed "), []);
  assert.deepEqual(await search(tab, "weed* grow "), ["Outside the contents"]);
  assert.deepEqual(await search(tab, "w"),
    ["Welcome to the garden", "C sharp", "Objects", "Outside the contents"]);
});

test("wants all words", async () => {
  assert.deepEqual(await search(tab, "spring flower "), ["Tulips"]);
  assert.deepEqual(await search(tab, "spring weeds "), []);
});

test("finds phrases in quotes only where the words follow one another", async () => {
  assert.deepEqual(await search(tab, "\"spring rain helps\""), ["Roses"]);
  assert.deepEqual(await search(tab, "\"rain in spring\""), ["Tulips"]);
  assert.deepEqual(await search(tab, "\"rain spring\""), []);
});

test("knows words as the index of a help file does", async () => {
  assert.deepEqual(await search(tab, "CAFÉ "), ["Welcome to the garden"]);
  assert.deepEqual(await search(tab, "cafe "), ["Welcome to the garden"]);
  assert.deepEqual(await search(tab, "gardeners "), ["Roses"]);
  assert.deepEqual(await search(tab, "1000 "), ["Roses"]);
  assert.deepEqual(await search(tab, "3.5 "), ["Roses"]);
});

test("finds ideographs by pairs, and one alone", async () => {
  assert.deepEqual(await search(tab, "日本"), ["日本語"]);
  assert.deepEqual(await search(tab, "日本の首都"), ["日本語"]);
  assert.deepEqual(await search(tab, "都"), ["日本語"]);
  assert.deepEqual(await search(tab, "京"), ["日本語"]);
  assert.deepEqual(await search(tab, "本日"), []);
  assert.deepEqual(await marks("#results p"), []);
});

test("marks the words in a piece of the text", async () => {
  await search(tab, "thorn");
  assert.deepEqual(await marks("#results"), ["thorns", "thorns"]);
  await search(tab, "\"the thorns\"");
  assert.deepEqual(await marks("#results"), ["the", "thorns"]);
  assert.match((await text(tab, "#results p"))[0], /^… .*mind the thorns/s);
});

test("marks the words in the page that is shown", async () => {
  await search(tab, "flower");
  await tab.click("#results a");
  await shown(tab, "beds/tulips.htm");
  await tab.waitForFunction(() => document.title.startsWith("Tulips"));
  const page = pageIn(tab);
  await page.waitForFunction(() => document.querySelector("mark"));
  assert.deepEqual(await text(page, "mark"), ["flower"]);
  await search(tab, "spring");
  await page.waitForFunction(() => document.querySelectorAll("mark").length === 2);
  assert.deepEqual(await text(page, "mark"), ["spring", "spring"]);
  await search(tab, "rain");
  await page.waitForFunction(() => document.querySelector("mark")?.textContent === "rain");
  assert.deepEqual(await text(page, "mark"), ["rain"]);
  await tab.$eval("#search-field", (field) => {
    field.value = "";
    field.dispatchEvent(new Event("input"));
  });
  await page.waitForFunction(() => !document.querySelector("mark"));
});

test("marks the same words when it marks them twice", async () => {
  await search(tab, "rose");
  await tab.click("#results a");
  await shown(tab, "beds/roses.htm");
  const page = pageIn(tab);
  await page.waitForFunction(() => document.querySelector("mark"));
  // Both answers are on their way before the first one is marked: the marks go, come, come again.
  await page.evaluate(() => {
    window.changes = 0;
    new MutationObserver(() => ++window.changes).observe(document.body, { childList: true, subtree: true });
  });
  await tab.evaluate(() => {
    const frame = document.querySelector("iframe").contentWindow;
    for (const what of ["texts", "texts"]) frame.postMessage({ scrivo: what }, "*");
  });
  await page.waitForFunction(() => window.changes >= 3);
  assert.deepEqual(await text(page, "mark"), ["Roses", "rose", "roses", "rose", "roses"]);
});

test("breaks text as the index was broken", async () => {
  // Every word of the texts stands at the place that the index has for it.
  const [checked, wrong] = await tab.evaluate(async () => {
    const engine = await SearchEngine.open();
    let count = 0;
    const faults = [];
    for (const [, from, title, , text] of await scrivo.load("text/0")) {
      const words = engine.breaker.words(text);
      for (const [at, { word }] of words.entries()) {
        const run = words.slice(at, at + 2).map((one) => one.word);
        const hits = await engine.find([{ words: [word] }]);
        const pairs = run.length < 2 ? hits : await engine.find([{ words: run }]);
        const described = await Promise.all(pairs.map((hit) => engine.describe(hit)));
        ++count;
        if (!described.some((one) => one.title === title)) faults.push([title, from + at, run]);
      }
    }
    return [count, faults];
  });
  assert.ok(checked > 100);
  assert.deepEqual(wrong, []);
});
