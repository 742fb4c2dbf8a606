#pragma once

// ENCINT, the number format of the directory: groups of seven bits, the most significant first, bit
// 7 set on every byte but the last.

#include <cstdint>
#include <optional>
#include <span>

namespace scrivo {

// Takes a number off the front of `*bytes`. Leading groups of zero are allowed, as some writers pad
// their numbers. Nothing when the bytes end within the number or it needs more than 64 bits; what
// was taken off then is undefined.
inline std::optional<std::uint64_t> TakeEncint(std::span<const std::uint8_t>* bytes) {
  std::uint64_t value = 0;
  while (!bytes->empty()) {
    const std::uint8_t byte = bytes->front();
    *bytes = bytes->subspan(1);
    if (value >> 57 != 0) return std::nullopt;
    value = value << 7 | (byte & 0x7F);
    if (byte < 0x80) return value;
  }
  return std::nullopt;
}

}  // namespace scrivo
