#pragma once

// Look-up tables for the canonical Huffman codes of LZX.
//
// A table has a root part indexed by the next root bits of the stream; a code longer than that goes
// through a link to a second part. An element is meaning << 8 | code length, where the meaning is
// the symbol itself or what the table's user would rather know of it. So comparing it with symbol
// << 8 compares symbols, and links and elements without a code compare above all symbols.

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "lzx/bit_reader.h"

namespace scrivo {

// An element of a table.
using HuffmanElement = std::uint32_t;
inline constexpr HuffmanElement kHuffmanLink = 0x80000000;
inline constexpr HuffmanElement kHuffmanInvalid = 0x40000000;

// The meaning, where it is the symbol itself.
constexpr std::uint32_t HuffmanSymbol(HuffmanElement element) { return element >> 8; }
constexpr int HuffmanLength(HuffmanElement element) { return static_cast<int>(element & 0xFF); }

// Fills `table` for the code in which symbol i has lengths[i] bits (0: no code; at most
// `max_length`), with `root_bits` root bits, and sets `*link_bits` to the bits that follow the root
// in a linked part. True when the lengths make a complete code, name one symbol of one bit, or name
// none; else false, and the table must not be used. `table` has at least HuffmanTableSize elements.
// meanings[i] << 8 stands in the elements of symbol i, below kHuffmanInvalid.
bool BuildHuffmanTable(std::span<const std::uint8_t> lengths,
                       std::span<const std::uint32_t> meanings, int root_bits, int max_length,
                       std::span<HuffmanElement> table, int* link_bits);

// Elements that any code of so many symbols can need: a linked part serves at least two symbols.
constexpr std::size_t HuffmanTableSize(std::size_t symbols, int root_bits, int max_length) {
  const std::size_t root = std::size_t{1} << root_bits;
  return max_length <= root_bits ? root : root + symbols / 2 * (1U << (max_length - root_bits));
}

// Meanings for a table whose elements name the symbols.
template <std::size_t kSymbols>
inline constexpr auto kSymbolNumbers = [] {
  std::array<std::uint32_t, kSymbols> numbers{};
  for (std::uint32_t i = 0; i < kSymbols; ++i) numbers[i] = i;
  return numbers;
}();

template <std::size_t kSymbols, int kRootBits, int kMaxLength>
class HuffmanTable {
 public:
  static constexpr int kRoot = kRootBits;

  // See BuildHuffmanTable.
  bool Build(std::span<const std::uint8_t> lengths,
             std::span<const std::uint32_t> meanings = kSymbolNumbers<kSymbols>) {
    return BuildHuffmanTable(lengths, meanings, kRootBits, kMaxLength, table_, &link_bits_);
  }

  // The element of the next code in `input`, which has to have kMaxLength bits at hand. The code
  // stays in the stream. An element not below kHuffmanInvalid stands for bits that are not a code.
  HuffmanElement Lookup(const BitReader& input) const {
    const HuffmanElement element = LookupRoot(input);
    if constexpr (kMaxLength > kRootBits) {
      if (element >= kHuffmanLink) [[unlikely]]
        return Follow(input, element);
    }
    return element;
  }

  // The same in two steps: kRootBits bits do for the first, and only a link needs the second.
  HuffmanElement LookupRoot(const BitReader& input) const { return table_[input.Peek(kRootBits)]; }
  HuffmanElement Follow(const BitReader& input, HuffmanElement link) const {
    const std::uint32_t bits = input.Peek(kRootBits + link_bits_);
    return table_[((link & ~kHuffmanLink) >> 8) + (bits & ((1U << link_bits_) - 1))];
  }

 private:
  std::array<HuffmanElement, HuffmanTableSize(kSymbols, kRootBits, kMaxLength)> table_{};
  int link_bits_ = 0;
};

}  // namespace scrivo
