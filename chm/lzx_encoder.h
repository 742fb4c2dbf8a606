#pragma once

// Compresses reset intervals as LZX for the compressed section of a help file.

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "chm/bit_writer.h"
#include "chm/lzx_constants.h"
#include "chm/lzx_parser.h"
#include "chm/lzx_token.h"

namespace scrivo::chm {

// One reset interval, decodable without the others.
struct LzxInterval {
  std::vector<std::uint8_t> bytes;
  std::size_t second_frame = 0;  // where in bytes the second frame starts; 0 when there is none
};

// What an interval that cannot be compressed takes more than its bytes: 28 bits of header, four of
// padding, and the recent offsets.
inline constexpr std::size_t kLzxMaxExpansion = 4 + kLzxRawHeaderSize;

// Memory that a result takes while it is written; reserving it beforehand saves the allocation.
inline constexpr std::size_t kLzxMaxEncodedSize =
    kLzxUsualInterval + kLzxMaxExpansion + BitWriter::kSlack;

// Sees memory only. The result depends on the input alone, not on intervals encoded before, so
// intervals may be shared out between encoders in any way. An encoder keeps about 0.8 MiB of
// tables, cannot fail, and serves one thread at a time.
class LzxEncoder {
 public:
  LzxEncoder();

  // Encodes 1 to kLzxUsualInterval bytes; zero bytes are added up to a whole number of frames, as
  // readers decode whole frames. `result` is replaced (its memory is used again) and never grows
  // beyond the padded input plus kLzxMaxExpansion.
  void Encode(std::span<const std::uint8_t> input, LzxInterval& result);

 private:
  LzxParser parser_;
  std::vector<LzxToken> tokens_;
  std::vector<std::uint8_t> padded_;
};
}  // namespace scrivo::chm
