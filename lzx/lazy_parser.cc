#include "lzx/lazy_parser.h"

#include <algorithm>

namespace scrivo {
namespace {

// Positions of a chain that are looked at for one match. More make a better parse, but not one that
// tells more of what symbols will cost.
constexpr int kParserDepth = 4;

// With a match of this length in hand, the search for a better one at the next byte is cut to the
// given part: it seldom finds one.
constexpr std::uint32_t kParserGoodLength = 16;
constexpr int kParserShortDepth = 1;

// What things cost in bits before the codes are known; typical of pages of text and markup. Only
// their proportions matter, and one bit more or less changes the size by 0.1 %.
constexpr int kLiteralBits = 6;
constexpr int kMatchBits = 11;  // main and length symbol of a match with an explicit offset
constexpr int kRecentBits = 7;

int Gain(std::uint32_t length, int slot) {
  const int cost = slot < kLzxRecentOffsets ? kRecentBits : kMatchBits + LzxFooterBits(slot);
  return static_cast<int>(length) * kLiteralBits - cost;
}

}  // namespace

LazyParser::Candidate LazyParser::BestRecent(std::uint32_t position, std::uint32_t limit) const {
  Candidate best;
  for (int slot = 0; slot < kLzxRecentOffsets; ++slot) {
    const std::uint32_t distance = recent_[slot];
    if (distance > position) continue;
    const std::uint8_t* const here = interval_.data() + position;
    const std::uint32_t length = MatchLength(here, here - distance, limit);
    if (length >= kLzxMinMatch && length > best.length) {
      best = {length, distance, slot, Gain(length, slot)};
    }
  }
  return best;
}

LazyParser::Candidate LazyParser::BestAt(std::uint32_t position, std::uint32_t wanted) {
  const std::uint32_t frame_left =
      static_cast<std::uint32_t>(kLzxFrameSize - position % kLzxFrameSize);
  const std::uint32_t limit = std::min<std::uint32_t>(kLzxMaxMatch, frame_left);
  Candidate best = BestRecent(position, limit);
  if (best.length >= limit || limit < kLzxMinMatch) {
    return best;
  }
  const std::uint32_t shortest = std::max<std::uint32_t>({best.length, wanted, kLzxMinMatch});
  const int depth = wanted >= kParserGoodLength ? kParserShortDepth : kParserDepth;
  const Match match = finder_->Find(position, shortest, limit, depth);
  if (match.length == 0) return best;
  const auto recent = std::find(recent_.begin(), recent_.end(), match.distance);
  const int slot = recent == recent_.end() ? LzxPositionSlot(match.distance)
                                           : static_cast<int>(recent - recent_.begin());
  const int gain = Gain(match.length, slot);
  if (gain > best.gain) best = {match.length, match.distance, slot, gain};
  return best;
}

void LazyParser::Emit(const Candidate& match, std::vector<LzxToken>& tokens) {
  if (match.slot < kLzxRecentOffsets) {
    std::swap(recent_[0], recent_[match.slot]);
    tokens.push_back(LzxToken::Match(match.length, match.slot, 0));
    return;
  }
  recent_ = {match.distance, recent_[0], recent_[1]};
  tokens.push_back(LzxToken::Match(match.length, match.slot,
                                   match.distance + kLzxOffsetBias - kLzxSlotBase[match.slot]));
}

void LazyParser::Parse(std::span<const std::uint8_t> interval, const MatchFinder& finder,
                       std::vector<LzxToken>& tokens) {
  interval_ = interval;
  recent_ = kLzxInitialRecentOffsets;
  finder_ = &finder;
  tokens.clear();
  const std::uint32_t end = static_cast<std::uint32_t>(interval.size());
  std::uint32_t position = 0;
  Candidate current = BestAt(0, 0);
  while (position < end) {
    if (current.length == 0) {
      tokens.push_back(LzxToken::Literal(interval[position++]));
      if (position < end) current = BestAt(position, 0);
      continue;
    }
    if (current.length < kLzxMaxMatch && position + 1 < end) {
      const Candidate next = BestAt(position + 1, current.length);
      if (next.gain > current.gain) {
        tokens.push_back(LzxToken::Literal(interval[position++]));
        current = next;
        continue;
      }
    }
    Emit(current, tokens);
    position += current.length;
    if (position < end) current = BestAt(position, 0);
  }
}

}  // namespace scrivo
