#include "lzx/pretree.h"

#include <algorithm>

#include "lzx/huffman_code.h"

namespace scrivo {
namespace {

constexpr std::size_t kMaxZeros = kLzxZerosBase + (1u << kLzxZerosBits) - 1;
constexpr std::size_t kMaxLongZeros = kLzxLongZerosBase + (1u << kLzxLongZerosBits) - 1;
constexpr std::size_t kMaxSame = kLzxSameBase + (1u << kLzxSameBits) - 1;

constexpr int ExtraBits(int symbol) {
  switch (symbol) {
    case kLzxPretreeZeros:
      return kLzxZerosBits;
    case kLzxPretreeLongZeros:
      return kLzxLongZerosBits;
    case kLzxPretreeSame:
      return kLzxSameBits;
    default:
      return 0;
  }
}

}  // namespace

PretreeCode::PretreeCode(std::span<const std::uint8_t> previous,
                         std::span<const std::uint8_t> lengths) {
  std::size_t i = 0;
  while (i < lengths.size()) {
    std::size_t run = 1;
    while (i + run < lengths.size() && lengths[i + run] == lengths[i]) ++run;
    const int difference =
        (previous[i] + kLzxLengthDifferences - lengths[i]) % kLzxLengthDifferences;
    if (lengths[i] == 0 && run >= kLzxZerosBase) {
      run = std::min(run, kMaxLongZeros);
      AddZeros(run);
    } else if (run >= kLzxSameBase) {
      run = std::min(run, kMaxSame);
      Add(kLzxPretreeSame, run - kLzxSameBase);
      Add(difference);
    } else {
      run = 1;
      Add(difference);
    }
    i += run;
  }

  std::array<std::uint32_t, kLzxPretreeSymbols> frequencies{};
  for (std::size_t item = 0; item < item_count_; ++item) ++frequencies[items_[item].symbol];
  HuffmanLengths(frequencies, (1 << kLzxPretreeLengthBits) - 1, pretree_lengths_);
  bits_ = kLzxPretreeSymbols * kLzxPretreeLengthBits;
  for (int symbol = 0; symbol < kLzxPretreeSymbols; ++symbol) {
    bits_ += frequencies[symbol] *
             static_cast<std::uint32_t>(pretree_lengths_[symbol] + ExtraBits(symbol));
  }
}

void PretreeCode::Add(int symbol, std::size_t extra) {
  items_[item_count_++] = {static_cast<std::uint8_t>(symbol), static_cast<std::uint8_t>(extra)};
}

void PretreeCode::AddZeros(std::size_t count) {
  if (count <= kMaxZeros) {
    Add(kLzxPretreeZeros, count - kLzxZerosBase);
  } else {
    Add(kLzxPretreeLongZeros, count - kLzxLongZerosBase);
  }
}

void PretreeCode::Write(BitWriter& out) const {
  for (const std::uint8_t length : pretree_lengths_) out.Put(length, kLzxPretreeLengthBits);
  std::array<std::uint16_t, kLzxPretreeSymbols> codes;
  CanonicalCodes(pretree_lengths_, codes);
  for (std::size_t item = 0; item < item_count_; ++item) {
    const Item& it = items_[item];
    out.Put(codes[it.symbol], pretree_lengths_[it.symbol]);
    out.Put(it.extra, ExtraBits(it.symbol));
  }
}

}  // namespace scrivo
