#pragma once

// What the symbols of an LZX block cost, for weighing one way to code an interval against another.

#include <array>
#include <cstdint>

#include "lzx/lzx_block.h"
#include "lzx/lzx_token.h"

namespace scrivo {

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
  return static_cast<std::uint32_t>(LzxExtraBits(slot)) << kLzxCostUnitBits;
}

}  // namespace scrivo
