#pragma once

// What the parser of an interval hands to the coder: a literal or a match, as the symbols and bits
// that stand for it in an LZX block.

#include <array>
#include <bit>
#include <cstdint>
#include <utility>

#include "lzx/constants.h"

namespace scrivo {

inline constexpr int kLzxUsualSlots = LzxPositionSlots(kLzxUsualWindowBits);
inline constexpr int kLzxUsualMainSymbols = LzxMainSymbols(kLzxUsualWindowBits);

// The three distances that a match names at the cost of a slot alone, newest first.
using RecentOffsets = std::array<std::uint32_t, kLzxRecentOffsets>;
inline constexpr RecentOffsets kLzxInitialRecentOffsets = {1, 1, 1};

// The position slot, 3 or more, of an explicit distance (1 to kLzxMaxDistance of the window).
constexpr int LzxPositionSlot(std::uint32_t distance) {
  // Two slots for every power of two of the formatted offset: its top bit and the one below.
  const std::uint32_t formatted = distance + kLzxOffsetBias;
  const int top = std::bit_width(formatted) - 1;
  // An offset is 3 or more, so that its top bit is not the lowest.
  // NOLINTNEXTLINE(clang-analyzer-core.UndefinedBinaryOperatorResult)
  return 2 * top + static_cast<int>(formatted >> (top - 1) & 1);
}
static_assert(LzxPositionSlot(1) == 3 && LzxPositionSlot(2) == 4 && LzxPositionSlot(65533) == 31);

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

  std::uint32_t MainSymbol() const { return packed_ & ((1u << kLengthShift) - 1); }
  bool IsMatch() const { return MainSymbol() >= kLzxLiterals; }
  bool HasLengthSymbol() const {
    return IsMatch() && MainSymbol() % kLzxLengthHeaders == kLongHeader;
  }
  std::uint32_t LengthSymbol() const { return packed_ >> kLengthShift & 0xFF; }
  int Slot() const { return static_cast<int>(MainSymbol() - kLzxLiterals) / kLzxLengthHeaders; }
  std::uint32_t Footer() const { return packed_ >> kFooterShift; }

  // Bytes of output that it stands for.
  std::uint32_t Size() const {
    return IsMatch() ? MainSymbol() % kLzxLengthHeaders + LengthSymbol() + kLzxMinMatch : 1;
  }

 private:
  static constexpr std::uint32_t kLongHeader = kLzxLengthHeaders - 1;
  static constexpr int kLengthShift = 9;
  static constexpr int kFooterShift = 17;
  static_assert(kLzxUsualMainSymbols <= 1 << kLengthShift);
  static_assert(kFooterShift + LzxFooterBits(kLzxUsualSlots - 1) <= 32);

  explicit LzxToken(std::uint32_t packed) : packed_(packed) {}

  std::uint32_t packed_ = 0;
};

}  // namespace scrivo
