#pragma once

// Compresses reset intervals as LZX for the compressed section of a help file.

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "lzx/block.h"
#include "lzx/block_splitter.h"
#include "lzx/constants.h"
#include "lzx/match_finder.h"
#include "lzx/near_optimal_parser.h"
#include "lzx/token.h"

namespace scrivo {

// A block header tells its size in this many bits, and an interval may be a single block.
inline constexpr std::size_t kLzxMaxInterval = std::size_t{1} << (kLzxBlockSizeBits - 1);

// What an interval that cannot be compressed takes more than its bytes: 28 bits of header, four of
// padding, and the recent offsets.
inline constexpr std::size_t kLzxMaxExpansion = 4 + kLzxRawHeaderSize;

// One reset interval, decodable without the others.
struct LzxInterval {
  std::vector<std::uint8_t> bytes;
  std::vector<std::size_t> frames;  // where in bytes each frame starts
};

// Sees memory only. The result depends on the input alone, not on intervals encoded before, so
// intervals may be shared out between encoders in any way. An encoder keeps tables of 0.2 MiB and
// about 21 times the memory of an interval, cannot fail, and serves one thread at a time.
class LzxEncoder {
 public:
  // For intervals of up to `max_interval` bytes, a whole number of frames and at most
  // kLzxMaxInterval. Larger ones compress better, but a reader must decode half of one, on average,
  // to get at a page.
  explicit LzxEncoder(std::size_t max_interval);

  // Encodes 1 to max_interval bytes; zero bytes are added up to a whole number of frames, as
  // readers decode whole frames. `result` is replaced (its memory is used again); its bytes never
  // grow beyond the padded input plus kLzxMaxExpansion.
  void Encode(std::span<const std::uint8_t> input, LzxInterval& result);

 private:
  std::uint64_t Cut();
  std::uint64_t CutBest();
  void Refine(std::span<const std::uint8_t> frame);

  MatchFinder finder_;
  NearOptimalParser near_optimal_parser_;
  BlockSplitter splitter_;
  std::vector<LzxToken> tokens_, other_tokens_;
  std::vector<std::size_t> ends_;  // of the blocks in tokens_
  std::vector<LzxBlock> blocks_;
  std::vector<std::uint8_t> padded_;
};

}  // namespace scrivo
