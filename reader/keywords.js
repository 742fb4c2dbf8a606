"use strict";

// The index: a list of keywords that jumps to what is typed. Only the stretch in sight is built.
//
// `items` holds level, keyword and topics of each entry, one after the other; topics are title and
// address in turns, or a text: the keyword to see instead.
class KeywordList {
  static #step = 150;  // entries that are built at a time
  #field;
  #list;
  #status;
  #entries = [];
  #to = 0;
  #watch;

  constructor({ field, list, status }, items) {
    this.#field = field;
    this.#list = list;
    this.#status = status;
    let top = "";
    for (let i = 0; i < items.length; i += 3) {
      const [level, word, topics] = items.slice(i, i + 3);
      if (level === 0) top = word;
      const key = level === 0 ? word : `${top}, ${word}`;
      this.#entries.push({ level, word, topics, key: key.toLowerCase() });
    }
    this.#watch = new IntersectionObserver((seen) => {
      if (seen.some((one) => one.isIntersecting)) this.#more();
    }, { root: list.closest(".panel") });
    this.#fill(0);
    field.addEventListener("input", () => this.jump(field.value));
    field.addEventListener("keydown", (event) => {
      if (event.key !== "ArrowDown" && event.key !== "Enter") return;
      event.preventDefault();
      const first = list.querySelector("a, summary");
      if (event.key === "Enter") first?.click();
      first?.focus();
    });
    scrivo.walkList(list, field, "a, summary, button");
  }

  // Puts the first keyword that begins with `text` at the top, or else the first that contains it.
  jump(text) {
    const typed = text.trim().toLowerCase();
    let at = this.#entries.findIndex((entry) => entry.key.startsWith(typed));
    if (at < 0) at = this.#entries.findIndex((entry) => entry.key.includes(typed));
    this.#status.textContent = at < 0 ? "No keyword contains this." : "";
    this.#fill(at < 0 ? 0 : at);
  }

  #fill(from) {
    this.#to = from;
    this.#list.replaceChildren();
    this.#list.closest(".panel").scrollTop = 0;
    if (from > 0) {
      const back = scrivo.make("button", { type: "button", class: "quiet" }, "Show what comes before");
      back.addEventListener("click", () => {
        this.#field.value = "";
        this.#fill(Math.max(0, from - KeywordList.#step));
        this.#list.querySelector("a, summary")?.focus();
      });
      this.#list.append(scrivo.make("li", null, back));
    }
    this.#more();
  }

  #more() {
    const end = Math.min(this.#entries.length, this.#to + KeywordList.#step);
    for (; this.#to < end; ++this.#to) this.#list.append(this.#build(this.#entries[this.#to]));
    this.#watch.disconnect();
    if (end < this.#entries.length) this.#watch.observe(this.#list.lastElementChild);
  }

  #build({ level, word, topics }) {
    const item = scrivo.make("li");
    item.style.setProperty("--level", level);
    if (typeof topics === "string") {
      const see = scrivo.make("button", { type: "button", class: "see" }, `${word}, see ${topics}`);
      see.addEventListener("click", () => {
        this.#field.value = topics;
        this.jump(topics);
        this.#list.querySelector("a, summary")?.focus();
      });
      item.append(see);
    } else if (topics.length === 0) {
      item.append(scrivo.make("span", { class: "heading" }, word));
    } else if (topics.length === 2) {
      item.append(scrivo.makeLink(topics[1], null, word));
    } else {
      const links = scrivo.make("ul");
      for (let i = 0; i < topics.length; i += 2) {
        links.append(scrivo.make("li", null, scrivo.makeLink(topics[i + 1], null, topics[i])));
      }
      item.append(scrivo.make("details", null, scrivo.make("summary", null, word), links));
    }
    return item;
  }
}
