#include "lzx/block_splitter.h"

#include <algorithm>
#include <array>

#include "lzx/symbol_costs.h"

namespace scrivo {
namespace {

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
void AddTo(const std::array<std::uint32_t, kSize>& from, std::array<std::uint32_t, kSize>& to) {
  for (std::size_t i = 0; i < kSize; ++i) to[i] += from[i];
}

}  // namespace

void BlockSplitter::Start() {
  ends_.clear();
  block_ = {};
  block_size_ = 0;
}

bool BlockSplitter::Add(std::span<const LzxToken> tokens) {
  LzxFrequencies unit;
  unit.Count(tokens);
  const std::uint64_t unit_size = EstimateSize(unit);
  LzxFrequencies both = block_;
  AddTo(unit.main, both.main);
  AddTo(unit.length, both.length);
  const std::uint64_t both_size = EstimateSize(both);
  const bool first = ends_.empty();
  const bool splits = !first && block_size_ + unit_size < both_size;
  block_ = splits ? unit : both;
  block_size_ = splits ? unit_size : both_size;
  const std::size_t end = (first ? 0 : ends_.back()) + tokens.size();
  if (first || splits) {
    ends_.push_back(end);
  } else {
    ends_.back() = end;
  }
  return splits;
}

}  // namespace scrivo
