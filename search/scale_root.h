#pragma once

// The coding of numbers in the posting lists of the search index. A code has a root size r. A value
// of k = 0 is a zero bit and r bits; of k > 0 it is k one bits, a zero bit, and r + k - 1 bits that
// count from 2^(r + k - 1). Bits fill bytes from the most significant down.

#include <array>
#include <bit>
#include <cstdint>
#include <string>

namespace scrivo {

// How many values have each bit length (element 0: the zeros).
using BitLengths = std::array<std::uint64_t, 33>;

// The root size that codes such values in the fewest bits; the smaller one of equals.
inline int BestRootSize(const BitLengths& lengths) {
  int best = 0;
  std::uint64_t best_bits = ~std::uint64_t{0};
  constexpr int kLargestRoot = 16;
  for (int root = 0; root <= kLargestRoot; ++root) {
    std::uint64_t bits = 0;
    for (int length = 0; length <= 32; ++length) {
      const int cost = length <= root ? 1 + root : 2 * length - root;
      bits += lengths[static_cast<std::size_t>(length)] * static_cast<std::uint64_t>(cost);
    }
    if (bits < best_bits) {
      best_bits = bits;
      best = root;
    }
  }
  return best;
}

class ScaleRootWriter {
 public:
  explicit ScaleRootWriter(std::string* out) : out_(out) {}

  void Put(std::uint32_t value, int root) {
    const int bits = std::bit_width(value);
    if (bits <= root) {
      PutBits(0, 1);
      PutBits(value, root);
      return;
    }
    const int ones = bits - root;
    PutBits((std::uint64_t{1} << (ones + 1)) - 2, ones + 1);
    PutBits(value & ((std::uint32_t{1} << (bits - 1)) - 1), bits - 1);
  }

  // Fills the last byte with zero bits.
  void Align() {
    if (used_ > 0) PutBits(0, 8 - used_);
  }

 private:
  // At most 33 bits at a time.
  void PutBits(std::uint64_t value, int count) {
    buffer_ = buffer_ << count | value;
    used_ += count;
    while (used_ >= 8) {
      used_ -= 8;
      out_->push_back(static_cast<char>(buffer_ >> used_));
    }
  }

  std::string* out_;
  std::uint64_t buffer_ = 0;
  int used_ = 0;  // bits in buffer_ that are not out yet, below 8
};

}  // namespace scrivo
