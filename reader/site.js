"use strict";

// What all parts of the reader share: the data files of the site, addresses, and small helpers.
//
// A page that was opened from a disk may not fetch anything, but it may run scripts: so each data
// file is a script of one call, scrivo.put(NAME, VALUE), and loading it is adding a script element.
const scrivo = (() => {
  const base = new URL(".", document.currentScript.src);  // the folder of these files
  const site = new URL("..", base);
  const pages = new URL("pages/", site).href;
  const files = new Map();  // name -> {promise, resolve}

  // The value of the data file `name`, as a promise. It is read once.
  function load(name) {
    let file = files.get(name);
    if (file) return file.promise;
    file = {};
    file.promise = new Promise((resolve, reject) => {
      file.resolve = resolve;
      const script = document.createElement("script");
      script.src = new URL(`data/${name}.js`, site).href;
      script.onerror = () => {
        files.delete(name);
        reject(new Error(`A file of this site could not be read: data/${name}.js`));
      };
      script.onload = () => script.remove();
      document.head.append(script);
    });
    files.set(name, file);
    return file.promise;
  }

  function put(name, value) {
    files.get(name)?.resolve(value);
  }

  // Addresses as the data has them are relative to the folder of the pages ("a/b.htm#place"), or
  // whole ones that lead out of the site.
  const isOutside = (address) => /^[a-z][a-z0-9+.-]*:/i.test(address);

  // The location of a page of the site; null when the address would lead out of its folder.
  function locationOf(address) {
    try {
      const url = new URL(`./${address}`, pages);
      return url.href.startsWith(pages) && url.href !== pages ? url.href : null;
    } catch {
      return null;
    }
  }

  // The other way round; null for what is no page of the site.
  function addressOf(location) {
    return location.startsWith(pages) ? location.slice(pages.length) : null;
  }

  // The frame's own address carries the page's in its hash, with ":" before the place in the page.
  // No file of a site has a ":" in its name.
  const hashOf = (address) => `#${address.replace("#", ":")}`;

  function addressInHash(hash) {
    return hash.length > 1 ? hash.slice(1).replace(":", "#") : null;
  }

  const pathOf = (address) => address.split("#", 1)[0];

  // An element with attributes and children; text is text, never markup.
  function make(tag, attributes, ...children) {
    const element = document.createElement(tag);
    for (const [name, value] of Object.entries(attributes ?? {})) {
      if (value !== undefined && value !== null) element.setAttribute(name, value);
    }
    element.append(...children);
    return element;
  }

  // A link to a page within the frame, or to another place in a tab of its own.
  function makeLink(address, attributes, ...children) {
    if (!address) return make("a", attributes, ...children);
    if (isOutside(address)) {
      const safe = /^(https?|ftp|mailto|news):/i.test(address) ? address : null;
      return make("a", { href: safe, target: "_blank", rel: "noopener", ...attributes }, ...children);
    }
    return make("a", { href: hashOf(address), ...attributes }, ...children);
  }

  // The arrow keys go along what can be chosen in a list, and from its top to the field above.
  function walkList(list, field, stops) {
    list.addEventListener("keydown", (event) => {
      const step = { ArrowDown: 1, ArrowUp: -1 }[event.key];
      if (!step) return;
      event.preventDefault();
      const all = [...list.querySelectorAll(stops)].filter((stop) => stop.offsetParent);
      const at = all.indexOf(document.activeElement) + step;
      if (at < 0) field.focus();
      else all[at]?.focus();
    });
  }

  return {
    load, put, walkList, locationOf, addressOf, hashOf, addressInHash, isOutside, pathOf, make, makeLink,
  };
})();
