#pragma once

// The numbers of the LZX coding as it occurs in compiled help files, shared by the decoder and the
// encoder. Format source: the public LZX description as corrected by the bytes of real files.
//
// A stream is a row of reset intervals, each decodable alone. An interval is a row of frames of
// kLzxFrameSize output bytes; at the end of a frame the bit stream is padded to a 16-bit boundary.
// Words of 16 bits are stored low byte first and used from the most significant bit down.

#include <array>
#include <cstddef>
#include <cstdint>

namespace scrivo {

inline constexpr std::size_t kLzxFrameSize = 0x8000;

// What every compiler of help files writes: a window of 64 KiB and a reset every 64 KiB.
inline constexpr int kLzxUsualWindowBits = 16;
inline constexpr std::size_t kLzxUsualInterval = 0x10000;

inline constexpr int kLzxMinWindowBits = 15;
inline constexpr int kLzxMaxWindowBits = 21;

// Block types, three bits in the block header. The other values are invalid.
enum class LzxBlockType : std::uint8_t { kVerbatim = 1, kAligned = 2, kUncompressed = 3 };
inline constexpr int kLzxBlockTypeBits = 3;
inline constexpr int kLzxBlockSizeBits = 24;

// Code lengths are sent as differences, coded with a small tree of their own: the pretree.
inline constexpr int kLzxPretreeSymbols = 20;
inline constexpr int kLzxPretreeLengthBits = 4;  // also bounds a pretree code to 15 bits
inline constexpr int kLzxPretreeZeros = 17;      // 4 bits v: v + 4 zero lengths
inline constexpr int kLzxPretreeLongZeros = 18;  // 5 bits v: v + 20 zero lengths
inline constexpr int kLzxPretreeSame = 19;       // 1 bit v, a symbol: v + 4 equal lengths
inline constexpr int kLzxZerosBits = 4;
inline constexpr int kLzxZerosBase = 4;
inline constexpr int kLzxLongZerosBits = 5;
inline constexpr int kLzxLongZerosBase = 20;
inline constexpr int kLzxSameBits = 1;
inline constexpr int kLzxSameBase = 4;

inline constexpr int kLzxMaxCodeLength = 16;                         // main and length tree
inline constexpr int kLzxLengthDifferences = kLzxMaxCodeLength + 1;  // differences are modulo this

inline constexpr int kLzxLiterals = 256;
inline constexpr int kLzxLengthHeaders = 8;    // match symbols per position slot
inline constexpr int kLzxLengthSymbols = 249;  // longer lengths, after length header 7
inline constexpr int kLzxMinMatch = 2;
inline constexpr int kLzxMaxMatch = kLzxMinMatch + kLzxLengthHeaders - 1 + kLzxLengthSymbols - 1;
static_assert(kLzxMaxMatch == 257);

inline constexpr int kLzxAlignedSymbols = 8;
inline constexpr int kLzxAlignedLengthBits = 3;  // also bounds an aligned code to 7 bits
inline constexpr int kLzxAlignedBits = 3;        // low offset bits that the aligned tree codes

// Slots 0 to 2 name a recent offset; the other slots code distance + kLzxOffsetBias.
inline constexpr int kLzxRecentOffsets = 3;
inline constexpr int kLzxOffsetBias = 2;

inline constexpr int kLzxMaxSlots = 50;

// Position slots for a window of 1 << window_bits bytes; window_bits within the limits above.
constexpr int LzxPositionSlots(int window_bits) {
  return window_bits == 21 ? 50 : window_bits == 20 ? 42 : 2 * window_bits;
}
static_assert(LzxPositionSlots(kLzxUsualWindowBits) == 32 &&
              LzxPositionSlots(kLzxMinWindowBits) == 30);

// Symbols of the main tree for such a window.
constexpr int LzxMainSymbols(int window_bits) {
  return kLzxLiterals + kLzxLengthHeaders * LzxPositionSlots(window_bits);
}
inline constexpr int kLzxMaxMainSymbols = kLzxLiterals + kLzxLengthHeaders * kLzxMaxSlots;

// Bits of the position footer, which follows a match symbol of `slot` and completes its offset.
constexpr int LzxFooterBits(int slot) { return slot < 4 ? 0 : slot < 36 ? slot / 2 - 1 : 17; }

// The first formatted offset (distance + kLzxOffsetBias) of every slot; the last element ends the
// last slot.
inline constexpr std::array<std::uint32_t, kLzxMaxSlots + 1> kLzxSlotBase = [] {
  std::array<std::uint32_t, kLzxMaxSlots + 1> base{};
  for (int slot = 0; slot < kLzxMaxSlots; ++slot) {
    base[slot + 1] = base[slot] + (std::uint32_t{1} << LzxFooterBits(slot));
  }
  return base;
}();
static_assert(kLzxSlotBase[32] == 65536 && kLzxSlotBase[50] == 0x200000);

// The largest distance that a window of 1 << window_bits bytes allows.
constexpr std::uint32_t LzxMaxDistance(int window_bits) {
  return (std::uint32_t{1} << window_bits) - kLzxRecentOffsets;
}

// An uncompressed block starts with the three recent offsets, four bytes each, low byte first.
inline constexpr std::size_t kLzxRawHeaderSize = 4 * kLzxRecentOffsets;

}  // namespace scrivo
