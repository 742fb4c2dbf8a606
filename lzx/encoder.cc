#include "lzx/encoder.h"

#include <algorithm>
#include <array>

namespace scrivo {
namespace {

// Translation of machine code, which help files never use.
constexpr std::uint32_t kNoTranslation = 0;

constexpr std::uint32_t kMaxFramePadding = 15;

// Longer matches searched to their ends make pages of a web site 0.2 % smaller at most, and cost up
// to half the time more; of a single frame, which takes no time that anybody would notice, every
// position is looked at.
constexpr NearOptimalParser::Effort kUsualEffort = {20, false};
constexpr NearOptimalParser::Effort kEffortOnOneFrame = {kLzxMaxMatch, true};

// What an interval's symbols may turn out to be, in a few tokens' weight, so that what they really
// are soon prevails. Pages like these numbers; other input gets over them. Only their proportions
// matter, and one more or less in two changes the size by 0.1 %.
LzxFrequencies ExpectedFrequencies(std::span<const std::uint8_t> input) {
  LzxFrequencies expected;
  constexpr std::size_t kSampled = 64;  // one byte of so many
  for (std::size_t byte = 0; byte < kLzxLiterals; ++byte) expected.main[byte] = 32;
  for (std::size_t i = 0; i < input.size(); i += kSampled) ++expected.main[input[i]];
  // Short matches are the most, and far places more than near ones.
  std::uint32_t* header = &expected.main[kLzxLiterals];
  for (std::uint32_t slot = 0; slot < kLzxUsualSlots; ++slot) {
    for (std::uint32_t rest = 0; rest < kLzxLengthHeaders; ++rest) {
      *header++ = slot < kLzxRecentOffsets ? 40 / (rest + 2) : 8 * slot / (rest + 10);
    }
  }
  for (std::uint32_t rest = 0; rest < kLzxLengthSymbols; ++rest) {
    expected.length[rest] = 1 + 64 / (rest + 1);
  }
  return expected;
}

// The whole interval as one uncompressed block.
void WriteRaw(std::span<const std::uint8_t> input, LzxInterval& result) {
  BitWriter out(result.bytes.data());
  out.Put(kNoTranslation, 1);
  out.Put(static_cast<std::uint32_t>(LzxBlockType::kUncompressed), kLzxBlockTypeBits);
  out.Put(static_cast<std::uint32_t>(input.size()), kLzxBlockSizeBits);
  out.AlignToWord();
  for (const std::uint32_t offset : kLzxInitialRecentOffsets) {
    out.PutBytes(std::array<std::uint8_t, 4>{static_cast<std::uint8_t>(offset), 0, 0, 0});
  }
  // The first frame includes the header.
  for (std::size_t frame = kLzxFrameSize; frame < input.size(); frame += kLzxFrameSize) {
    result.frames.push_back(out.Size() + frame);
  }
  out.PutBytes(input);
  result.bytes.resize(out.Size());
}

// Writes the tokens of blocks one after another, and pads at the ends of frames on the way.
class IntervalWriter {
 public:
  IntervalWriter(std::size_t size, LzxInterval& result)
      : size_(size), result_(result), out_(result.bytes.data()) {
    out_.Put(kNoTranslation, 1);
  }

  void Write(const LzxBlock& block) {
    block.WriteHeader(previous_, out_);
    previous_ = block.Lengths();
    std::span<const LzxToken> tokens = block.Tokens();
    while (!tokens.empty()) {
      const std::size_t frame_end = result_.frames.size() * kLzxFrameSize;
      std::size_t count = 0;
      while (position_ < frame_end && count < tokens.size()) position_ += tokens[count++].Size();
      block.WriteTokens(tokens.first(count), out_);
      tokens = tokens.subspan(count);
      if (position_ == frame_end) EndFrame();
    }
  }

  void Finish() { result_.bytes.resize(out_.Size()); }

 private:
  void EndFrame() {
    out_.AlignToWord();
    if (position_ < size_) result_.frames.push_back(out_.Size());
  }

  std::size_t size_;
  std::size_t position_ = 0;  // in the interval
  LzxInterval& result_;
  BitWriter out_;
  LzxTreeLengths previous_;
};

}  // namespace

LzxEncoder::LzxEncoder(std::size_t max_interval) {
  tokens_.reserve(max_interval);
  padded_.reserve(max_interval);
}

// Makes the blocks, and gives the bits they take.
std::uint64_t LzxEncoder::Cut() {
  blocks_.clear();
  LzxTreeLengths previous;
  std::uint64_t bits = 0;
  std::size_t start = 0;
  for (const std::size_t end : ends_) {
    blocks_.emplace_back(std::span(tokens_).subspan(start, end - start), previous);
    previous = blocks_.back().Lengths();
    bits += blocks_.back().Bits();
    start = end;
  }
  return bits;
}

// Cuts the tokens where the splitter says, or nowhere if that takes less.
std::uint64_t LzxEncoder::CutBest() {
  ends_ = splitter_.Ends();
  const std::uint64_t bits = Cut();
  if (ends_.size() == 1) return bits;
  ends_.assign(1, tokens_.size());
  const std::uint64_t bits_of_one = Cut();
  if (bits_of_one < bits) return bits_of_one;
  ends_ = splitter_.Ends();
  return bits;
}

// A small help file is a single frame, of which a second search makes up to three percent less.
void LzxEncoder::Refine(std::span<const std::uint8_t> frame) {
  const std::uint64_t bits = CutBest();
  LzxFrequencies frequencies;
  frequencies.Count(tokens_, NearOptimalParser::kTokenWeight);
  std::swap(tokens_, other_tokens_);
  std::vector<std::size_t> other_ends = ends_;
  near_optimal_parser_.Parse(frame, finder_, splitter_, frequencies, kEffortOnOneFrame, tokens_);
  if (CutBest() < bits) return;
  std::swap(tokens_, other_tokens_);
  std::swap(ends_, other_ends);
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
  result.frames.assign(1, 0);

  finder_.Start(input);
  near_optimal_parser_.Parse(input, finder_, splitter_, ExpectedFrequencies(input),
                             frames == 1 ? kEffortOnOneFrame : kUsualEffort, tokens_);
  ends_ = splitter_.Ends();
  if (frames == 1) Refine(input);
  const std::uint64_t bits = 1 + frames * kMaxFramePadding + Cut();
  if (bits / 8 >= raw_size) return WriteRaw(input, result);

  IntervalWriter writer(input.size(), result);
  for (const LzxBlock& block : blocks_) writer.Write(block);
  writer.Finish();
}

}  // namespace scrivo
