#pragma once

// Little-endian integers at a place in memory, whatever the machine's own order and alignment.

#include <bit>
#include <cstdint>
#include <cstring>

namespace scrivo {

inline std::uint16_t LoadLe16(const std::uint8_t* at) {
  return static_cast<std::uint16_t>(at[0] | at[1] << 8);
}

inline std::uint32_t LoadLe32(const std::uint8_t* at) {
  return LoadLe16(at) | static_cast<std::uint32_t>(LoadLe16(at + 2)) << 16;
}

// The decoder's inner loop loads through here: one instruction on a little-endian machine.
inline std::uint64_t LoadLe64(const std::uint8_t* at) {
  if constexpr (std::endian::native == std::endian::little) {
    std::uint64_t value;
    std::memcpy(&value, at, sizeof value);
    return value;
  } else {
    return LoadLe32(at) | static_cast<std::uint64_t>(LoadLe32(at + 4)) << 32;
  }
}

}  // namespace scrivo
