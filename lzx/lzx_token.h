#pragma once

// What the parser of an interval hands to the coder: a literal or a match, as the symbols and bits
// that stand for it in an LZX block.

#include <array>
#include <bit>
#include <cstdint>
#include <utility>

#include "lzx/lzx_constants.h"

namespace scrivo {

inline constexpr int kLzxUsualSlots = LzxSlots(kLzxUsualWindowBits);
inline constexpr int kLzxUsualMainSymbols = LzxMainSymbols(kLzxUsualWindowBits);

// The three distances that a match names at the cost of a slot alone, newest first.
using RecentOffsets = std::array<std::uint32_t, kLzxRecentOffsets>;
inline constexpr RecentOffsets kLzxFirstRecentOffsets = {1, 1, 1};

// The position slot, 3 or more, of an explicit distance (1 to kLzxMaxDistance of the window).
constexpr int LzxSlotOf(std::uint32_t distance) {
  // Two slots for every power of two of the formatted offset: its top bit and the one below.
  const std::uint32_t formatted = distance + kLzxOffsetBias;
  const int top = std::bit_width(formatted) - 1;
  return 2 * top + static_cast<int>(formatted >> (top - 1) & 1);
}
static_assert(LzxSlotOf(1) == 3 && LzxSlotOf(2) == 4 && LzxSlotOf(65533) == 31);

// One literal or match, packed: main symbol, length symbol, the bits that complete the offset.
class LzxToken {
 public:
  LzxToken() = default;

  static LzxToken Literal(std::uint8_t byte) { return LzxToken(byte); }

  // A match of `length` bytes in `slot`; `footer` is the formatted offset minus the slot's base.
  static LzxToken Match(std::uint32_t length, int slot, std::uint32_t footer) {
    const std::uint32_t rest = length - kLzxMinMatch;
    const std::uint32_t header = rest < kLongHeader ? rest : kLongHeader;
    return LzxToken((kLzxLiterals + kLzxLengthHeaders * static_cast<std::uint32_t>(slot) + header) |
                    (rest - header) << kLengthShift | footer << kFooterShift);
  }

  std::uint32_t main_symbol() const { return packed_ & ((1u << kLengthShift) - 1); }
  bool is_match() const { return main_symbol() >= kLzxLiterals; }
  bool has_length_symbol() const {
    return is_match() && main_symbol() % kLzxLengthHeaders == kLongHeader;
  }
  std::uint32_t length_symbol() const { return packed_ >> kLengthShift & 0xFF; }
  int slot() const { return static_cast<int>(main_symbol() - kLzxLiterals) / kLzxLengthHeaders; }
  std::uint32_t footer() const { return packed_ >> kFooterShift; }

  // Bytes of output that it stands for.
  std::uint32_t size() const {
    return is_match() ? main_symbol() % kLzxLengthHeaders + length_symbol() + kLzxMinMatch : 1;
  }

 private:
  static constexpr std::uint32_t kLongHeader = kLzxLengthHeaders - 1;
  static constexpr int kLengthShift = 9;
  static constexpr int kFooterShift = 17;
  static_assert(kLzxUsualMainSymbols <= 1 << kLengthShift);
  static_assert(kFooterShift + LzxExtraBits(kLzxUsualSlots - 1) <= 32);

  explicit LzxToken(std::uint32_t packed) : packed_(packed) {}

  std::uint32_t packed_ = 0;
};

}  // namespace scrivo
