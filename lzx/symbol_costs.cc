#include "lzx/symbol_costs.h"

#include <algorithm>
#include <span>

namespace scrivo {
namespace {

constexpr std::uint32_t kOneBit = 1u << kLzxCostUnitBits;

// A symbol that does not occur might get a code if it were used.
constexpr std::uint32_t kUnusedMain = 14 * kOneBit, kUnusedLength = 12 * kOneBit;

void SetCosts(std::span<const std::uint32_t> frequencies, std::uint32_t unused,
              std::span<std::uint32_t> costs) {
  std::uint32_t total = 0;
  for (const std::uint32_t frequency : frequencies) total += frequency;
  for (std::size_t i = 0; i < costs.size(); ++i) {
    costs[i] = unused;
    if (frequencies[i] == 0) continue;
    const std::uint32_t bits =
        (Log2(total) - Log2(frequencies[i])) >> (kLog2Fraction - kLzxCostUnitBits);
    costs[i] = std::clamp(bits, kOneBit, unused);
  }
}

}  // namespace

void LzxCosts::Set(const LzxFrequencies& frequencies) {
  std::array<std::uint32_t, kLzxUsualMainSymbols> main;
  std::array<std::uint32_t, kLzxLengthSymbols> length;
  SetCosts(frequencies.main, kUnusedMain, main);
  SetCosts(frequencies.length, kUnusedLength, length);
  for (std::size_t i = 0; i < literal.size(); ++i) literal[i] = static_cast<std::uint16_t>(main[i]);
  for (std::size_t slot = 0; slot < match.size(); ++slot) {
    const std::uint32_t* const headers = &main[kLzxLiterals + kLzxLengthHeaders * slot];
    constexpr std::size_t kLong = kLzxLengthHeaders - 1;
    for (std::size_t i = 0; i < kLong; ++i) {
      match[slot][kLzxMinMatch + i] = static_cast<std::uint16_t>(headers[i]);
    }
    for (std::size_t i = 0; i < length.size(); ++i) {
      match[slot][kLzxMinMatch + kLong + i] =
          static_cast<std::uint16_t>(headers[kLong] + length[i]);
    }
  }
}

}  // namespace scrivo
