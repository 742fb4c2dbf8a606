#include "lzx/near_optimal_parser.h"

#include <algorithm>

namespace scrivo {
namespace {

constexpr int kLengthBits = 9;
constexpr std::uint32_t kLengthMask = (1u << kLengthBits) - 1;
static_assert(kLzxMaxMatch <= kLengthMask);

constexpr std::uint64_t kUnreached = ~std::uint64_t{0};

constexpr int kOffsetBits = 16;
constexpr std::uint64_t kOffsetMask = (1u << kOffsetBits) - 1;

constexpr std::uint64_t FirstRecent() {
  std::uint64_t recent = 0;
  for (int slot = kLzxRecentOffsets; slot-- > 0;) {
    recent = recent << kOffsetBits | kLzxInitialRecentOffsets[static_cast<std::size_t>(slot)];
  }
  return recent;
}

}  // namespace

NearOptimalParser::Recent NearOptimalParser::After(Recent recent, Item item) {
  const std::uint32_t offset = item >> kLengthBits;
  if ((item & kLengthMask) == 1 || offset == 0) return recent;
  const Recent newest = recent & kOffsetMask;
  const Recent second = recent >> kOffsetBits & kOffsetMask;
  const Recent third = recent >> 2 * kOffsetBits;
  if (offset == 1) return second | newest << kOffsetBits | third << 2 * kOffsetBits;
  if (offset == 2) return third | second << kOffsetBits | newest << 2 * kOffsetBits;
  return (offset - kLzxOffsetBias) | newest << kOffsetBits | second << 2 * kOffsetBits;
}

// Goes on from a position by `first` to `last` bytes, where that is cheaper than what is known.
inline void NearOptimalParser::Reach(std::uint32_t from, std::uint32_t first, std::uint32_t last,
                                     std::uint32_t cost, const std::uint16_t* lengths,
                                     Item offset) {
  Node* const nodes = nodes_.data() + from;
  if (last > long_match_) {
    nodes[last] = std::min(nodes[last], NodeOf(cost + lengths[last], offset << kLengthBits | last));
    last = long_match_;
  }
  for (std::uint32_t length = first; length <= last; ++length) {
    const Node node = NodeOf(cost + lengths[length], offset << kLengthBits | length);
    nodes[length] = std::min(nodes[length], node);
  }
}

// Tries the recent offsets, and gives the longest length, or 1. What one of them reaches, a later
// one or an explicit offset seldom reaches for less.
std::uint32_t NearOptimalParser::TryRecent(std::uint32_t position, const LzxCosts& costs,
                                           std::uint32_t limit) {
  const std::uint8_t* const here = interval_.data() + position;
  std::uint32_t longest = kLzxMinMatch - 1;
  Recent rest = recent_[position];
  for (Item slot = 0; slot < kLzxRecentOffsets; ++slot, rest >>= kOffsetBits) {
    const auto distance = static_cast<std::uint32_t>(rest & kOffsetMask);
    if (distance > position || here[0] != here[-static_cast<std::ptrdiff_t>(distance)] ||
        here[1] != here[1 - static_cast<std::ptrdiff_t>(distance)]) {
      continue;
    }
    const std::uint32_t length = MatchLength(here, here - distance, limit);
    if (length <= longest) continue;
    Reach(position, longest + 1, length, CostOf(nodes_[position]), costs.match[slot].data(), slot);
    longest = length;
    ends_[position + length] = 1;
  }
  return longest;
}

// The same with explicit offsets, for lengths above `longest`.
std::uint32_t NearOptimalParser::TryMatches(std::uint32_t position, const LzxCosts& costs,
                                            std::span<const Match> matches, std::uint32_t longest) {
  for (const Match match : matches) {
    if (match.length <= longest) continue;
    const int slot = LzxPositionSlot(match.distance);
    Reach(position, longest + 1, match.length, CostOf(nodes_[position]) + LzxOffsetCost(slot),
          costs.match[static_cast<std::size_t>(slot)].data(), match.distance + kLzxOffsetBias);
    longest = match.length;
    ends_[position + match.length] = 1;
  }
  return longest;
}

void NearOptimalParser::Parse(std::span<const std::uint8_t> interval, MatchFinder& finder,
                              std::span<const CostRange> ranges, std::uint32_t long_match,
                              std::vector<LzxToken>& tokens) {
  long_match_ = long_match;
  interval_ = interval;
  const auto end = static_cast<std::uint32_t>(interval.size());
  nodes_.assign(end + 1, kUnreached);
  recent_.resize(end + 1);
  ends_.assign(end + 1, 0);
  nodes_[0] = 0;
  finder.StartOver();
  recent_[0] = FirstRecent();
  std::size_t range = 0;
  std::uint32_t covered = 0;  // the end of the long match that reaches furthest
  for (std::uint32_t position = 0; position < end; ++position) {
    while (range + 1 < ranges.size() && position >= ranges[range + 1].start) ++range;
    const LzxCosts& costs = *ranges[range].costs;
    if (position < covered && (!ends_[position] || nodes_[position] == kUnreached)) continue;
    if (position > 0) {
      const Item item = ItemOf(nodes_[position]);
      recent_[position] = After(recent_[position - (item & kLengthMask)], item);
    }
    const Node literal = NodeOf(CostOf(nodes_[position]) + costs.literal[interval[position]], 1);
    if (literal < nodes_[position + 1]) {
      nodes_[position + 1] = literal;
      // Behind the first byte of a long match, but not behind others, a literal may be the better
      // beginning.
      if (position + 1 >= covered) ends_[position + 1] = 1;
    }
    const std::uint32_t limit = std::min<std::uint32_t>(
        kLzxMaxMatch, static_cast<std::uint32_t>(kLzxFrameSize - position % kLzxFrameSize));
    if (limit < kLzxMinMatch) continue;
    std::uint32_t longest = TryRecent(position, costs, limit);
    if (longest < limit) {
      longest = TryMatches(position, costs, finder.FindEach(position, limit), longest);
    }
    if (longest >= long_match_) covered = std::max(covered, position + longest);
  }
  Collect(tokens);
}

void NearOptimalParser::Collect(std::vector<LzxToken>& tokens) {
  positions_.clear();
  for (auto place = static_cast<std::uint32_t>(interval_.size()); place > 0;
       place -= ItemOf(nodes_[place]) & kLengthMask) {
    positions_.push_back(place);
  }
  tokens.clear();
  for (std::size_t i = positions_.size(); i-- > 0;) {
    const std::uint32_t place = positions_[i];
    const std::uint32_t length = ItemOf(nodes_[place]) & kLengthMask;
    const std::uint32_t offset = ItemOf(nodes_[place]) >> kLengthBits;
    if (length == 1) {
      tokens.push_back(LzxToken::Literal(interval_[place - 1]));
    } else if (offset < kLzxRecentOffsets) {
      tokens.push_back(LzxToken::Match(length, static_cast<int>(offset), 0));
    } else {
      const int slot = LzxPositionSlot(offset - kLzxOffsetBias);
      tokens.push_back(
          LzxToken::Match(length, slot, offset - kLzxSlotBase[static_cast<std::size_t>(slot)]));
    }
  }
}

}  // namespace scrivo
