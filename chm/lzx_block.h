#pragma once

// A verbatim or aligned-offset block of an LZX interval: from its tokens to codes, size and bits.

#include <array>
#include <cstdint>
#include <span>

#include "chm/bit_writer.h"
#include "chm/lzx_constants.h"
#include "chm/lzx_token.h"

namespace scrivo::chm {

// How often the symbols of each tree occur in a row of tokens.
struct LzxFrequencies {
  std::array<std::uint32_t, kLzxUsualMainSymbols> main{};
  std::array<std::uint32_t, kLzxLengthSymbols> length{};
  std::array<std::uint32_t, kLzxAlignedSymbols> aligned{};  // low bits of the far offsets

  void Count(std::span<const LzxToken> tokens);
};

// The code lengths that one block leaves to the next one of the interval; zeros before the first.
struct LzxTreeLengths {
  std::array<std::uint8_t, kLzxUsualMainSymbols> main{};
  std::array<std::uint8_t, kLzxLengthSymbols> length{};
};

// A block that is ready to be written. It refers to nothing outside, so the tokens may go.
class LzxBlock {
 public:
  // `size` is the number of output bytes that the counted tokens stand for, at least 1.
  LzxBlock(const LzxFrequencies& frequencies, std::uint32_t size, const LzxTreeLengths& previous);

  LzxBlockType type() const { return type_; }
  const LzxTreeLengths& lengths() const { return lengths_; }

  // Bits of header, trees and tokens, without padding at frame ends.
  std::uint32_t bits() const { return header_bits_ + token_bits_; }

  // Writes the header with the trees; `previous` as given to the constructor.
  void WriteHeader(const LzxTreeLengths& previous, BitWriter& out) const;

  // Writes some of the tokens that were counted.
  void WriteTokens(std::span<const LzxToken> tokens, BitWriter& out) const;

 private:
  template <bool kIsAligned>
  void WriteTokensAs(std::span<const LzxToken> tokens, BitWriter& out) const;

  LzxBlockType type_;
  std::uint32_t size_;
  LzxTreeLengths lengths_;
  std::array<std::uint8_t, kLzxAlignedSymbols> aligned_lengths_;
  std::array<std::uint16_t, kLzxUsualMainSymbols> main_codes_;
  std::array<std::uint16_t, kLzxLengthSymbols> length_codes_;
  std::array<std::uint16_t, kLzxAlignedSymbols> aligned_codes_;
  std::uint32_t header_bits_;
  std::uint32_t token_bits_;
};

}  // namespace scrivo::chm
