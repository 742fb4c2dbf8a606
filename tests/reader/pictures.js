// Makes the pictures of an exported site that the documents show:
//
//   node tests/reader/pictures.js SCRIVO HELP_FILE FOLDER
//
// Needs Chromium, and mogrify to make the files small.
import { spawnSync } from "node:child_process";
import { join } from "node:path";

const [program, helpFile, folder] = process.argv.slice(2);
process.env.SCRIVO = program;
process.env.SCRIVO_BROWSER_PATH ??= "/usr/bin/chromium";
const { addressOf, exportSite, openBrowser, pageIn, search, shown } = await import("./browser.js");

const site = exportSite(helpFile);
const browser = await openBrowser();

async function open(width, height, scheme, address) {
  const tab = await browser.newPage();
  await tab.setViewport({ width, height });
  await tab.emulateMediaFeatures([{ name: "prefers-color-scheme", value: scheme }]);
  await tab.goto(addressOf(site, `index.html#${address}`));
  await shown(tab, address);
  await tab.waitForFunction(() => document.title.includes(" – "));
  return tab;
}
async function keep(tab, name) {
  const path = join(folder, name);
  await tab.screenshot({ path });
  spawnSync("mogrify", ["+dither", "-colors", "128", "-strip", "-define", "png:compression-level=9", path]);
}

async function searched(width, height, scheme, words) {
  const tab = await open(width, height, scheme, "index.html");
  await search(tab, words);
  return tab;
}

const desktop = await open(1120, 700, "light", "keywords.html");
await keep(desktop, "site.png");

const results = await searched(1120, 700, "light", "help file");
await results.click("#results a");
await pageIn(results).waitForSelector("mark");
await keep(results, "site-search.png");

await keep(await open(1120, 700, "dark", "keywords.html"), "site-dark.png");

const phone = await open(390, 780, "light", "index.html");
await keep(phone, "site-phone.png");
await phone.click("#menu");
await phone.waitForFunction(() => getComputedStyle(document.getElementById("panes")).visibility === "visible");
await keep(phone, "site-phone-contents.png");
await browser.close();
