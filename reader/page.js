"use strict";

// The one script of a page: it tells the frame around it where the page is, marks words that were
// searched, and prints the page by itself. A page that stands alone gets a way to the contents.
(() => {
  const script = document.currentScript;
  const frame = new URL("../index.html", script.src);
  const pages = new URL("../pages/", script.src).href;
  const address = () => location.href.slice(pages.length);

  if (window.parent === window) {
    if (!location.href.startsWith(pages)) return;
    addEventListener("DOMContentLoaded", () => {
      const link = document.createElement("a");
      link.href = `${frame.href}#${address().replace("#", ":")}`;
      link.textContent = "Contents";
      link.className = "scrivo-contents";
      const landmark = document.createElement("nav");
      landmark.ariaLabel = "Help file";
      const style = document.createElement("style");
      style.textContent = ".scrivo-contents{all:initial;position:fixed;right:12px;bottom:12px;" +
        "padding:6px 12px;border-radius:16px;background:#1f5f8b;color:#fff;cursor:pointer;" +
        "font:14px system-ui,sans-serif;box-shadow:0 1px 4px #0004}" +
        ".scrivo-contents:focus-visible{outline:3px solid #8cf}" +
        "@media print{.scrivo-contents{display:none}}";
      landmark.append(style, link);
      document.body.append(landmark);
    });
    return;
  }

  // From a disk every page has an origin of its own, "null"; elsewhere only the site itself is
  // spoken to.
  const origin = self.origin === "null" ? "*" : self.origin;
  const tell = (what, more) => parent.postMessage({ scrivo: what, ...more }, origin);

  const report = () => tell("page", {
    location: location.href,
    title: document.title,
    height: document.documentElement.scrollHeight,
  });

  // The text nodes that a reader sees, in their order.
  function textNodes() {
    const walker = document.createTreeWalker(document.body, NodeFilter.SHOW_TEXT, (node) =>
      /^(script|style|noscript|textarea|title)$/i.test(node.parentNode.nodeName)
        ? NodeFilter.FILTER_REJECT : NodeFilter.FILTER_ACCEPT);
    const nodes = [];
    while (walker.nextNode()) nodes.push(walker.currentNode);
    return nodes;
  }

  function unmark() {
    for (const mark of document.querySelectorAll("mark.scrivo")) {
      const parent = mark.parentNode;
      mark.replaceWith(...mark.childNodes);
      parent.normalize();
    }
  }

  // `ranges`: node number, start and end, one after the other, in the order of the text without
  // marks. What has been marked for an earlier question is not any more.
  function mark(ranges) {
    unmark();
    const nodes = textNodes();
    for (let i = ranges.length - 3; i >= 0; i -= 3) {
      const node = nodes[ranges[i]];
      if (!node || ranges[i + 2] > node.data.length) continue;
      const range = document.createRange();
      range.setStart(node, ranges[i + 1]);
      range.setEnd(node, ranges[i + 2]);
      const element = document.createElement("mark");
      element.className = "scrivo";
      range.surroundContents(element);
    }
    if (!location.hash) {
      document.querySelector("mark.scrivo")?.scrollIntoView({ block: "center" });
    }
  }

  let isShown = false;  // by the frame itself, which answers; not by a page with frames

  addEventListener("message", (event) => {
    if (event.source !== parent || event.origin !== self.origin) return;
    isShown = true;
    switch (event.data?.scrivo) {
      case "texts":
        unmark();
        tell("texts", { texts: textNodes().map((node) => node.data) });
        break;
      case "mark":
        mark(event.data.ranges);
        break;
      case "unmark":
        unmark();
        break;
      case "print":
        print();
        break;
      case "report":
        report();
        break;
    }
  });

  addEventListener("DOMContentLoaded", report);
  addEventListener("load", report);
  addEventListener("pageshow", (event) => { if (event.persisted) report(); });
  addEventListener("hashchange", report);

  addEventListener("keydown", (event) => {
    const control = event.ctrlKey || event.metaKey;
    const key = event.key.toLowerCase();
    if (control && key === "p") {
      event.preventDefault();
      print();
    } else if (control && key === "k") {
      event.preventDefault();
      tell("search");
    }
  });

  // A link to a page of the site stays in the frame, whatever window it names: from a frame of the
  // page itself it takes the place of that page. Other sites may refuse to be shown in a frame.
  addEventListener("click", (event) => {
    const link = event.target.closest?.("a[href], area[href]");
    if (!link) return;
    const target = link.target || document.querySelector("base[target]")?.target || "";
    const isWindow = /^_(top|parent)$/i.test(target);
    if (link.href.startsWith(pages)) {
      if (isWindow) link.target = isShown ? "_self" : "_parent";
    } else if (/^https?:/.test(link.href) && !isWindow) {
      link.target = "_blank";
    }
  });
})();
