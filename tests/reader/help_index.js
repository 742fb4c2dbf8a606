// Reads the full-text index that a help file has for its own viewer, by the description in
// docs/formats/search-index.md.
import { spawnSync } from "node:child_process";
import { existsSync, readFileSync } from "node:fs";
import { join } from "node:path";
import { programBeside, scratchFolder } from "./browser.js";

const nodeSize = 0x1000;

// The help file's index: its code page, and its words with the addresses of the pages that hold
// them, a Map of Sets. Null when it has none. Words and addresses have a character for each of their
// bytes.
export function readHelpIndex(helpFile) {
  const folder = scratchFolder("unpacked");
  spawnSync(programBeside("hh"), ["-decompile", "--internal", folder, helpFile]);
  const stream = (name) => {
    const path = join(folder, name);
    return existsSync(path) ? readFileSync(path) : Buffer.alloc(0);
  };
  const index = stream("$FIftiMain");
  if (index.length < 0x400) return null;
  const addresses = topicAddresses(stream("#TOPICS"), stream("#URLTBL"), stream("#URLSTR"));
  const roots = [index[0x1F], index[0x21], index[0x23]];
  const words = new Map();
  for (let leaf = firstLeaf(index); leaf !== 0; leaf = index.readUInt32LE(leaf)) {
    for (const { word, topics, list } of leafEntries(index, leaf)) {
      if (!words.has(word)) words.set(word, new Set());
      for (const topic of postedTopics(index, list, topics, roots)) {
        words.get(word).add(addresses[topic]);
      }
    }
  }
  return { codePage: index.readUInt32LE(0x7A), words };
}

function topicAddresses(topics, urls, strings) {
  const addresses = [];
  for (let at = 0; at < topics.length; at += 16) {
    const place = urls.readUInt32LE(topics.readUInt32LE(at + 8) + 8) + 8;
    addresses.push(strings.toString("latin1", place, strings.indexOf(0, place)));
  }
  return addresses;
}

function firstLeaf(index) {
  let node = index.readUInt32LE(0x08);
  for (let depth = index.readUInt16LE(0x18); depth > 1; --depth) {
    node = index.readUInt32LE(node + 4 + index[node + 2] - 1);
  }
  return node;
}

function* leafEntries(index, leaf) {
  const end = leaf + nodeSize - index.readUInt16LE(leaf + 6);
  let at = leaf + 8;
  const varint = () => {
    let number = 0;
    for (let shift = 0; ; shift += 7) {
      const byte = index[at++];
      number |= (byte & 0x7F) << shift;
      if (byte < 0x80) return number;
    }
  };
  let word = "";
  while (at < end) {
    const length = index[at] - 1;
    word = word.slice(0, index[at + 1]) + index.toString("latin1", at + 2, at + 2 + length);
    at += 2 + length + 1;  // the last: whether the word is one of titles
    const topics = varint();
    const list = index.readUInt32LE(at);
    at += 6;
    varint();  // the list's length
    yield { word, topics, list };
  }
}

// The topics of a posting list: a row of bits, filled up to whole bytes after each topic.
function* postedTopics(index, list, topics, [topicRoot, countRoot, positionRoot]) {
  let at = list * 8;
  const bit = () => (index[at >> 3] >> (7 - (at++ & 7))) & 1;
  const number = (root) => {
    let ones = 0;
    while (bit()) ++ones;
    let bits = root + Math.max(0, ones - 1);
    let value = ones > 0 ? 1 : 0;
    for (; bits > 0; --bits) value = value * 2 + bit();
    return value;
  };
  let topic = 0;
  for (let i = 0; i < topics; ++i) {
    topic += number(topicRoot);
    for (let count = number(countRoot); count > 0; --count) number(positionRoot);
    at = Math.ceil(at / 8) * 8;
    yield topic;
  }
}
