// The frame around the pages, in a real browser, from a disk and from a web server.
import assert from "node:assert/strict";
import { after, before, test } from "node:test";
import { framed } from "./books.js";
import { addressOf, exportSite, here, kind, openBrowser, pageIn, search, serve, shown, text } from "./browser.js";

let browser;
let site;
let tab;
let faults;

before(async () => {
  site = exportSite(`${here}book/book.hhp`);
  browser = await openBrowser();
});
after(() => browser.close());

async function open(address = addressOf(site)) {
  // The new tab comes first: a browser may open one in the window that it is about to close.
  const last = tab;
  tab = await browser.newPage();
  await last?.close();
  faults = [];
  tab.on("pageerror", (error) => faults.push(error.message));
  await tab.goto(address);
  await tab.waitForSelector("#tree a");
  return tab;
}

const focused = () => tab.evaluate(() => document.activeElement.innerText.trim());
const press = async (...keys) => { for (const key of keys) await tab.keyboard.press(key); };

test("opens the default page first, with the contents beside it", async () => {
  await open();
  await shown(tab, "start.htm");
  assert.equal(await tab.title(), "Welcome to the garden – Gardens & <paths>");
  assert.deepEqual(await text(tab, "#tree > li > a"),
    ["Welcome", "Beds", "Objects", "Elsewhere", "Trap", "Old page", "Evil page"]);
  assert.equal(await tab.$eval("#tree [aria-current]", (link) => link.innerText.trim()), "Welcome");
  assert.match(await pageIn(tab).$eval("body", (body) => body.innerText), /Café and spade .* naïve/s);
  assert.deepEqual(faults, []);
});

test("opens branches and shows the page of an entry", async () => {
  await open();
  await shown(tab, "start.htm");
  assert.equal(await tab.$("#tree ul"), null);
  await tab.click("#tree > li:nth-child(2) > a");
  assert.deepEqual(await text(tab, "#tree ul > li > a"), ["Roses", "Tulips", "Tools <b>"]);
  await tab.click("#tree ul > li:nth-child(2) > a");
  await shown(tab, "beds/tulips.htm");
  assert.deepEqual(await text(tab, "#trail li"), ["Beds", "Tulips"]);
});

test("goes back and forward over links in pages and in the contents", async () => {
  await open();
  await shown(tab, "start.htm");
  await pageIn(tab).click("a");
  await shown(tab, "beds/roses.htm");
  await tab.click("#tree > li:nth-child(3) > a");
  await shown(tab, "objects.htm");
  await tab.evaluate(() => history.back());
  await shown(tab, "beds/roses.htm");
  await tab.evaluate(() => history.back());
  await shown(tab, "start.htm");
  await tab.evaluate(() => history.forward());
  await shown(tab, "beds/roses.htm");
  assert.equal(await tab.$eval("#tree [aria-current]", (link) => link.innerText.trim()), "Roses");
});

test("gives every page and place an address of its own", async () => {
  await open(addressOf(site, "index.html#beds/roses.htm:pruning"));
  await shown(tab, "beds/roses.htm:pruning");
  assert.equal(await pageIn(tab).evaluate(() => location.hash), "#pruning");
  assert.equal(await tab.$eval("#tree [aria-current]", (link) => link.innerText.trim()), "Pruning");
  await tab.evaluate(() => { location.hash = "#beds/tulips.htm"; });
  await shown(tab, "beds/tulips.htm");
  await tab.waitForFunction(() => document.title.startsWith("Tulips"));
});

test("shows nothing that lies outside the folder of the pages", async () => {
  for (const trap of ["../index.html", "%2e%2e/index.html", "..%5Cindex.html", "//example.com/",
    "javascript:document.title='hit'", "/etc/passwd"]) {
    await open(addressOf(site, `index.html#${trap}`));
    await tab.waitForSelector("iframe");
    const source = await tab.$eval("iframe", (frame) => frame.src);
    assert.ok(source.startsWith(addressOf(site, "pages/")), source);
    assert.ok(!(await tab.title()).startsWith("hit"));
  }
});

