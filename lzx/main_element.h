#pragma once

// What the decoder's elements of the main tree tell, besides the length of the code. For a literal
// that is the byte, as in other tables. For a match it is all that is needed to read what follows
// the symbol, from bit 8 on: the number of extra bits, the length header, the position slot, a bit
// that puts it above the literals, and whether a length code follows.

#include <array>
#include <cstddef>
#include <cstdint>

#include "lzx/constants.h"
#include "lzx/huffman_table.h"

namespace scrivo {

inline constexpr HuffmanElement kLiteralLimit = HuffmanElement{kLzxLiterals} << 8;

inline constexpr auto kMainMeanings = [] {
  std::array<std::uint32_t, kLzxMaxMainSymbols> meanings{};
  for (int i = 0; i < kLzxLiterals; ++i) meanings[i] = static_cast<std::uint32_t>(i);
  for (int i = kLzxLiterals; i < kLzxMaxMainSymbols; ++i) {
    const int slot = (i - kLzxLiterals) / kLzxLengthHeaders;
    const int header = (i - kLzxLiterals) % kLzxLengthHeaders;
    const int long_match = header == kLzxLengthHeaders - 1 ? 1 : 0;
    meanings[i] = static_cast<std::uint32_t>(LzxFooterBits(slot) | header << 5 | slot << 8 |
                                             1 << 14 | long_match << 15);
  }
  return meanings;
}();

constexpr int ExtraBits(HuffmanElement match) { return static_cast<int>(match >> 8 & 0x1F); }
constexpr std::size_t LengthHeader(HuffmanElement match) { return match >> 13 & 7; }
constexpr std::uint32_t PositionSlot(HuffmanElement match) { return match >> 16 & 0x3F; }
// All bits, or none when no length code follows.
constexpr HuffmanElement LongMatchMask(HuffmanElement match) { return 0 - (match >> 23 & 1); }

}  // namespace scrivo
