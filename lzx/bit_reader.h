#pragma once

// The LZX bit stream: 16-bit words, low byte first, bits used from the most significant down.
//
// The buffer is 64 bits wide and left-aligned: its top `valid` bits are the next bits of the
// stream. Refill() tops it up to at least 48 bits; the reading calls never refill by themselves, so
// that the decoder's inner loop decides how often it pays for it. Past the end of the input the
// stream continues with zeros; Overrun() tells whether any of them was used.

#include <cstddef>
#include <cstdint>
#include <span>

#include "bytes/little_endian.h"

namespace scrivo {

class BitReader {
 public:
  // What Refill() guarantees.
  static constexpr int kRefilledBits = 48;

  // Reads `input`, which must outlive the reader.
  explicit BitReader(std::span<const std::uint8_t> input)
      : data_(input.data()), size_(input.size()) {}

  void Refill() {
    // Bits below the valid ones are either zero or the true next bits, so OR-ing them in again
    // changes nothing, and the number of whole words that fit needs no branch.
    const int words = (63 - valid_) >> 4;
    buffer_ |= NextWords() >> valid_;
    position_ += 2 * static_cast<std::size_t>(words);
    valid_ += 16 * words;
  }

  // The next `count` bits (1 to 32) as a number; they stay in the stream. After Refill().
  std::uint32_t Peek(int count) const {
    return static_cast<std::uint32_t>(buffer_ >> (64 - count));
  }

  // Takes `count` bits (0 to 48) out of the stream; no more than are valid.
  void Skip(int count) {
    buffer_ <<= count;
    valid_ -= count;
  }

  // The next `count` bits (0 to 32), taken out of the stream. After Refill().
  std::uint32_t Take(int count) {
    // Two shifts, as one by 64 would be undefined for a count of 0.
    const auto value = static_cast<std::uint32_t>(buffer_ >> 1 >> (63 - count));
    Skip(count);
    return value;
  }

  // Refills, then takes.
  std::uint32_t Read(int count) {
    Refill();
    return Take(count);
  }

  // Drops the rest of a word that is partly used.
  void AlignToWord() { Skip(valid_ & 15); }

  // Where the next unused word starts, in bytes; only after AlignToWord(). May lie past the end.
  std::size_t BytePosition() const { return position_ - static_cast<std::size_t>(valid_ / 8); }

  // Goes on at `position`, in bytes.
  void Seek(std::size_t position) {
    position_ = position;
    buffer_ = 0;
    valid_ = 0;
  }

  // Whether bits from past the end of the input have been used. Of a word of which the input has
  // only the first byte, the bits that come first are missing, so that none of it counts.
  bool Overrun() const {
    return 8 * position_ > 8 * (size_ - size_ % 2) + static_cast<std::size_t>(valid_);
  }

 private:
  // The next four words, the first one on top.
  std::uint64_t NextWords() const {
    std::uint64_t words;
    if (position_ + 8 <= size_) [[likely]] {
      words = LoadLe64(data_ + position_);
    } else {
      words = LastWords();
    }
    words = words >> 32 | words << 32;
    constexpr std::uint64_t kEvenWords = 0x0000FFFF0000FFFF;
    return (words & kEvenWords) << 16 | (words >> 16 & kEvenWords);
  }

  std::uint64_t LastWords() const {
    std::uint64_t words = 0;
    for (std::size_t i = position_; i < size_; ++i) {
      words |= std::uint64_t{data_[i]} << (8 * (i - position_));
    }
    return words;
  }

  const std::uint8_t* data_;
  std::size_t size_;
  std::size_t position_ = 0;  // of the first word not counted in valid_
  std::uint64_t buffer_ = 0;
  int valid_ = 0;
};

}  // namespace scrivo
