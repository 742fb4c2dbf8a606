"use strict";

// The search tab: a field, and the pages found with the words marked in a piece of their text.
class SearchPanel {
  static #step = 10;  // results that are shown at a time
  #status;
  #list;
  #more;
  #engine = null;
  #asked = 0;  // counts the questions, so that a late answer to an old one is not shown
  #found = [];
  #shown = 0;
  #trail;
  terms = [];
  onTerms = () => {};

  // `trail(address)` tells where in the contents a page is.
  constructor({ field, status, list, more }, trail) {
    this.#status = status;
    this.#list = list;
    this.#more = more;
    this.#trail = trail;
    let timer = 0;
    field.addEventListener("input", () => {
      clearTimeout(timer);
      timer = setTimeout(() => this.ask(field.value), 150);
    });
    field.form.addEventListener("submit", async (event) => {
      event.preventDefault();
      clearTimeout(timer);
      await this.ask(field.value);
      list.querySelector("a")?.click();
    });
    field.addEventListener("keydown", (event) => {
      if (event.key !== "ArrowDown") return;
      event.preventDefault();
      list.querySelector("a")?.focus();
    });
    scrivo.walkList(list, field, "a");
    more.addEventListener("click", async () => {
      const before = this.#shown;
      await this.#show(this.#asked);
      list.children[before]?.querySelector("a").focus();
    });
  }

  // Looks up `text` and shows what is found.
  async ask(text) {
    const question = ++this.#asked;
    try {
      this.#engine ??= await SearchEngine.open();
      const terms = this.#engine.parse(text);
      const found = await this.#engine.find(terms);
      if (question !== this.#asked) return;
      this.terms = terms;
      this.#found = found;
      this.#shown = 0;
      await this.#show(question);
      if (question === this.#asked) this.onTerms();
    } catch (error) {
      if (question === this.#asked) this.#status.textContent = error.message;
    }
  }

  async #show(question) {
    const hits = this.#found.slice(this.#shown, this.#shown + SearchPanel.#step);
    const results = await Promise.all(hits.map((hit) => this.#engine.describe(hit)));
    if (question !== this.#asked) return;
    if (this.#shown === 0) {
      this.#list.replaceChildren();
      this.#list.closest(".panel").scrollTop = 0;
    }
    this.#list.append(...results.map((result) => this.#build(result)));
    this.#shown += results.length;
    this.#more.hidden = this.#shown >= this.#found.length;
    this.#status.textContent = this.#summary();
  }

  #summary() {
    if (this.terms.length === 0) return "";
    const count = this.#found.length;
    if (count === 0) return "No page has all these words.";
    return count === 1 ? "1 page" : `${count.toLocaleString("en")} pages`;
  }

  #build(result) {
    const title = scrivo.makeLink(result.address, { class: "title" });
    title.append(...this.#marked(result.title, this.#engine.breaker.words(result.title)));
    const item = scrivo.make("li", null, title);
    const trail = this.#trail(result.address);
    if (trail) item.append(scrivo.make("div", { class: "trail" }, trail));
    item.append(scrivo.make("p", null, ...this.#excerpt(result)));
    return item;
  }

  // Some words around the one that was hit.
  #excerpt({ text, words, at }) {
    const first = Math.max(0, Math.min(at, words.length - 1) - 10);
    const kept = words.slice(first, first + 34);
    if (kept.length === 0) return [text.slice(0, 160)];
    const start = first === 0 ? 0 : kept[0].start;
    const end = first + kept.length === words.length ? text.length : kept.at(-1).end;
    const shifted = kept.map((one) => ({ ...one, start: one.start - start, end: one.end - start }));
    return [
      first === 0 ? "" : "… ",
      ...this.#marked(text.slice(start, end), shifted),
      end === text.length ? "" : " …",
    ];
  }

  #marked(text, words) {
    const parts = [];
    let done = 0;
    for (const at of this.#engine.matches(words, this.terms)) {
      const { start, end } = words[at];
      const from = Math.max(start, done);
      if (from >= end) continue;
      parts.push(text.slice(done, from), scrivo.make("mark", null, text.slice(from, end)));
      done = end;
    }
    parts.push(text.slice(done));
    return parts;
  }

  // The places of the terms in a page's text nodes: node, start and end, one after the other.
  rangesIn(texts) {
    const words = texts.flatMap((text, node) =>
      this.#engine.breaker.words(text).map((word) => ({ ...word, node })));
    const ranges = [];
    for (const at of this.#engine.matches(words, this.terms)) {
      const { node, start, end } = words[at];
      const last = ranges.length - 3;
      if (last >= 0 && ranges[last] === node && ranges[last + 2] >= start) ranges[last + 2] = end;
      else ranges.push(node, start, end);
    }
    return ranges;
  }
}
