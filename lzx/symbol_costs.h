#pragma once

// What the symbols of an LZX block cost, for weighing one way to code an interval against another.

#include <array>
#include <bit>
#include <cstdint>

#include "lzx/block.h"
#include "lzx/token.h"

namespace scrivo {

// Logarithms in integers, so that every machine decides alike.
// Results are in 1 / 256.
inline constexpr int kLog2Fraction = 8;

// log2(1 + i / 256), by squaring: each time the value passes 2, the next bit is 1.
inline constexpr std::array<std::uint32_t, 256> kLog2Table = [] {
  std::array<std::uint32_t, 256> table{};
  for (std::uint64_t i = 0; i < table.size(); ++i) {
    std::uint64_t value = (256 + i) << 22;  // 1.0 is 1 << 30
    for (int bit = 0; bit < kLog2Fraction; ++bit) {
      value = value * value >> 30;
      const std::uint32_t passed = value >> 31 != 0;
      table[i] = table[i] << 1 | passed;
      value >>= passed;
    }
  }
  return table;
}();

// The logarithm of a number that is not 0.
constexpr std::uint32_t Log2(std::uint32_t value) {
  const int top = std::bit_width(value) - 1;
  const std::uint32_t mantissa = top >= 8 ? value >> (top - 8) : value << (8 - top);
  return (static_cast<std::uint32_t>(top) << kLog2Fraction) + kLog2Table[mantissa & 0xFF];
}

// In units of 1 / kLzxCostUnit bits.
inline constexpr int kLzxCostUnitBits = 4;

struct LzxCosts {
  // From how often symbols occur: a good code gives each close to its share of information.
  void Set(const LzxFrequencies& frequencies);

  std::array<std::uint16_t, kLzxLiterals> literal{};
  // Main and length symbol of a match, by slot and length.
  std::array<std::array<std::uint16_t, kLzxMaxMatch + 1>, kLzxUsualSlots> match{};
};

// The bits of an explicit offset, in the same unit.
constexpr std::uint32_t LzxOffsetCost(int slot) {
  return static_cast<std::uint32_t>(LzxFooterBits(slot)) << kLzxCostUnitBits;
}

}  // namespace scrivo
