#include "lzx/decoder.h"

#include <algorithm>
#include <cstring>

#include "bytes/little_endian.h"
#include "lzx/bit_reader.h"
#include "lzx/copy_match.h"
#include "lzx/main_element.h"

namespace scrivo {

LzxDecoder::LzxDecoder(int window_bits)
    : main_symbols_(static_cast<std::size_t>(LzxMainSymbols(window_bits))) {}

LzxResult LzxDecoder::DecodeInterval(std::span<const std::uint8_t> input,
                                     std::span<std::uint8_t> output) {
  input_ = input;
  output_ = output;
  position_ = 0;
  block_ = {};
  recent_.fill(1);
  main_lengths_.fill(0);
  length_lengths_.fill(0);

  BitReader bits(input);
  LzxResult result;
  result.status = bits.Read(1) != 0 ? LzxStatus::kTranslated : DecodeBlocks(bits);
  result.produced = position_;
  result.consumed = std::min(bits.BytePosition(), input.size());
  return result;
}

LzxStatus LzxDecoder::DecodeBlocks(BitReader& input) {
  while (output_.size() - position_ >= kLzxFrameSize) {
    const std::size_t frame_start = position_;
    if (const LzxStatus status = DecodeFrame(input, frame_start + kLzxFrameSize);
        status != LzxStatus::kOk) {
      // Zeros from past the end look like some other defect; the true reason is that it ends.
      return input.Overrun() ? LzxStatus::kInputEnds : status;
    }
    input.AlignToWord();
    if (input.Overrun()) {
      position_ = frame_start;
      return LzxStatus::kInputEnds;
    }
  }
  return LzxStatus::kOk;
}

LzxStatus LzxDecoder::DecodeFrame(BitReader& input, std::size_t end) {
  const std::size_t start = position_;
  while (position_ < end) {
    if (block_.remaining == 0) {
      const LzxStatus status = ReadBlockHeader(input);
      if (status != LzxStatus::kOk) return status;
    }
    const std::size_t size = std::min(block_.remaining, end - position_);
    const LzxStatus status = DecodePart(input, size);
    if (status != LzxStatus::kOk || input.Overrun()) {
      position_ = start;
      return status;
    }
    position_ += size;
    block_.remaining -= size;
  }
  return LzxStatus::kOk;
}

LzxStatus LzxDecoder::DecodePart(BitReader& input, std::size_t size) {
  switch (block_.type) {
    case LzxBlockType::kVerbatim:
      return DecodeSymbols<false>(input, size);
    case LzxBlockType::kAligned:
      return DecodeSymbols<true>(input, size);
    case LzxBlockType::kUncompressed:
      break;
  }
  return CopyRaw(input, size);
}

LzxStatus LzxDecoder::ReadBlockHeader(BitReader& input) {
  input.Refill();
  const std::uint32_t type = input.Take(kLzxBlockTypeBits);
  block_.remaining = input.Take(kLzxBlockSizeBits);
  if (type < 1 || type > 3) return LzxStatus::kBadBlockType;
  block_.type = static_cast<LzxBlockType>(type);
  if (block_.type == LzxBlockType::kUncompressed) return ReadRawHeader(input);
  if (block_.type == LzxBlockType::kAligned) {
    std::array<std::uint8_t, kLzxAlignedSymbols> lengths;
    for (std::uint8_t& length : lengths) {
      length = static_cast<std::uint8_t>(input.Read(kLzxAlignedLengthBits));
    }
    if (!aligned_tree_.Build(lengths)) return LzxStatus::kBadCodeLengths;
  }
  return ReadTrees(input);
}

LzxStatus LzxDecoder::ReadRawHeader(BitReader& input) {
  // One to sixteen bits of padding, never none.
  input.Skip(1);
  input.AlignToWord();
  const std::size_t at = input.BytePosition();
  if (at > input_.size() || input_.size() - at < kLzxRawHeaderSize) {
    input.Seek(at + kLzxRawHeaderSize);
    return LzxStatus::kInputEnds;
  }
  for (std::size_t i = 0; i < recent_.size(); ++i) {
    recent_[i] = LoadLe32(input_.data() + at + 4 * i);
  }
  block_.pad_byte = block_.remaining % 2 != 0;
  input.Seek(at + kLzxRawHeaderSize);
  return LzxStatus::kOk;
}

LzxStatus LzxDecoder::CopyRaw(BitReader& input, std::size_t size) {
  const std::size_t at = input.BytePosition();
  const bool pad = block_.pad_byte && size == block_.remaining;
  input.Seek(at + size + (pad ? 1 : 0));
  if (at > input_.size() || input_.size() - at < size) return LzxStatus::kInputEnds;
  std::memcpy(output_.data() + position_, input_.data() + at, size);
  return LzxStatus::kOk;
}

LzxStatus LzxDecoder::ReadTrees(BitReader& input) {
  const std::span<std::uint8_t> main(main_lengths_.data(), main_symbols_);
  LzxStatus status = ReadLengths(input, main.first(kLzxLiterals));
  if (status == LzxStatus::kOk) status = ReadLengths(input, main.subspan(kLzxLiterals));
  if (status == LzxStatus::kOk) status = ReadLengths(input, length_lengths_);
  if (status != LzxStatus::kOk) return status;
  const bool built = main_tree_.Build(main, kMainMeanings) && length_tree_.Build(length_lengths_);
  return built ? LzxStatus::kOk : LzxStatus::kBadCodeLengths;
}

LzxStatus LzxDecoder::ReadLengths(BitReader& input, std::span<std::uint8_t> lengths) {
  std::array<std::uint8_t, kLzxPretreeSymbols> pretree_lengths;
  for (std::uint8_t& length : pretree_lengths) {
    length = static_cast<std::uint8_t>(input.Read(kLzxPretreeLengthBits));
  }
  if (!pretree_.Build(pretree_lengths)) return LzxStatus::kBadCodeLengths;

  const auto changed = [](std::uint8_t previous, std::uint32_t symbol) {
    return static_cast<std::uint8_t>((previous + kLzxLengthDifferences - symbol) %
                                     kLzxLengthDifferences);
  };
  std::size_t i = 0;
  while (i < lengths.size()) {
    input.Refill();
    HuffmanElement element = pretree_.Lookup(input);
    if (element >= kHuffmanInvalid) return LzxStatus::kBadCode;
    input.Skip(HuffmanLength(element));
    const std::uint32_t symbol = HuffmanSymbol(element);
    std::size_t run = 1;
    std::uint8_t value = 0;
    if (symbol < kLzxPretreeZeros) {
      value = changed(lengths[i], symbol);
    } else if (symbol == kLzxPretreeZeros) {
      run = input.Take(kLzxZerosBits) + kLzxZerosBase;
    } else if (symbol == kLzxPretreeLongZeros) {
      run = input.Take(kLzxLongZerosBits) + kLzxLongZerosBase;
    } else {
      run = input.Take(kLzxSameBits) + kLzxSameBase;
      element = pretree_.Lookup(input);
      if (element >= HuffmanElement{kLzxPretreeZeros} << 8) return LzxStatus::kBadCode;
      input.Skip(HuffmanLength(element));
      value = changed(lengths[i], HuffmanSymbol(element));
    }
    if (run > lengths.size() - i) return LzxStatus::kBadCodeLengths;
    std::fill_n(lengths.begin() + static_cast<std::ptrdiff_t>(i), run, value);
    i += run;
  }
  return LzxStatus::kOk;
}

// Reads what completes the distance of a match and brings the recent ones up to date. Returns 0
// when the bits are not a code.
template <bool kAligned>
inline std::uint32_t LzxDecoder::ReadDistance(BitReader& bits, HuffmanElement match,
                                              RecentDistances* recent) const {
  const std::uint32_t slot = PositionSlot(match);
  auto& [first, second, third] = *recent;
  std::uint32_t distance;
  if (slot < kLzxRecentOffsets) {
    distance = slot == 0 ? first : slot == 1 ? second : third;
    if (slot == 1) second = first;
    if (slot == 2) third = first;
    first = distance;
    return distance;
  }
  const int extra_bits = ExtraBits(match);
  distance = kLzxSlotBase[slot] - kLzxOffsetBias;
  if (kAligned && extra_bits >= kLzxAlignedBits) {
    distance += bits.Take(extra_bits - kLzxAlignedBits) << kLzxAlignedBits;
    const HuffmanElement low = aligned_tree_.Lookup(bits);
    if (low >= kHuffmanInvalid) return 0;
    bits.Skip(HuffmanLength(low));
    distance += HuffmanSymbol(low);
  } else {
    distance += bits.Take(extra_bits);
  }
  third = second;
  second = first;
  first = distance;
  return distance;
}

// Time goes into waiting, for the bits that a symbol leaves over and for branches that were not
// foreseen. So a code is looked up before the bits are topped up, which then happens meanwhile; and
// a length code is looked up whether or not one follows, and dropped.
template <bool kAligned>
LzxStatus LzxDecoder::DecodeSymbols(BitReader& input, std::size_t size) {
  // Bits at hand, of those of a Refill(): after two main symbols, for a length code; after a match,
  // for the root of the next look-up.
  constexpr int kLongestFooter = LzxFooterBits(kLzxMaxSlots - 1) - kLzxAlignedBits + 7;
  static_assert(BitReader::kRefilledBits - 2 * kLzxMaxCodeLength >= kLzxMaxCodeLength);
  static_assert(BitReader::kRefilledBits - kLzxMaxCodeLength - kLongestFooter >=
                decltype(main_tree_)::kRoot);

  BitReader bits = input;  // a local copy, so that it lives in registers
  const std::uint8_t* const start = output_.data();
  std::uint8_t* out = output_.data() + position_;
  std::uint8_t* const stop = out + size;
  const std::uint8_t* const room_end = output_.data() + output_.size();
  RecentDistances recent = recent_;
  LzxStatus status = LzxStatus::kOk;

  bits.Refill();
  while (out < stop) {
    HuffmanElement element = main_tree_.LookupRoot(bits);
    bits.Refill();
    if (element < kLiteralLimit) {
      bits.Skip(HuffmanLength(element));
      *out++ = static_cast<std::uint8_t>(HuffmanSymbol(element));
      if (out == stop) break;
      element = main_tree_.LookupRoot(bits);
    }
    if (element >= kHuffmanLink) [[unlikely]]
      element = main_tree_.Follow(bits, element);
    if (element < kLiteralLimit) {
      bits.Skip(HuffmanLength(element));
      *out++ = static_cast<std::uint8_t>(HuffmanSymbol(element));
      continue;
    }
    if (element >= kHuffmanInvalid) {
      status = LzxStatus::kBadCode;
      break;
    }
    bits.Skip(HuffmanLength(element));

    const HuffmanElement more = length_tree_.Lookup(bits) & LongMatchMask(element);
    bits.Refill();
    if (more >= kHuffmanInvalid) {
      status = LzxStatus::kBadCode;
      break;
    }
    bits.Skip(HuffmanLength(more));
    const std::size_t length = kLzxMinMatch + LengthHeader(element) + HuffmanSymbol(more);

    const std::uint32_t distance = ReadDistance<kAligned>(bits, element, &recent);
    // A distance of 0 (no code, or brought in by an uncompressed block) wraps round and fails too.
    if (std::size_t{distance} - 1 >= static_cast<std::size_t>(out - start)) {
      status = LzxStatus::kBadDistance;
      break;
    }
    if (length > static_cast<std::size_t>(stop - out)) {
      status = LzxStatus::kBadLength;
      break;
    }
    CopyMatch(out, distance, length, static_cast<std::size_t>(room_end - out));
    out += length;
  }
  recent_ = recent;
  input = bits;
  return status;
}

}  // namespace scrivo
