"use strict";

// Full-text search over an index that lies in many small files, of which a query reads only those
// that hold its words.
//
// A file of words holds the words of one stretch of the alphabet, and for each where it stands. A
// beginning that very many words share has an entry of its own ("s*"), which sorts before them.
// Numbers are written with the characters "#" to "[" for the last digit, base 57, and "]" to "|"
// for those before it, base 32.
class Numbers {
  #text;
  #at = 0;

  constructor(text) { this.#text = text; }

  get more() { return this.#at < this.#text.length; }

  next() {
    let number = 0;
    let code = this.#text.charCodeAt(this.#at++);
    while (code > 0x5C) {
      number = number * 32 + code - 0x5C;
      code = this.#text.charCodeAt(this.#at++);
    }
    return number * 57 + code - 0x23;
  }
}

// How much of a place in the text counts.
const inText = 0;
const inTitle = 2;

class SearchEngine {
  #first;  // the first word of each file of words
  #blocks = { pages: [], words: [] };  // where each file of text begins
  #titleLengths;
  breaker;

  static async open() { return new SearchEngine(await scrivo.load("search")); }

  constructor(about) {
    this.#first = about.words.split(" ");
    this.breaker = new WordBreaker(about.alphabet);
    const numbers = new Numbers(about.texts);
    for (let page = 0; numbers.more;) {
      page += numbers.next();
      this.#blocks.pages.push(page);
      this.#blocks.words.push(numbers.next());
    }
    const lengths = new Numbers(about.titles);
    this.#titleLengths = Array.from({ length: about.pages }, () => lengths.next());
  }

  // What is asked: terms that all must be there, each a run of words. Words in quotes, and such as
  // "std::vector" that are no single word, must follow one another. A term that ends in "*", and the
  // last one while it is being typed, is the beginning of a word.
  parse(text) {
    const terms = [];
    for (const [piece, quoted] of text.matchAll(/"([^"]*)"?|[^\s"]+/g)) {
      const words = this.breaker.words(quoted ?? piece);
      const isLast = text.endsWith(piece) && quoted === undefined;
      const isBeginning = quoted === undefined && (piece.endsWith("*") ||
        (isLast && words.length > 0 && words.at(-1).end === piece.length));
      for (const run of this.#runs(words)) terms.push({ words: run.map((one) => one.word) });
      if (words.length === 0) continue;
      const last = terms.at(-1);
      if (words.at(-1).ideograph) {
        if (last.words.length === 1 && !this.#endsPair(words)) last.beginning = true;
      } else if (isBeginning && last.words.length === 1) {
        last.beginning = true;
      } else if (isBeginning) {
        terms.push({ words: [last.words.pop()], beginning: true });
      }
    }
    return terms;
  }

  #endsPair(words) { return words.at(-1).pair; }

  // Words that must follow one another; the last ideograph of a run is in the pair before it already.
  #runs(words) {
    const kept = words.filter((one, at) => !one.ideograph || one.pair || !words[at - 1]?.pair);
    const runs = [];
    kept.forEach((one, at) => {
      const joins = at > 0 && Boolean(one.ideograph) === Boolean(kept[at - 1].ideograph);
      if (joins) runs.at(-1).push(one);
      else runs.push([one]);
    });
    return runs;
  }

