"use strict";

// The frame around the pages: tabs, toolbar, and the talk with the page that is shown.
//
// A page is known by what it reports of itself, never by looking into it: from a disk that is not
// allowed. Every way to a page is a step of the frame's own history, and the address of this
// document only follows it.
(() => {
  const $ = (id) => document.getElementById(id);
  document.body.classList.add("frame");
  document.body.append($("frame").content);
  const view = $("view");
  const narrow = matchMedia("(max-width: 720px)");
  const siteTitle = document.title;
  const page = document.createElement("iframe");
  let shown = null;  // the address of the page that is shown
  let tree = null;
  let home = null;
  let search = null;

  // The folder of a site may be opened where nothing can be kept.
  const kept = {
    get(key) { try { return localStorage.getItem(`scrivo.${key}`); } catch { return null; } },
    set(key, value) { try { localStorage.setItem(`scrivo.${key}`, value); } catch { /* not kept */ } },
  };

  function tellPage(what, more) {
    const origin = self.origin === "null" ? "*" : self.origin;
    page.contentWindow?.postMessage({ scrivo: what, ...more }, origin);
  }

  const askForMarks = () => tellPage(search?.terms.length > 0 ? "texts" : "unmark");

  // --- The page ---

  function go(address) {
    const location = scrivo.locationOf(address);
    if (location === null) return;
    if (!page.isConnected) {
      page.src = location;
      view.append(page);
    } else {
      page.contentWindow.location = location;
    }
    // A page that tells nothing, such as a picture, is where it was sent.
    follow(address);
    closePanes();
  }

  // Takes `address` as the place that is shown.
  function follow(address, title) {
    shown = address;
    const hash = scrivo.hashOf(address);
    if (location.hash !== hash) history.replaceState(null, "", hash);
    const entry = tree ? tree.find(address) : -1;
    tree?.show(entry);
    document.title = title ? `${title} – ${siteTitle}` : siteTitle;
    page.title = title || (entry >= 0 ? tree.titleOf(entry) : siteTitle);
    showTrail(entry, title);
    for (const [button, step] of [["previous", -1], ["next", 1]]) {
      $(button).disabled = !tree || tree.neighbour(entry, step) < 0;
    }
  }

  function showTrail(entry, title) {
    const chain = entry >= 0 ? tree.chain(entry) : [];
    const parts = chain.slice(0, -1).map((above) =>
      scrivo.make("li", null, scrivo.makeLink(tree.addressOf(above), null, tree.titleOf(above))));
    const last = entry >= 0 ? tree.titleOf(entry) : title ?? "";
    parts.push(scrivo.make("li", { "aria-current": "page" }, last));
    $("trail").replaceChildren(...parts);
  }

  addEventListener("message", (event) => {
    if (event.source !== page.contentWindow || event.origin !== self.origin) return;
    const told = event.data;
    if (told?.scrivo === "page") {
      const address = scrivo.addressOf(String(told.location));
      if (address === null) return;
      page.style.setProperty("--height", `${Number(told.height) || 0}px`);
      follow(address, String(told.title));
      askForMarks();
    } else if (told?.scrivo === "texts" && Array.isArray(told.texts) && search) {
      tellPage("mark", { ranges: search.rangesIn(told.texts.map(String)) });
    } else if (told?.scrivo === "search") {
      showTab("search");
    }
  });

  addEventListener("hashchange", () => {
    const address = scrivo.addressInHash(location.hash);
    if (address === shown) return;
    const place = address === null ? null : scrivo.locationOf(address);
    // The hash was a step of its own; the page's must not be a second one.
    if (place !== null) page.contentWindow.location.replace(place);
  });

  // A link of the frame goes to its page in one step.
  document.addEventListener("click", (event) => {
    const link = event.target.closest("a[href^='#']");
    const isPlain = event.button === 0 && !event.ctrlKey && !event.metaKey && !event.shiftKey;
    if (!link || !isPlain || event.defaultPrevented) return;
    event.preventDefault();
    go(scrivo.addressInHash(link.getAttribute("href")));
  });

  // --- Tabs ---

  const tabs = [...document.querySelectorAll('[role="tab"]')];

  function showTab(name, keepFocus) {
    for (const tab of tabs) {
      const isOn = tab.id === `tab-${name}`;
      tab.setAttribute("aria-selected", String(isOn));
      tab.tabIndex = isOn ? 0 : -1;
      $(tab.getAttribute("aria-controls")).hidden = !isOn;
      if (isOn && keepFocus) tab.focus();
    }
    openers[name]?.();
    if (keepFocus) return;
    openPanes();
    if (name === "contents") tree?.focus();
    else $(`${name}-field`).select();
  }

  const nameOf = (tab) => tab.id.slice("tab-".length);
  for (const tab of tabs) {
    tab.addEventListener("click", () => showTab(nameOf(tab), true));
    tab.addEventListener("keydown", (event) => {
      const step = { ArrowRight: 1, ArrowLeft: -1 }[event.key];
      let next = tabs.at((tabs.indexOf(tab) + (step ?? 0)) % tabs.length);
      if (event.key === "Home") next = tabs[0];
      if (event.key === "End") next = tabs.at(-1);
      if (!step && !["Home", "End"].includes(event.key)) return;
      event.preventDefault();
      showTab(nameOf(next), true);
    });
  }

  // What a tab needs is read when it is opened first.
  const openers = {
    index() {
      openers.index = null;
      scrivo.load("keywords").then((items) => {
        new KeywordList({
          field: $("index-field"), list: $("keywords"), status: $("index-status"),
        }, items);
      }, (error) => { $("index-status").textContent = error.message; });
    },
    search() {
      openers.search = null;
      search = new SearchPanel({
        field: $("search-field"), status: $("search-status"), list: $("results"), more: $("more"),
      }, (address) => {
        const entry = tree ? tree.find(address) : -1;
        return entry < 0 ? "" : tree.chain(entry).slice(0, -1).map((at) => tree.titleOf(at)).join(" › ");
      });
      search.onTerms = askForMarks;
    },
  };

  // --- Toolbar, and the panes on a narrow window ---

  function openPanes() {
    document.body.classList.add("panes");
    $("menu").setAttribute("aria-expanded", "true");
  }

  function closePanes() {
    document.body.classList.remove("panes");
    $("menu").setAttribute("aria-expanded", "false");
  }

  $("menu").addEventListener("click", () => {
    if (document.body.classList.contains("panes")) closePanes();
    else openPanes();
  });
  view.addEventListener("click", closePanes);
  $("print").addEventListener("click", () => tellPage("print"));
  for (const [button, step] of [["previous", -1], ["next", 1]]) {
    $(button).addEventListener("click", () => {
      const entry = tree.neighbour(tree.find(shown), step);
      if (entry >= 0) go(tree.addressOf(entry));
    });
  }

  addEventListener("keydown", (event) => {
    const control = event.ctrlKey || event.metaKey;
    const key = event.key.toLowerCase();
    const isTyping = event.target.closest?.("input");
    if (control && key === "p") tellPage("print");
    else if ((control && key === "k") || (key === "/" && !control && !isTyping)) showTab("search");
    else if (key === "escape" && narrow.matches) closePanes();
    else return;
    event.preventDefault();
  });

  // --- The border between panes and page ---

  const border = $("border");
  const setWidth = (width) => {
    document.body.style.setProperty("--panes", `${width}px`);
    border.setAttribute("aria-valuenow", width);
  };
  const choose = (width) => {
    setWidth(Math.round(Math.max(250, Math.min(width, innerWidth * 0.6, 640))));
    kept.set("width", border.getAttribute("aria-valuenow"));
  };
  setWidth(Number(kept.get("width")) || 320);
  border.addEventListener("pointerdown", (event) => {
    border.setPointerCapture(event.pointerId);
    border.onpointermove = (move) => choose(move.clientX);
  });
  border.addEventListener("lostpointercapture", () => { border.onpointermove = null; });
  border.addEventListener("keydown", (event) => {
    const step = { ArrowLeft: -20, ArrowRight: 20 }[event.key];
    if (!step) return;
    event.preventDefault();
    choose(Number(border.getAttribute("aria-valuenow")) + step);
  });

  // --- Start ---

  scrivo.load("contents").then((contents) => {
    home = contents.home;
    tree = new ContentsTree($("tree"), contents.items);
  }, (error) => { $("tree").textContent = error.message; }).finally(() => {
    const asked = scrivo.addressInHash(location.hash);
    go(asked !== null && scrivo.locationOf(asked) !== null ? asked : home ?? "");
  });
})();