test("follows links that only the help viewer knew", async () => {
  await open();
  await shown(tab, "start.htm");
  const links = await pageIn(tab).$$eval("a", (all) => all.map((link) => link.getAttribute("href")));
  assert.deepEqual(links,
    ["beds/roses.htm", "beds/tulips.htm", "beds/roses.htm#pruning", null, "#end"]);
  assert.equal(await pageIn(tab).$eval("#other", (link) => link.title),
    "In another help file, other.chm: /x.htm");
});

test("keeps a link for the whole window in the frame", async () => {
  await open(addressOf(site, "index.html#beds/roses.htm"));
  await shown(tab, "beds/roses.htm");
  await pageIn(tab).click("a[target]");
  await shown(tab, "beds/tulips.htm");
  assert.ok(await tab.$("#tree"));
});

test("leads out of the frames of a page, and not out of its own", async () => {
  const frames = exportSite(framed());
  const inner = async (name) => (await tab.waitForFrame((frame) => frame.url().endsWith(name)));
  for (const link of ["#top", "#parent"]) {
    await open(addressOf(frames));
    await shown(tab, "frames.htm");
    await (await inner("/menu.htm")).waitForSelector(link);
    await (await inner("/menu.htm")).click("a");
    await inner("/two.htm");
    assert.equal(await tab.evaluate(() => location.hash), "#frames.htm");
    await (await inner("/menu.htm")).click(link);
    await shown(tab, "two.htm");
    await tab.waitForFunction(() => document.title.startsWith("Two"));
  }
  await pageIn(tab).click("#one");
  await shown(tab, "one.htm");
  assert.ok(await tab.$("#tree"));
});

test("opens other sites in a tab of their own", async () => {
  const server = await serve(site, "/");
  try {
    await open(addressOf(exportSite(framed()), "index.html#two.htm"));
    await tab.waitForFunction(() => document.title.startsWith("Two"));
    await pageIn(tab).$eval("#out", (link, address) => { link.href = address; }, server.address);
    await pageIn(tab).click("#out");
    const other = await browser.waitForTarget((target) => target.url().startsWith(server.address));
    assert.ok(pageIn(tab).url().endsWith("two.htm"));
    await (await other.page()).close();
  } finally {
    server.close();
  }
});

test("makes links of the objects of the help viewer", async () => {
  await open(addressOf(site, "index.html#objects.htm"));
  await shown(tab, "objects.htm");
  assert.equal(await pageIn(tab).$("object"), null);
  assert.deepEqual(await text(pageIn(tab), "a"),
    ["Roses", "Tulips", "By keyword", "By association", "Watering"]);
  assert.deepEqual(await pageIn(tab).$$eval("a", (all) => all.map((link) => link.getAttribute("href"))),
    ["beds/roses.htm", "beds/tulips.htm", "beds/tulips.htm", "outside.htm", null]);
  assert.match(await pageIn(tab).$eval("body", (body) => body.innerText), /Watering \(Water daily\.\)/);
});

test("runs no script of the help file, and shows its texts as texts", async () => {
  await open(addressOf(site, "index.html#evil.htm"));
  await tab.waitForFunction(() => document.title.startsWith("Evil"));
  await pageIn(tab).click("#run");
  await search(tab, "marks");
  const title = "Evil <script>document.title=\"hit\"</script>";
  assert.deepEqual(await text(tab, "#results .title"), [title]);
  assert.equal(await tab.title(), `${title} – Gardens & <paths>`);
  assert.equal(await tab.$("#results img, #results script"), null);
  assert.match((await text(tab, "#results p"))[0], /<img src=x onerror=alert\(1\)> marks nothing/);
});

test("leaves the scripts of the pages in when asked to", async () => {
  const scripts = exportSite(`${here}book/book.hhp`, "--scripts");
  await open(addressOf(scripts, "index.html#evil.htm"));
  await tab.waitForFunction(() => document.title.startsWith("hit"));
});

