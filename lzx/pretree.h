#pragma once

// The code lengths of a tree (or of a part of it) as an LZX block header sends them: as
// differences to the lengths before, in runs, coded with a pretree.

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "lzx/bit_writer.h"
#include "lzx/constants.h"

namespace scrivo {

class PretreeCode {
 public:
  // `lengths` are the new code lengths, `previous` those of the last block of the interval (zeros
  // before the first); both of the same size, at most kMaxSize, values 0 to kLzxMaxCodeLength.
  PretreeCode(std::span<const std::uint8_t> previous, std::span<const std::uint8_t> lengths);

  // Bits that Write will take.
  std::uint32_t Bits() const { return bits_; }

  void Write(BitWriter& out) const;

  static constexpr std::size_t kMaxSize = 256;

 private:
  struct Item {
    std::uint8_t symbol;
    std::uint8_t extra;  // the run length's bits, for the symbols that have them
  };

  void Add(int symbol, std::size_t extra = 0);
  void AddZeros(std::size_t count);

  std::array<Item, kMaxSize> items_;  // one length needs one item at most
  std::size_t item_count_ = 0;
  std::array<std::uint8_t, kLzxPretreeSymbols> pretree_lengths_;
  std::uint32_t bits_ = 0;
};

}  // namespace scrivo
