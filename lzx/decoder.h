#pragma once

// Decodes LZX as compiled help files hold it, one reset interval at a time. It sees memory only,
// and every input ends in one of the outcomes below.

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "lzx/constants.h"
#include "lzx/huffman_table.h"

namespace scrivo {

enum class LzxStatus {
  kOk,
  kInputEnds,       // the input ends before the output is complete
  kTranslated,      // the interval asks for E8 translation, which help files do not use
  kBadBlockType,    // a block of no known type
  kBadCodeLengths,  // code lengths that make no code
  kBadCode,         // bits that are not a code
  kBadDistance,     // a match from before the start of the interval
  kBadLength,       // a match across the end of a block or of a frame
};

struct LzxResult {
  LzxStatus status = LzxStatus::kOk;
  // Bytes of output that were complete when decoding stopped. With kInputEnds they are right (a
  // last frame may end early only at the end of a block); with the other failures the damage may
  // lie before the place where it was found.
  std::size_t produced = 0;
  // Bytes of input used, up to a word boundary; of use only with kOk.
  std::size_t consumed = 0;
};

// Holds tables of some 70 KiB; make one for a thread and keep it.
class LzxDecoder {
 public:
  // For a window of 1 << window_bits bytes, kLzxMinWindowBits to kLzxMaxWindowBits.
  explicit LzxDecoder(int window_bits);

  // Decodes the interval that starts at the start of `input` until `output` holds as many whole
  // frames of kLzxFrameSize as fit; what follows in the input is left alone. So the caller decides
  // whether it wants the whole interval or just its first frames.
  LzxResult DecodeInterval(std::span<const std::uint8_t> input, std::span<std::uint8_t> output);

 private:
  using RecentDistances = std::array<std::uint32_t, kLzxRecentOffsets>;

  struct Block {
    LzxBlockType type = LzxBlockType::kVerbatim;
    std::size_t remaining = 0;
    bool pad_byte = false;  // follows the bytes of this uncompressed block
  };

  LzxStatus DecodeBlocks(BitReader& input);
  LzxStatus DecodeFrame(BitReader& input, std::size_t end);
  LzxStatus DecodePart(BitReader& input, std::size_t size);
  LzxStatus ReadBlockHeader(BitReader& input);
  LzxStatus ReadRawHeader(BitReader& input);
  LzxStatus ReadTrees(BitReader& input);
  LzxStatus ReadLengths(BitReader& input, std::span<std::uint8_t> lengths);
  template <bool kAligned>
  std::uint32_t ReadDistance(BitReader& bits, HuffmanElement match, RecentDistances* recent) const;
  template <bool kAligned>
  LzxStatus DecodeSymbols(BitReader& input, std::size_t size);
  LzxStatus CopyRaw(BitReader& input, std::size_t size);

  std::size_t main_symbols_;
  std::span<const std::uint8_t> input_;
  std::span<std::uint8_t> output_;
  std::size_t position_ = 0;  // in output_
  Block block_;
  RecentDistances recent_{};
  std::array<std::uint8_t, kLzxMaxMainSymbols> main_lengths_{};
  std::array<std::uint8_t, kLzxLengthSymbols> length_lengths_{};

  // Root sizes are a balance: larger ones miss the first-level cache and take longer to fill,
  // smaller ones send more codes through a link.
  HuffmanTable<kLzxPretreeSymbols, 8, 15> pretree_;
  HuffmanTable<kLzxMaxMainSymbols, 11, kLzxMaxCodeLength> main_tree_;
  HuffmanTable<kLzxLengthSymbols, 10, kLzxMaxCodeLength> length_tree_;
  HuffmanTable<kLzxAlignedSymbols, 7, 7> aligned_tree_;
};

}  // namespace scrivo