test("is walked through by keyboard", async () => {
  await open();
  await shown(tab, "start.htm");
  await tab.focus("#tab-contents");
  await press("ArrowRight");
  assert.equal(await focused(), "Index");
  await press("End");
  assert.equal(await focused(), "Search");
  await press("Home", "Tab");
  assert.equal(await focused(), "Welcome");
  await press("ArrowDown", "ArrowRight", "ArrowRight");
  assert.equal(await focused(), "Roses");
  await press("ArrowRight", "ArrowRight");
  assert.equal(await focused(), "Pruning");
  await press("Enter");
  await shown(tab, "beds/roses.htm:pruning");
  await press("ArrowLeft", "ArrowLeft", "ArrowLeft");
  assert.equal(await focused(), "Beds");
  await press("ArrowLeft");
  assert.equal(await tab.$eval("#tree ul", (list) => list.hidden), true);
  await press("o");
  assert.equal(await focused(), "Objects");
  await press("End", "ArrowUp");
  assert.equal(await focused(), "Old page");
  await press("/");
  assert.equal(await tab.evaluate(() => document.activeElement.id), "search-field");
});

test("goes through the pages by its buttons", async () => {
  await open();
  await shown(tab, "start.htm");
  assert.equal(await tab.$eval("#previous", (button) => button.disabled), true);
  for (const address of ["beds/roses.htm", "beds/tulips.htm", "tools.asp.htm", "objects.htm"]) {
    await tab.click("#next");
    await shown(tab, address);
  }
  await tab.click("#previous");
  await shown(tab, "tools.asp.htm");
});

test("lists the keywords in order, and jumps to what is typed", async () => {
  await open();
  await tab.click("#tab-index");
  await tab.waitForSelector("#keywords li");
  assert.deepEqual(await text(tab, "#keywords > li > :first-child"),
    ["Blumen, see tulip", "pruning", "rose", "red", "tulip", "weeds"]);
  await tab.type("#index-field", "pr");
  await tab.keyboard.press("ArrowDown");
  await tab.click("#keywords summary");
  await tab.click("#keywords details a");
  await shown(tab, "beds/roses.htm:pruning");
  await tab.$eval("#index-field", (field) => { field.value = ""; });
  await tab.type("#index-field", "zzz");
  assert.equal((await text(tab, "#index-status"))[0], "No keyword contains this.");
  await tab.$eval("#index-field", (field) => { field.value = ""; });
  await tab.type("#index-field", "blu");
  await tab.click("#keywords .see");
  assert.equal(await tab.$eval("#index-field", (field) => field.value), "tulip");
  assert.equal(await focused(), "tulip");
});

test("fits a telephone", async () => {
  await open();
  await shown(tab, "start.htm");
  await tab.setViewport({ width: 360, height: 640 });
  const visible = (selector) => tab.$eval(selector, (one) => getComputedStyle(one).visibility);
  await tab.waitForFunction(() => getComputedStyle(document.getElementById("panes")).visibility === "hidden");
  const width = () => tab.evaluate(() => document.documentElement.scrollWidth);
  assert.equal(await width(), 360);
  await tab.click("#menu");
  await tab.waitForFunction(() => getComputedStyle(document.getElementById("panes")).visibility === "visible");
  assert.equal(await tab.$eval("#menu", (menu) => menu.getAttribute("aria-expanded")), "true");
  await tab.click("#tree > li:nth-child(3) > a");
  await shown(tab, "objects.htm");
  await tab.waitForFunction(() => getComputedStyle(document.getElementById("panes")).visibility === "hidden");
  assert.equal(await visible("#view"), "visible");
  assert.equal(await width(), 360);
});

test("keeps the width of the contents for a wider window", async () => {
  await open();
  await tab.setViewport({ width: 360, height: 640 });
  await tab.reload();
  await tab.waitForSelector("#tree a");
  await tab.setViewport({ width: 1100, height: 640 });
  const width = () => tab.$eval("#panes", (panes) => panes.getBoundingClientRect().width);
  assert.equal(await width(), 320);
  await tab.focus("#border");
  await press("ArrowRight");
  assert.equal(await width(), 340);
  await tab.reload();
  await tab.waitForSelector("#tree a");
  assert.equal(await width(), 340);
});

