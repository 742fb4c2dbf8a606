#include "lzx/block_splitter.h"

#include <algorithm>
#include <array>

#include "lzx/symbol_costs.h"

namespace scrivo {
namespace {

// Blocks end at multiples of this many tokens. Smaller units find the place of a change better, but
// their statistics are poorer and each takes an estimate.
constexpr std::size_t kUnitTokens = 1024;

// Bits that a block header takes before and for each used symbol, about, and what a short block
// loses by trees that follow chance. Smaller values split pages of one kind in vain.
constexpr std::uint64_t kHeaderBits = 400;
constexpr std::uint64_t kCodeLengthBits = 5;

// What the symbols take with the best code for them, and the code itself in a block header. Sizes
// are in 1/256 bit.
std::uint64_t EstimateSize(std::span<const std::uint32_t> frequencies) {
  std::uint32_t total = 0;
  std::uint64_t saved = 0;
  std::uint64_t used = 0;
  for (const std::uint32_t frequency : frequencies) {
    if (frequency == 0) continue;
    total += frequency;
    saved += std::uint64_t{frequency} * Log2(frequency);
    ++used;
  }
  if (total == 0) return 0;
  return std::uint64_t{total} * Log2(total) - saved + (used * kCodeLengthBits << kLog2Fraction);
}

std::uint64_t EstimateSize(const LzxFrequencies& frequencies) {
  return EstimateSize(frequencies.main) + EstimateSize(frequencies.length) +
         (kHeaderBits << kLog2Fraction);
}

template <std::size_t kSize>
void Add(const std::array<std::uint32_t, kSize>& from, std::array<std::uint32_t, kSize>& to) {
  for (std::size_t i = 0; i < kSize; ++i) to[i] += from[i];
}

}  // namespace

void BlockSplitter::Split(std::span<const LzxToken> tokens) {
  ends_.clear();
  LzxFrequencies block;
  std::uint64_t block_size = 0;
  for (std::size_t start = 0; start < tokens.size(); start += kUnitTokens) {
    const std::size_t count = std::min(kUnitTokens, tokens.size() - start);
    LzxFrequencies unit;
    unit.Count(tokens.subspan(start, count));
    const std::uint64_t unit_size = EstimateSize(unit);
    LzxFrequencies both = block;
    Add(unit.main, both.main);
    Add(unit.length, both.length);
    const std::uint64_t both_size = EstimateSize(both);
    if (start > 0 && block_size + unit_size < both_size) {
      ends_.push_back(start);
      block = unit;
      block_size = unit_size;
    } else {
      block = both;
      block_size = both_size;
    }
  }
  ends_.push_back(tokens.size());
}

}  // namespace scrivo
