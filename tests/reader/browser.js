// What the browser tests share: a browser, sites made by the program under test, and a web server.
//
// SCRIVO is the program's path; SCRIVO_BROWSER is "chrome" or "firefox", SCRIVO_BROWSER_PATH where
// it is.
import { spawnSync } from "node:child_process";
import { createReadStream, existsSync, mkdtempSync, rmSync } from "node:fs";
import { createServer } from "node:http";
import { tmpdir } from "node:os";
import { dirname, extname, join, resolve } from "node:path";
import { fileURLToPath, pathToFileURL } from "node:url";
import puppeteer from "puppeteer-core";

export const here = fileURLToPath(new URL(".", import.meta.url));
export const kind = process.env.SCRIVO_BROWSER ?? "chrome";

const scratch = mkdtempSync(join(tmpdir(), "scrivo-browser-"));
process.on("exit", () => rmSync(scratch, { recursive: true, force: true }));

// A new folder that goes when the tests end.
export const scratchFolder = (name) => mkdtempSync(join(scratch, `${name}-`));

// Another program of the project, which lies where the one under test does.
export const programBeside = (name) => join(dirname(process.env.SCRIVO), name);

// Makes the site of a help file, project or web; its folder.
export function exportSite(source, ...options) {
  const folder = scratchFolder("site");
  const run = spawnSync(process.env.SCRIVO, ["export", "--quiet", source, folder, ...options], {
    encoding: "utf8",
  });
  if (!existsSync(join(folder, "index.html"))) throw new Error(`no site of ${source}: ${run.stderr}`);
  return folder;
}

export const addressOf = (folder, rest = "index.html") =>
  `${pathToFileURL(folder).href}/${rest}`;

export async function openBrowser() {
  const chromium = [
    "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
    "--disable-background-networking", "--disable-component-update", "--disable-sync",
  ];
  return puppeteer.launch({
    browser: kind,
    executablePath: process.env.SCRIVO_BROWSER_PATH,
    headless: true,
    args: kind === "chrome" ? chromium : [],
    userDataDir: scratchFolder("profile"),
  });
}

// Serves a folder below `path`, and nothing else, as any static host does.
export async function serve(folder, path) {
  const types = { ".html": "text/html", ".htm": "text/html", ".js": "text/javascript", ".css": "text/css" };
  const server = createServer((request, response) => {
    const name = decodeURIComponent(new URL(request.url, "http://localhost").pathname);
    const file = resolve(join(folder, name.slice(path.length)));
    if (!name.startsWith(path) || !file.startsWith(folder) || !existsSync(file)) {
      response.writeHead(404).end();
      return;
    }
    response.writeHead(200, { "Content-Type": types[extname(file)] ?? "application/octet-stream" });
    createReadStream(file).pipe(response);
  });
  await new Promise((done) => server.listen(0, "127.0.0.1", done));
  return {
    address: `http://127.0.0.1:${server.address().port}${path}index.html`,
    close: () => server.close(),
  };
}

// The document of the page within the frame.
export const pageIn = (tab) => tab.frames().find((frame) => frame.parentFrame() === tab.mainFrame());

// Waits until the frame shows the page at `address`.
export async function shown(tab, address) {
  await tab.waitForFunction((hash) => location.hash === hash, {}, `#${address}`);
}

export const text = (tab, selector) =>
  tab.$$eval(selector, (found) => found.map((one) => one.innerText.trim()));

// Waits for the results of a search: their titles.
export async function search(tab, words) {
  await tab.click("#tab-search");
  await tab.$eval("#search-field", (field) => { field.value = ""; });
  await tab.evaluate(() => { document.getElementById("search-status").textContent = ""; });
  await tab.type("#search-field", words);
  await tab.waitForFunction(() => document.getElementById("search-status").textContent !== "");
  return text(tab, "#results .title");
}
