// Help files of many kinds as sites, in a real browser: every entry of their contents is opened,
// and what their own index finds is compared with what the search finds.
import assert from "node:assert/strict";
import { after, before, test } from "node:test";
import { books } from "./books.js";
import { addressOf, exportSite, openBrowser, pageIn, search, text } from "./browser.js";
import { readHelpIndex } from "./help_index.js";

let browser;
const made = new Map();  // the help file and the site of each book

before(async () => {
  browser = await openBrowser();
});
after(() => browser.close());

function siteOf(book) {
  if (!made.has(book)) {
    const source = book.make();
    made.set(book, { source, site: exportSite(source) });
  }
  return made.get(book);
}

// Opens the site's start page; `faults` gets what goes wrong in it. The tab keeps the location that
// the page in the frame told of last.
async function open(site, faults) {
  const tab = await browser.newPage();
  tab.on("pageerror", (error) => faults.push(error.message));
  await tab.evaluateOnNewDocument(() => {
    addEventListener("message", ({ data }) => {
      if (data?.scrivo === "page") window.told = data.location;
    });
  });
  await tab.goto(addressOf(site));
  await tab.waitForSelector("#tree a");
  await tab.waitForFunction(() => window.told);
  return tab;
}

async function openAllBranches(tab) {
  const twist = '#tree [aria-expanded="false"] > .twist';
  for (let closed = await tab.$(twist); closed; closed = await tab.$(twist)) {
    await closed.evaluate((one) => one.click());
  }
}

for (const book of books) {
  test(`shows every page of the contents: ${book.name}`, async () => {
    const { site } = siteOf(book);
    const faults = [];
    const tab = await open(site, faults);
    if (book.opened) assert.equal((await tab.$$("#tree a")).length, book.opened);
    await openAllBranches(tab);
    const entries = await tab.$$eval("#tree a", (all) =>
      all.map((link) => [link.innerText.trim(), link.getAttribute("href")]));
    if (book.tree) {
      assert.equal(await tab.$eval("h1", (title) => title.innerText), book.title);
      assert.deepEqual(entries, Object.entries(book.tree).map(([title, address]) =>
        [title, address && `#${encodeURI(address).replace("#", ":")}`]));
      await pageIn(tab).waitForFunction((told) => document.body?.innerText.includes(told), {}, book.text);
    }
    assert.ok(entries.length > 0);
    for (const [at, [title, address]] of entries.slice(0, book.isPlain ? 3 : undefined).entries()) {
      if (!address?.startsWith("#")) continue;
      const links = await tab.$$("#tree a");
      await links[at].evaluate((link) => link.click());
      const location = addressOf(site, `pages/${address.slice(1).replace(":", "#")}`);
      await tab.waitForFunction((place) => window.told === place, {}, location);
      assert.equal(await tab.evaluate(() => location.hash), address, title);
      // The page that was shown already is loaded once more.
      await pageIn(tab).waitForSelector("body");
    }
    assert.deepEqual(faults, []);
    await tab.close();
  });

  if (book.tree) {
    test(`finds keywords and words: ${book.name}`, async () => {
      const tab = await open(siteOf(book).site, []);
      await tab.click("#tab-index");
      await tab.waitForFunction((count) => document.querySelectorAll("#keywords > li").length === count, {},
        book.keywords.length);
      assert.deepEqual(await text(tab, "#keywords > li > :first-child"), book.keywords);
      const [word, titles] = book.search;
      assert.deepEqual(await search(tab, `${word} `), titles);
      const marked = await text(tab, "#results p mark");
      assert.ok(marked.length > 0);
      assert.ok(marked.every((one) => one.toLowerCase() === word), marked.join());
      await tab.close();
    });
  }
}

// Only pages whose names are plain ASCII: others have other names in the help file's own index.
const isPlain = (name) => /^[\x20-\x7E]*$/.test(name);
const isOfLetters = (word) => /^[a-z]+$/.test(word);

// One table of Latin letters serves every single-byte code page, and makes other words of others.
const hasOtherLetters = (codePage) => codePage !== 1252 && codePage >= 1000;

for (const book of books) {
  test(`finds what the help file's own index does: ${book.name}`, async (context) => {
    const { source, site } = siteOf(book);
    const index = source.endsWith(".chm") ? readHelpIndex(source) : null;
    if (!index || hasOtherLetters(index.codePage)) {
      context.diagnostic(`not compared: ${index ? `code page ${index.codePage}` : "no index of its own"}`);
      return;
    }
    const tab = await open(site, []);
    const found = await tab.evaluate(async () => {
      const engine = await SearchEngine.open();
      const about = await scrivo.load("search");
      const files = about.words.split(" ").map((_, file) => scrivo.load(`words/${file}`));
      const words = (await Promise.all(files)).flatMap(([all]) => all.split(" "));
      const hits = async (word) => Promise.all((await engine.find([{ words: [word] }]))
        .map(async (hit) => decodeURIComponent((await engine.describe(hit)).address)));
      const pages = [];
      for (const word of words) {
        if (!word.endsWith("*")) pages.push([word, await hits(word)]);
      }
      return pages;
    });
    // "word page" of all words of letters.
    const places = (words) => new Set([...words].filter(([word]) => isOfLetters(word))
      .flatMap(([word, names]) => [...names].filter(isPlain).map((name) => `${word} ${name.toLowerCase()}`)));
    const own = places(index.words);
    const ours = places(found);
    context.diagnostic(`${book.name}: ${own.size} places of words of letters compared`);
    assert.ok(own.size > 0);
    const only = (some, others) => [...some].filter((place) => !others.has(place));
    assert.deepEqual({ missing: only(own, ours), added: only(ours, own) }, { missing: [], added: [] });
    await tab.close();
  });
}
