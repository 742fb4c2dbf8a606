#pragma once

// Copies what a match repeats.

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace scrivo {

inline constexpr std::size_t kCopyUnit = 16;

// Reads all of a unit before it writes, as the two places may overlap.
inline void CopyUnit(std::uint8_t* out, const std::uint8_t* from) {
  std::array<std::uint8_t, kCopyUnit> unit;
  std::memcpy(unit.data(), from, kCopyUnit);
  std::memcpy(out, unit.data(), kCopyUnit);
}

// Writes `length` bytes from `out` on, each equal to the one `distance` (1 or more) bytes before
// it. `room` is what the buffer holds from `out` on, at least `length`; bytes behind the match may
// be spoilt, as far as the buffer reaches.
inline void CopyMatch(std::uint8_t* out, std::size_t distance, std::size_t length,
                      std::size_t room) {
  // Copied without asking how long the match is: that is known so late, and so hard to foresee,
  // that a branch would cost more. Few matches are longer.
  constexpr std::size_t kUnasked = 3 * kCopyUnit;
  const std::uint8_t* const from = out - distance;
  const bool apart = distance >= kCopyUnit || distance >= length;
  if (apart && room >= length + kUnasked) [[likely]] {
    for (std::size_t i = 0; i < kUnasked; i += kCopyUnit) CopyUnit(out + i, from + i);
    for (std::size_t i = kUnasked; i < length; i += 2 * kCopyUnit) {
      CopyUnit(out + i, from + i);
      CopyUnit(out + i + kCopyUnit, from + i + kCopyUnit);
    }
  } else if (distance == 1) {
    std::memset(out, *from, length);
  } else {
    for (std::size_t i = 0; i < length; ++i) out[i] = from[i];
  }
}

}  // namespace scrivo
