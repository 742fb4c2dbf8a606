#pragma once

// Look-up tables for the canonical Huffman codes of LZX.
//
// A table has a root part indexed by the next root bits of the stream; a code longer than that goes
// through a link to a second part. An element is symbol << 8 | code length, so that comparing it
// with symbol << 8 compares symbols, and an element without a code compares above all symbols.

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

constexpr std::uint32_t HuffmanSymbol(HuffmanElement element) { return element >> 8; }
constexpr int HuffmanLength(HuffmanElement element) { return static_cast<int>(element & 0xFF); }

// Fills `table` for the code in which symbol i has lengths[i] bits (0: no code; at most
// `max_length`), with `root_bits` root bits, and sets `*link_bits` to the bits that follow the root
// in a linked part. True when the lengths make a complete code, name one symbol of one bit, or name
// none; else false, and the table must not be used. `table` has at least HuffmanTableSize elements.
bool BuildHuffmanTable(std::span<const std::uint8_t> lengths, int root_bits, int max_length,
                       std::span<HuffmanElement> table, int* link_bits);

// Elements that any code of so many symbols can need: a linked part serves at least two symbols.
constexpr std::size_t HuffmanTableSize(std::size_t symbols, int root_bits, int max_length) {
  const std::size_t root = std::size_t{1} << root_bits;
  return max_length <= root_bits ? root : root + symbols / 2 * (1U << (max_length - root_bits));
}

template <std::size_t kSymbols, int kRootBits, int kMaxLength>
class HuffmanTable {
 public:
  // See BuildHuffmanTable.
  bool Build(std::span<const std::uint8_t> lengths) {
    return BuildHuffmanTable(lengths, kRootBits, kMaxLength, table_, &link_bits_);
  }

  // The element of the next code in `input`, which has to have kMaxLength bits at hand. The code
  // stays in the stream. An element not below kHuffmanInvalid stands for bits that are not a code.
  HuffmanElement Lookup(const BitReader& input) const {
    HuffmanElement element = table_[input.Peek(kRootBits)];
    if constexpr (kMaxLength > kRootBits) {
      if (element >= kHuffmanLink) [[unlikely]] {
        const std::uint32_t bits = input.Peek(kRootBits + link_bits_);
        element = table_[((element & ~kHuffmanLink) >> 8) + (bits & ((1U << link_bits_) - 1))];
      }
    }
    return element;
  }

 private:
  std::array<HuffmanElement, HuffmanTableSize(kSymbols, kRootBits, kMaxLength)> table_{};
  int link_bits_ = 0;
};

}  // namespace scrivo
