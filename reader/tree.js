"use strict";

// The contents as a tree: built branch by branch as branches are opened, so that the size of the
// contents costs nothing until it is looked at.
//
// `items` holds level, title and address of each entry, one after the other in the order of the
// contents; an entry's children are those that follow it with a higher level.
class ContentsTree {
  #levels = [];
  #titles = [];
  #addresses = [];
  #ends = [];  // the entry after the last one below each
  #parents = [];
  #links = new Map();  // entry -> its link, once it is built
  #places = new Map();  // address, and path alone -> first entry
  #root;
  #current = -1;
  #typed = "";
  #typedAt = 0;

  constructor(root, items) {
    this.#root = root;
    for (let i = 0; i < items.length; i += 3) this.#add(items[i], items[i + 1], items[i + 2]);
    this.#closeDownTo(0);
    root.setAttribute("role", "tree");
    root.append(...this.#build(-1));
    // One entry above all others says little.
    if (this.#ends[0] === this.size) this.#expand(0, true);
    this.#setFocusable(0);
    root.addEventListener("click", (event) => this.#clicked(event));
    root.addEventListener("keydown", (event) => this.#pressed(event));
  }

  #open = [];  // the chain of entries that the next one may be below

  #add(level, title, address) {
    const entry = this.#titles.length;
    this.#closeDownTo(level);
    this.#parents.push(this.#open.at(-1) ?? -1);
    this.#open.push(entry);
    this.#levels.push(level);
    this.#titles.push(title);
    this.#addresses.push(address);
    this.#ends.push(entry + 1);
    if (!address || scrivo.isOutside(address)) return;
    for (const key of [address, `${scrivo.pathOf(address)}#`]) {
      if (!this.#places.has(key)) this.#places.set(key, entry);
    }
  }

  #closeDownTo(level) {
    while (this.#open.length > 0 && this.#levels[this.#open.at(-1)] >= level) {
      this.#ends[this.#open.pop()] = this.#titles.length;
    }
  }

  get size() { return this.#titles.length; }
  titleOf(entry) { return this.#titles[entry]; }
  addressOf(entry) { return this.#addresses[entry]; }

  // The entry that leads to `address`: to that very place, or else to its page; -1 when none does.
  find(address) {
    const here = this.#current;
    if (here >= 0 && this.#addresses[here] === address) return here;
    const exact = this.#places.get(address);
    if (exact !== undefined) return exact;
    const path = scrivo.pathOf(address);
    if (here >= 0 && scrivo.pathOf(this.#addresses[here]) === path) return here;
    return this.#places.get(path) ?? this.#places.get(`${path}#`) ?? -1;
  }

  // The entries above `entry`, outermost first, and itself.
  chain(entry) {
    const chain = [];
    for (let at = entry; at >= 0; at = this.#parents[at]) chain.unshift(at);
    return chain;
  }

  // The next entry in that direction (1 or -1) that leads to another page; -1 when there is none.
  neighbour(entry, step) {
    const path = entry >= 0 ? scrivo.pathOf(this.#addresses[entry] ?? "") : "";
    for (let at = entry + step; at >= 0 && at < this.size; at += step) {
      const address = this.#addresses[at];
      if (address && !scrivo.isOutside(address) && scrivo.pathOf(address) !== path) return at;
    }
    return -1;
  }

  // Marks the entry of the page that is shown, with its branches open and in sight. A page is told
  // of twice, when it is asked for and when it is there: what was closed in between stays closed.
  show(entry) {
    if (entry === this.#current) return;
    this.#links.get(this.#current)?.removeAttribute("aria-current");
    this.#current = entry;
    if (entry < 0) return;
    const chain = this.chain(entry);
    for (const above of chain.slice(0, -1)) this.#expand(above, true);
    const link = this.#links.get(entry);
    link.setAttribute("aria-current", "page");
    this.#setFocusable(entry);
    link.scrollIntoView({ block: "nearest" });
  }

  focus() {
    this.#root.querySelector('[tabindex="0"]')?.focus();
  }

  #hasChildren(entry) { return this.#ends[entry] > entry + 1; }

  #childrenOf(entry) {
    const children = [];
    const end = entry < 0 ? this.size : this.#ends[entry];
    for (let at = entry + 1; at < end; at = this.#ends[at]) children.push(at);
    return children;
  }

  #build(parent) {
    const children = this.#childrenOf(parent);
    return children.map((entry, place) => {
      const link = scrivo.makeLink(this.#addresses[entry], {
        role: "treeitem",
        tabindex: "-1",
        "aria-level": this.chain(entry).length,
        "aria-setsize": children.length,
        "aria-posinset": place + 1,
        "aria-expanded": this.#hasChildren(entry) ? "false" : null,
      }, scrivo.make("span", { class: "twist" }), scrivo.make("span", null, this.#titles[entry]));
      link.style.setProperty("--level", this.chain(entry).length - 1);
      link.entry = entry;
      this.#links.set(entry, link);
      return scrivo.make("li", { role: "none" }, link);
    });
  }

  #isExpanded(entry) {
    return this.#links.get(entry)?.getAttribute("aria-expanded") === "true";
  }

  #expand(entry, open) {
    const link = this.#links.get(entry);
    if (!this.#hasChildren(entry) || this.#isExpanded(entry) === open) return;
    let group = link.nextElementSibling;
    if (!group) {
      group = scrivo.make("ul", { role: "group", id: `branch${entry}` });
      group.append(...this.#build(entry));
      link.after(group);
      link.setAttribute("aria-owns", group.id);
    }
    group.hidden = !open;
    link.setAttribute("aria-expanded", String(open));
    if (!open && group.contains(document.activeElement)) this.#focusOn(link);
    if (!open && group.querySelector('[tabindex="0"]')) this.#setFocusable(entry);
  }

  #setFocusable(entry) {
    this.#root.querySelector('[tabindex="0"]')?.setAttribute("tabindex", "-1");
    this.#links.get(entry)?.setAttribute("tabindex", "0");
  }

  #focusOn(link) {
    if (!link) return;
    this.#setFocusable(link.entry);
    link.focus();
  }

  #clicked(event) {
    const link = event.target.closest('[role="treeitem"]');
    if (!link) return;
    this.#setFocusable(link.entry);
    const onTwist = event.target.closest(".twist") && this.#hasChildren(link.entry);
    if (onTwist || !link.hasAttribute("href")) {
      event.preventDefault();
      link.focus();
      this.#expand(link.entry, !this.#isExpanded(link.entry));
    } else if (!event.ctrlKey && !event.metaKey && !event.shiftKey) {
      this.#expand(link.entry, true);
    }
  }

  #visible() {
    return [...this.#root.querySelectorAll('[role="treeitem"]')].filter(
      (link) => !link.closest("ul[hidden]"));
  }

  #pressed(event) {
    const link = event.target.closest('[role="treeitem"]');
    if (!link || event.ctrlKey || event.metaKey || event.altKey) return;
    const visible = this.#visible();
    const at = visible.indexOf(link);
    const entry = link.entry;
    const actions = {
      ArrowDown: () => this.#focusOn(visible[at + 1]),
      ArrowUp: () => this.#focusOn(visible[at - 1]),
      Home: () => this.#focusOn(visible[0]),
      End: () => this.#focusOn(visible.at(-1)),
      ArrowRight: () => {
        if (!this.#hasChildren(entry)) return;
        if (this.#isExpanded(entry)) this.#focusOn(visible[at + 1]);
        else this.#expand(entry, true);
      },
      ArrowLeft: () => {
        if (this.#isExpanded(entry)) this.#expand(entry, false);
        else this.#focusOn(this.#links.get(this.#parents[entry]));
      },
      Enter: () => link.click(),
      " ": () => link.click(),
      "*": () => {
        const siblings = this.#childrenOf(this.#parents[entry]);
        for (const sibling of siblings) this.#expand(sibling, true);
      },
    };
    if (actions[event.key]) {
      actions[event.key]();
    } else if (event.key.length === 1) {
      this.#typeAhead(event.key, visible, at);
    } else {
      return;
    }
    event.preventDefault();
  }

  // Moves to the next entry whose title begins with what was typed without a pause.
  #typeAhead(key, visible, at) {
    const now = performance.now();
    this.#typed = (now - this.#typedAt < 700 ? this.#typed : "") + key.toLowerCase();
    this.#typedAt = now;
    const from = this.#typed.length === 1 ? at + 1 : at;
    const order = [...visible.slice(from), ...visible.slice(0, from)];
    this.#focusOn(order.find(
      (link) => this.#titles[link.entry].toLowerCase().startsWith(this.#typed)));
  }
}
