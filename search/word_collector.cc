#include "search/word_collector.h"

#include <algorithm>
#include <bit>

namespace scrivo {
namespace {

constexpr std::size_t kFirstSlots = 4096;

}  // namespace

std::uint32_t WordHash(std::string_view word, bool in_title) {
  std::uint32_t hash = in_title ? 0x9E3779B9u : 0x811C9DC5u;
  for (const char c : word) hash = (hash ^ static_cast<unsigned char>(c)) * 0x01000193u;
  return hash ^ (hash >> 15);
}

void AppendVarint(std::uint64_t value, std::string* out) {
  while (value >= 0x80) {
    out->push_back(static_cast<char>(0x80 | (value & 0x7F)));
    value >>= 7;
  }
  out->push_back(static_cast<char>(value));
}

std::uint64_t TakeVarint(std::string_view* in) {
  std::uint64_t value = 0;
  for (int shift = 0; !in->empty() && shift < 64; shift += 7) {
    const unsigned char byte = static_cast<unsigned char>(in->front());
    in->remove_prefix(1);
    value |= static_cast<std::uint64_t>(byte & 0x7F) << shift;
    if (byte < 0x80) break;
  }
  return value;
}

WordCollector::WordCollector() : slots_(kFirstSlots) {}

void WordCollector::Add(std::string_view word, bool in_title) {
  const std::uint32_t entry = FindOrAdd(word, in_title);
  ++entries_[entry].count;
  order_.push_back(entry);
}

std::uint32_t WordCollector::FindOrAdd(std::string_view word, bool in_title) {
  const std::uint32_t hash = WordHash(word, in_title);
  const std::size_t mask = slots_.size() - 1;
  std::size_t slot = hash & mask;
  while (slots_[slot] != 0) {
    const Entry& entry = entries_[slots_[slot] - 1];
    if (entry.hash == hash && entry.in_title == in_title && entry.length == word.size() &&
        std::string_view(texts_).substr(entry.text, entry.length) == word) {
      return slots_[slot] - 1;
    }
    slot = (slot + 1) & mask;
  }
  const std::uint32_t number = static_cast<std::uint32_t>(entries_.size());
  entries_.push_back({hash, static_cast<std::uint32_t>(texts_.size()), 0,
                      static_cast<std::uint8_t>(word.size()), in_title});
  texts_.append(word);
  slots_[slot] = number + 1;
  if (entries_.size() * 2 > slots_.size()) Grow();
  return number;
}

void WordCollector::Grow() {
  std::vector<std::uint32_t> slots(slots_.size() * 2);
  const std::size_t mask = slots.size() - 1;
  for (std::uint32_t i = 0; i < entries_.size(); ++i) {
    std::size_t slot = entries_[i].hash & mask;
    while (slots[slot] != 0) slot = (slot + 1) & mask;
    slots[slot] = i + 1;
  }
  slots_ = std::move(slots);
}

PageWords WordCollector::Finish() {
  // Sorts the positions by word, which keeps each word's own in ascending order.
  std::vector<std::uint32_t> next(entries_.size());
  std::uint32_t total = 0;
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    next[i] = total;
    total += entries_[i].count;
  }
  std::vector<std::uint32_t> positions(order_.size());
  for (std::uint32_t i = 0; i < order_.size(); ++i) positions[next[order_[i]]++] = i;

  PageWords words;
  words.word_count = static_cast<std::uint32_t>(order_.size());
  words.encoded.reserve(texts_.size() + entries_.size() * 4 + order_.size() * 2);
  std::string deltas;
  std::size_t at = 0;
  for (const Entry& entry : entries_) {
    words.encoded.push_back(static_cast<char>(entry.length));
    words.encoded.append(texts_, entry.text, entry.length);
    words.encoded.push_back(entry.in_title ? 1 : 0);
    AppendVarint(entry.count, &words.encoded);
    ++words.count_bits[std::bit_width(entry.count)];
    deltas.clear();
    std::uint32_t previous = 0;
    for (std::uint32_t i = 0; i < entry.count; ++i, ++at) {
      const std::uint32_t delta = positions[at] - previous;
      AppendVarint(delta, &deltas);
      ++words.position_bits[std::bit_width(delta)];
      previous = positions[at];
    }
    AppendVarint(deltas.size(), &words.encoded);
    words.encoded.append(deltas);
  }
  std::fill(slots_.begin(), slots_.end(), 0);
  entries_.clear();
  texts_.clear();
  order_.clear();
  return words;
}

}  // namespace scrivo
