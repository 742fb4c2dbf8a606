#pragma once

// Decides where a new block of an LZX interval, with trees of its own, is worth its header.

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "lzx/block.h"
#include "lzx/token.h"

namespace scrivo {

// Sees the tokens of an interval in units of kUnitTokens, at whose borders blocks may end.
class BlockSplitter {
 public:
  // Smaller units find the place of a change better, but their statistics are poorer and each takes
  // an estimate.
  static constexpr std::size_t kUnitTokens = 1024;

  // Begins a new interval.
  void Start();

  // Adds the next unit; only the last may be smaller. True when it begins another block.
  bool Add(std::span<const LzxToken> unit);

  // For each block since Start the number of tokens up to its end; the last one is the number of
  // all tokens.
  const std::vector<std::size_t>& Ends() const { return ends_; }

 private:
  std::vector<std::size_t> ends_;
  LzxFrequencies block_;  // the last one so far
  std::uint64_t block_size_ = 0;
};

}  // namespace scrivo
