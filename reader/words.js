"use strict";

// Breaks text into words as the index was broken, by the alphabet that comes with the index: which
// characters make words, and what they fold to.
class WordBreaker {
  static separator = 0;
  static letter = 1;
  static digit = 2;
  static ideograph = 3;  // of a script without blanks between words
  static longest = 99;  // characters of a word; others are dropped
  #ranges;
  #folds = new Map();

  // `ranges`: first, last and kind of each run of characters from U+0080 up that make words, in
  // ascending order; `folds`: characters with what they fold to, parted by blanks.
  constructor({ ranges, folds }) {
    this.#ranges = ranges;
    for (const fold of folds.split(" ")) {
      const [from, ...to] = fold;
      this.#folds.set(from, to.join(""));
    }
  }

  kindOf(character) {
    const code = character.codePointAt(0);
    if (code < 0x80) {
      if (/[a-z_]/i.test(character)) return WordBreaker.letter;
      return /[0-9]/.test(character) ? WordBreaker.digit : WordBreaker.separator;
    }
    let low = 0;
    let high = this.#ranges.length / 3;
    while (low < high) {
      const middle = (low + high) >> 1;
      if (this.#ranges[middle * 3 + 1] < code) low = middle + 1;
      else high = middle;
    }
    const at = low * 3;
    return this.#ranges[at] <= code ? this.#ranges[at + 2] : WordBreaker.separator;
  }

  fold(character) {
    if (character < "\x80") return character.toLowerCase();
    return this.#folds.get(character) ?? character;
  }

  // The words of `text`: {word, start, end} each, and of what kind. A run of ideographs gives a word for each
  // of them, made of it and the next one; the last one, without a next, stands alone.
  words(text) {
    const words = [];
    let word = "";
    let start = 0;
    let end = 0;
    let length = 0;
    let numeric = false;
    let period = false;  // a "." that belongs to the number if another digit or letter follows
    let before = "";     // the ideograph whose next is awaited
    let at = 0;
    const finish = () => {
      if (word) words.push({ word, start, end });
      word = "";
      length = 0;
      period = false;
    };
    const finishRun = () => {
      if (before) words.push({ word: before, start: at - before.length, end: at, ideograph: true });
      before = "";
    };
    for (const character of text) {
      const kind = this.kindOf(character);
      if (kind === WordBreaker.ideograph) {
        finish();
        const folded = this.fold(character);
        if (before) {
          words.push({
            word: before + folded, start: at - before.length, end: at + character.length,
            ideograph: true, pair: true,
          });
        }
        before = folded;
      } else {
        finishRun();
        if (kind !== WordBreaker.separator) {
          if (!word) {
            start = at;
            numeric = kind === WordBreaker.digit;
          }
          if (length < WordBreaker.longest) {
            word += (period ? "." : "") + this.fold(character);
            length += period ? 2 : 1;
          }
          period = false;
          end = at + character.length;
        } else if (word && character === "'") {
          // "don't" is one word
        } else if (word && numeric && !period && character === ",") {
          // so is 1,000
        } else if (word && numeric && !period && character === ".") {
          period = true;
        } else {
          finish();
        }
      }
      at += character.length;
    }
    finish();
    finishRun();
    return words;
  }
}
