#pragma once

// A verbatim or aligned-offset block of an LZX interval: from its tokens to codes, size and bits.

#include <array>
#include <cstdint>
#include <span>

#include "lzx/bit_writer.h"
#include "lzx/constants.h"
#include "lzx/token.h"

namespace scrivo {

// How often the symbols of each tree occur in a row of tokens.
struct LzxFrequencies {
  std::array<std::uint32_t, kLzxUsualMainSymbols> main{};
  std::array<std::uint32_t, kLzxLengthSymbols> length{};
  std::array<std::uint32_t, kLzxAlignedSymbols> aligned{};  // low bits of the far offsets

  // Adds those of more tokens, each counting `weight` times.
  void Count(std::span<const LzxToken> tokens, std::uint32_t weight = 1);
};

// The code lengths that one block leaves to the next one of the interval; zeros before the first.
struct LzxTreeLengths {
  std::array<std::uint8_t, kLzxUsualMainSymbols> main{};
  std::array<std::uint8_t, kLzxLengthSymbols> length{};
};

// A block that is ready to be written.
class LzxBlock {
 public:
  // Of at least one token; they must outlive the block. `previous` are the code lengths of the
  // block before it in the interval.
  LzxBlock(std::span<const LzxToken> tokens, const LzxTreeLengths& previous);

  LzxBlockType Type() const { return type_; }
  std::span<const LzxToken> Tokens() const { return tokens_; }
  const LzxTreeLengths& Lengths() const { return lengths_; }

  // Bits of header, trees and tokens, without padding at frame ends.
  std::uint32_t Bits() const { return header_bits_ + token_bits_; }

  // Writes the header with the trees; `previous` as given to the constructor.
  void WriteHeader(const LzxTreeLengths& previous, BitWriter& out) const;

  // Writes some of its tokens.
  void WriteTokens(std::span<const LzxToken> tokens, BitWriter& out) const;

 private:
  template <bool kIsAligned>
  void WriteTokensAs(std::span<const LzxToken> tokens, BitWriter& out) const;

  std::span<const LzxToken> tokens_;
  LzxBlockType type_;
  LzxTreeLengths lengths_;
  std::array<std::uint8_t, kLzxAlignedSymbols> aligned_lengths_;
  std::array<std::uint16_t, kLzxUsualMainSymbols> main_codes_;
  std::array<std::uint16_t, kLzxLengthSymbols> length_codes_;
  std::array<std::uint16_t, kLzxAlignedSymbols> aligned_codes_;
  std::uint32_t header_bits_;
  std::uint32_t token_bits_;
};

}  // namespace scrivo
