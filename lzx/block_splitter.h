#pragma once

// Decides where a new block of an LZX interval, with trees of its own, is worth its header.

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "lzx/block.h"
#include "lzx/token.h"

namespace scrivo {

class BlockSplitter {
 public:
  // Splits a row of at least one token into blocks.
  void Split(std::span<const LzxToken> tokens);

  // For each block of the last Split the number of tokens up to its end; the last one is the number
  // of all tokens.
  const std::vector<std::size_t>& Ends() const { return ends_; }

 private:
  std::vector<std::size_t> ends_;
};

}  // namespace scrivo
