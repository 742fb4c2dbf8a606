#pragma once

// Builds the little-endian structures of a help file in memory.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

namespace scrivo {

class ByteWriter {
 public:
  void Put8(std::uint8_t value) { bytes_.push_back(value); }
  void Put16(std::uint16_t value) { PutLow(value, 2); }
  void Put32(std::uint32_t value) { PutLow(value, 4); }
  void Put64(std::uint64_t value) { PutLow(value, 8); }

  // ENCINT, the number format of the directory: groups of seven bits, the most significant first,
  // bit 7 set on every byte but the last.
  void PutEncint(std::uint64_t value) {
    int shift = 0;
    while (shift < 63 && value >> (shift + 7) != 0) shift += 7;
    for (; shift > 0; shift -= 7) Put8(static_cast<std::uint8_t>(value >> shift | 0x80));
    Put8(static_cast<std::uint8_t>(value & 0x7F));
  }

  void PutText(std::string_view text) { bytes_.insert(bytes_.end(), text.begin(), text.end()); }
  void PutBytes(std::span<const std::uint8_t> bytes) {
    bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
  }

  // Adds zero bytes until the whole is `size` long; does nothing when it is that long already.
  void PadTo(std::size_t size) {
    if (bytes_.size() < size) bytes_.resize(size);
  }

  // Replace bytes that have been put.
  void Set16(std::size_t offset, std::uint16_t value) { SetLow(offset, value, 2); }
  void Set32(std::size_t offset, std::uint32_t value) { SetLow(offset, value, 4); }
  void Set64(std::size_t offset, std::uint64_t value) { SetLow(offset, value, 8); }
  void SetBytes(std::size_t offset, std::span<const std::uint8_t> bytes) {
    std::copy(bytes.begin(), bytes.end(), bytes_.begin() + static_cast<std::ptrdiff_t>(offset));
  }

  void SetText(std::size_t offset, std::string_view text) {
    std::copy(text.begin(), text.end(), bytes_.begin() + static_cast<std::ptrdiff_t>(offset));
  }

  std::size_t Size() const { return bytes_.size(); }
  const std::vector<std::uint8_t>& Bytes() const { return bytes_; }

  // Gives the bytes away and starts anew.
  std::vector<std::uint8_t> Take() { return std::exchange(bytes_, {}); }

 private:
  void PutLow(std::uint64_t value, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) Put8(static_cast<std::uint8_t>(value >> 8 * i));
  }

  void SetLow(std::size_t offset, std::uint64_t value, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
      bytes_[offset + i] = static_cast<std::uint8_t>(value >> 8 * i);
    }
  }

  std::vector<std::uint8_t> bytes_;
};

}  // namespace scrivo