  // The pages that have all terms, best first: {page, at}, `at` the number of the word to show.
  async find(terms) {
    if (terms.length === 0) return [];
    const lists = await Promise.all(terms.map((term) => this.#lookUp(term)));
    lists.sort((a, b) => a.size - b.size);
    const found = [];
    for (const [page, hit] of lists[0]) {
      let { score, where } = hit;
      const everywhere = lists.every((list) => {
        const other = list.get(page);
        if (!other) return false;
        if (other !== hit) score += other.score;
        where = Math.min(where, other.where);
        return true;
      });
      if (!everywhere) continue;
      // A title that says little else is about the thing itself.
      const words = terms.reduce((sum, term) => sum + term.words.length, 0);
      if (where === inTitle) score += 50 * Math.min(1, words / this.#titleLengths[page]);
      found.push({ page, at: hit.at, score });
    }
    return found.sort((a, b) => b.score - a.score || a.page - b.page);
  }

  #score(where, count, exact) { return where * 100 + (exact ? 50 : 0) + Math.min(count, 40) / 2; }

  async #lookUp(term) {
    if (term.words.length > 1) return this.#phrase(term.words);
    return term.beginning ? this.#beginning(term.words[0]) : this.#word(term.words[0]);
  }

  async #word(word) {
    const hits = new Map();
    for (const posting of this.#decode((await this.#shard(this.#fileOf(word))).get(word))) {
      this.#addHit(hits, posting, true);
    }
    return hits;
  }

  #addHit(hits, { page, where, positions }, exact) {
    const at = positions.find((position) => position >= this.#titleLengths[page]) ?? positions[0];
    const score = this.#score(where, positions.length, exact);
    const known = hits.get(page);
    if (!known || known.score < score) hits.set(page, { where, score, at });
  }

  async #beginning(word) {
    const exact = await this.#word(word);
    const hits = new Map(exact);
    const common = (await this.#shard(this.#fileOf(`${word}*`))).get(`${word}*`);
    if (common !== undefined) {
      const numbers = new Numbers(common);
      for (let page = 0; numbers.more;) {
        const number = numbers.next();
        page += Math.floor(number / 3);
        const hit = { where: number % 3, at: numbers.next() };
        hit.score = this.#score(hit.where, 1, false);
        if (!(hits.get(page)?.score >= hit.score)) hits.set(page, hit);
      }
      return hits;
    }
    const last = this.#fileOf(`${word}\u{10FFFF}`);
    const loads = [];
    for (let file = this.#fileOf(word); file <= last; ++file) loads.push(this.#shard(file));
    for (const shard of await Promise.all(loads)) {
      for (const [other, postings] of shard) {
        if (!other.startsWith(word) || other.endsWith("*") || other === word) continue;
        for (const posting of this.#decode(postings)) this.#addHit(hits, posting, false);
      }
    }
    return hits;
  }

  async #phrase(words) {
    const shards = await Promise.all(words.map((word) => this.#shard(this.#fileOf(word))));
    const lists = words.map((word, at) => this.#decode(shards[at].get(word)));
    let ends = new Map(lists[0].map((posting) => [posting.page, posting]));
    for (const list of lists.slice(1)) {
      const next = new Map();
      for (const posting of list) {
        const before = ends.get(posting.page);
        if (!before) continue;
        const places = new Set(before.positions);
        const positions = posting.positions.filter((position) => places.has(position - 1));
        if (positions.length === 0) continue;
        next.set(posting.page, {
          page: posting.page, positions, where: Math.min(before.where, posting.where),
        });
      }
      ends = next;
    }
    const hits = new Map();
    for (const posting of ends.values()) {
      const isInTitle = posting.positions[0] < this.#titleLengths[posting.page];
      if (!isInTitle) posting.where = Math.min(posting.where, inTitle - 1);
      posting.positions = posting.positions.map((position) => position - words.length + 1);
      this.#addHit(hits, posting, true);
    }
    return hits;
  }

  // Where a word stands: pages in ascending order, each with its places.
  #decode(text) {
    const postings = [];
    if (text === undefined) return postings;
    const numbers = new Numbers(text);
    for (let page = 0; numbers.more;) {
      const number = numbers.next();
      page += Math.floor(number / 6);
      const where = Math.floor((number % 6) / 2);
      const count = number % 2 === 0 ? 1 : numbers.next() + 2;
      const positions = [];
      for (let i = 0, at = 0; i < count; ++i) positions.push(at += numbers.next());
      postings.push({ page, where, positions });
    }
    return postings;
  }

  // The file that holds `word` if any does: the last one that does not begin after it.
  #fileOf(word) {
    let low = 0;
    let high = this.#first.length;
    while (low < high) {
      const middle = (low + high) >> 1;
      if (comparePoints(this.#first[middle], word) <= 0) low = middle + 1;
      else high = middle;
    }
    return Math.max(0, low - 1);
  }

  #shards = new Map();

  async #shard(file) {
    if (!this.#shards.has(file)) {
      const load = scrivo.load(`words/${file}`).then(([words, postings]) => {
        const places = postings.split("!");
        return new Map(words.split(" ").map((word, at) => [word, places[at]]));
      });
      load.catch(() => this.#shards.delete(file));
      this.#shards.set(file, load);
    }
    return this.#shards.get(file);
  }

  // What a list of results shows of a hit: {title, address, text, words, at}, `words` those of the
  // text and `at` the one that was hit; negative when that is in the title.
  async describe({ page, at }) {
    const { pages, words } = this.#blocks;
    let low = 0;
    let high = pages.length;
    while (low < high) {
      const middle = (low + high) >> 1;
      const before = pages[middle] < page || (pages[middle] === page && words[middle] <= at);
      if (before) low = middle + 1;
      else high = middle;
    }
    // A hit in the title comes before the first text of its page.
    const block = low > 0 ? low - 1 : 0;
    let pieces = await this.#pieces(block, page);
    if (pieces.length === 0) pieces = await this.#pieces(block + 1, page);
    const piece = pieces.findLast((one) => one[1] <= at) ?? pieces[0];
    const [, from, title, address, text] = piece;
    return { title, address, text, words: this.breaker.words(text), at: at - from };
  }

  async #pieces(block, page) {
    return (await scrivo.load(`text/${block}`)).filter((piece) => piece[0] === page);
  }

  // Which of `words` (as the breaker gives them) belong to a match of `terms`.
  matches(words, terms) {
    const matched = new Set();
    const fits = (word, term, at) => term.beginning && at === term.words.length - 1
      ? word?.startsWith(term.words[at]) : word === term.words[at];
    for (const term of terms) {
      words.forEach((_, start) => {
        if (term.words.every((_, at) => fits(words[start + at]?.word, term, at))) {
          term.words.forEach((_, at) => matched.add(start + at));
        }
      });
    }
    return [...matched].sort((a, b) => a - b);
  }
}

// Orders words as the index does, by the numbers of their characters.
function comparePoints(a, b) {
  const length = Math.min(a.length, b.length);
  for (let i = 0; i < length; ++i) {
    let x = a.charCodeAt(i);
    let y = b.charCodeAt(i);
    if (x === y) continue;
    // Surrogates stand for characters that come after all others.
    if (x >= 0xD800 && x < 0xE000) x += 0x10000;
    if (y >= 0xD800 && y < 0xE000) y += 0x10000;
    return x - y;
  }
  return a.length - b.length;
}
