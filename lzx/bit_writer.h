#pragma once

// Writes the bit stream of an LZX interval: bits fill 16-bit words from the most significant down,
// and words are stored low byte first.

#include <cstddef>
#include <cstdint>
#include <span>

namespace scrivo {

// Appends bits to a buffer that the caller owns and has made large enough; nothing is checked here,
// because the encoder knows the exact size of a block before it writes it. The buffer must offer
// kSlack bytes more than the stream will take, since bits leave four bytes at a time.
class BitWriter {
 public:
  static constexpr std::size_t kSlack = 4;

  explicit BitWriter(std::uint8_t* buffer) : start_(buffer), next_(buffer) {}

  // Appends the low `count` bits of `value`, most significant first; count is 0 to 32 and the bits
  // of `value` above them are 0.
  void Put(std::uint32_t value, int count) {
    bits_ = (bits_ << count) | value;
    pending_ += count;
    if (pending_ >= 32) {
      pending_ -= 32;
      StoreWord(static_cast<std::uint16_t>(bits_ >> (pending_ + 16)));
      StoreWord(static_cast<std::uint16_t>(bits_ >> pending_));
    }
  }

  // Fills the word in progress with zero bits; does nothing on a word boundary.
  void AlignToWord() {
    if (pending_ % 16 != 0) Put(0, 16 - pending_ % 16);
    if (pending_ == 16) StoreWord(static_cast<std::uint16_t>(bits_));
    pending_ = 0;
  }

  // Appends bytes as they are; the stream must be on a word boundary (AlignToWord).
  void PutBytes(std::span<const std::uint8_t> bytes) {
    for (const std::uint8_t byte : bytes) *next_++ = byte;
  }

  // Bytes written so far; exact on a word boundary only.
  std::size_t Size() const { return static_cast<std::size_t>(next_ - start_); }

  // True when the next bit starts a word.
  bool Aligned() const { return pending_ % 16 == 0; }

 private:
  void StoreWord(std::uint16_t word) {
    next_[0] = static_cast<std::uint8_t>(word);
    next_[1] = static_cast<std::uint8_t>(word >> 8);
    next_ += 2;
  }

  std::uint8_t* start_;
  std::uint8_t* next_;
  std::uint64_t bits_ = 0;  // the low pending_ bits wait to be stored
  int pending_ = 0;         // below 32 between calls
};

}  // namespace scrivo
