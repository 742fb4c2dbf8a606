#include "chm/lzx_encoder.h"

#include <algorithm>

#include "chm/lzx_block.h"

namespace scrivo::chm {
namespace {

// Translation of machine code, which help files never use.
constexpr std::uint32_t kNoTranslation = 0;

// The whole interval as one uncompressed block.
void WriteRaw(std::span<const std::uint8_t> input, LzxInterval& result) {
  BitWriter out(result.bytes.data());
  out.Put(kNoTranslation, 1);
  out.Put(static_cast<std::uint32_t>(LzxBlockType::kUncompressed), kLzxBlockTypeBits);
  out.Put(static_cast<std::uint32_t>(input.size()), kLzxBlockSizeBits);
  out.AlignToWord();
  for (const std::uint32_t offset : kLzxFirstRecentOffsets) {
    const auto low = static_cast<std::uint8_t>(offset);
    out.PutBytes(std::array<std::uint8_t, 4>{low, 0, 0, 0});
  }
  result.second_frame = input.size() > kLzxFrameSize ? out.size() + kLzxFrameSize : 0;
  out.PutBytes(input);
  result.bytes.resize(out.size());
}

// The number of tokens that make up the first frame.
std::size_t FirstFrameTokens(std::span<const LzxToken> tokens) {
  std::size_t count = 0;
  for (std::size_t size = 0; size < kLzxFrameSize; ++count) size += tokens[count].size();
  return count;
}

}  // namespace

LzxEncoder::LzxEncoder() {
  tokens_.reserve(kLzxUsualInterval);
  padded_.reserve(kLzxUsualInterval);
}

void LzxEncoder::Encode(std::span<const std::uint8_t> input, LzxInterval& result) {
  const std::size_t frames = (input.size() + kLzxFrameSize - 1) / kLzxFrameSize;
  if (input.size() != frames * kLzxFrameSize) {
    padded_.assign(input.begin(), input.end());
    padded_.resize(frames * kLzxFrameSize);
    input = padded_;
  }
  const std::size_t raw_size = input.size() + kLzxMaxExpansion;
  result.bytes.resize(raw_size + BitWriter::kSlack);

  parser_.Parse(input, tokens_);
  LzxFrequencies frequencies;
  frequencies.Count(tokens_);
  const LzxTreeLengths nothing;
  const LzxBlock block(frequencies, static_cast<std::uint32_t>(input.size()), nothing);
  // One bit for the translation flag, and each frame may end with up to 15 bits of padding.
  if ((1 + block.bits() + 15 * frames) / 8 >= raw_size) return WriteRaw(input, result);

  BitWriter out(result.bytes.data());
  out.Put(kNoTranslation, 1);
  block.WriteHeader(nothing, out);
  const std::span<const LzxToken> tokens = tokens_;
  const std::size_t first = FirstFrameTokens(tokens);
  block.WriteTokens(tokens.first(first), out);
  out.AlignToWord();
  result.second_frame = frames > 1 ? out.size() : 0;
  block.WriteTokens(tokens.subspan(first), out);
  out.AlignToWord();
  result.bytes.resize(out.size());
}

}  // namespace scrivo::chm