test("shows the end of a trail that does not fit", async () => {
  await open(addressOf(site, "index.html#beds/roses.htm:pruning"));
  await tab.setViewport({ width: 290, height: 640 });
  await tab.waitForFunction(() => document.querySelectorAll("#trail li").length === 3);
  const [nav, ...parts] = await tab.$$eval("#bar nav, #trail li", (all) =>
    all.map((one) => ({ ...one.getBoundingClientRect().toJSON(), isCut: one.scrollWidth > one.clientWidth })));
  assert.ok(parts[0].left < nav.left, "the trail fits");
  assert.ok(parts[2].left >= nav.left && parts[2].right <= nav.right);
  assert.ok(parts.every((part) => !part.isCut));
});

test("is dark where the user wants it dark", { skip: kind === "firefox" }, async () => {
  await open();
  const back = () => tab.$eval("body", (body) => getComputedStyle(body).backgroundColor);
  const light = await back();
  await tab.emulateMediaFeatures([{ name: "prefers-color-scheme", value: "dark" }]);
  const brightness = (colour) => colour.match(/\d+/g).slice(0, 3).reduce((sum, part) => sum + Number(part), 0);
  assert.ok(brightness(light) > 600, light);
  assert.ok(brightness(await back()) < 150);
});

test("prints the page without the frame", { skip: kind === "firefox" }, async () => {
  await open();
  await shown(tab, "start.htm");
  await tab.waitForFunction(() => document.querySelector("iframe").style.getPropertyValue("--height") > "1500px");
  await tab.emulateMediaType("print");
  const box = (selector) => tab.$eval(selector, (one) => one.getBoundingClientRect().height);
  assert.equal(await box("#panes"), 0);
  assert.equal(await box("#bar"), 0);
  assert.ok(await box("iframe") > 1500);
});

test("works on a web server, below any path", async () => {
  const server = await serve(site, "/a%20b/c/".replace("%20", " "));
  try {
    await open(server.address.replace("/a b/", "/a%20b/"));
    await shown(tab, "start.htm");
    await pageIn(tab).click("a");
    await shown(tab, "beds/roses.htm");
    assert.deepEqual(await search(tab, "tulips"), ["Tulips", "Roses"]);
    assert.deepEqual(faults, []);
  } finally {
    server.close();
  }
});

test("tells when a file of the site is missing", async () => {
  const { rmSync } = await import("node:fs");
  const broken = exportSite(`${here}book/book.hhp`);
  rmSync(`${broken}/data/search.js`);
  await open(addressOf(broken));
  await tab.click("#tab-search");
  await tab.type("#search-field", "rose");
  await tab.waitForFunction(() => document.getElementById("search-status").textContent.includes("data/search.js"));
});

test("leads from a page that stands alone to the contents", async () => {
  tab = await browser.newPage();
  await tab.goto(addressOf(site, "pages/beds/roses.htm"));
  await tab.waitForSelector(".scrivo-contents");
  await tab.$eval(".scrivo-contents", (link) => link.click());
  await tab.waitForSelector("#tree a");
  await shown(tab, "beds/roses.htm");
});

test("is a list of the contents and of the index without scripts", { skip: kind === "firefox" }, async () => {
  tab = await browser.newPage();
  await tab.setJavaScriptEnabled(false);
  await tab.goto(addressOf(site));
  assert.deepEqual(await tab.$$eval("noscript a", (all) => all.map((link) => link.getAttribute("href"))),
    ["keywords.html", "pages/start.htm", "pages/beds/roses.htm", "pages/beds/roses.htm#pruning",
      "pages/beds/tulips.htm", "pages/tools.asp.htm", "pages/objects.htm", "https://example.com/",
      "pages/old.htm", "pages/evil.htm"]);
  await tab.click("noscript a[href='pages/beds/roses.htm']");
  await tab.waitForFunction(() => document.title === "Roses");
  await tab.goto(addressOf(site, "keywords.html"));
  assert.deepEqual(await text(tab, "li a"), ["Roses", "Welcome", "red", "tulip", "weeds"]);
});
