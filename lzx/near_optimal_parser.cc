#include "lzx/near_optimal_parser.h"

#include <algorithm>

#include "bytes/little_endian.h"

namespace scrivo {
namespace {

constexpr int kLengthBits = 9;
constexpr std::uint32_t kLengthMask = (1u << kLengthBits) - 1;
static_assert(kLzxMaxMatch <= kLengthMask);

// Costs more than any path.
constexpr std::uint64_t kUnreached = ~std::uint64_t{0};

// A place is passed over for this much at most: one bit, the least that a literal costs, so that
// the next place, if only a literal leads there, is passed over as well. With three quarters of it
// pages of a web site are 0.03 % smaller, and take a twentieth more time.
constexpr std::uint32_t kHardlyMore = 1u << kLzxCostUnitBits;

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
  if (offset == 0) return recent;
  const Recent newest = recent & kOffsetMask;
  const Recent second = recent >> kOffsetBits & kOffsetMask;
  const Recent third = recent >> 2 * kOffsetBits;
  if (offset == 1) return second | newest << kOffsetBits | third << 2 * kOffsetBits;
  if (offset == 2) return third | second << kOffsetBits | newest << 2 * kOffsetBits;
  return (offset - kLzxOffsetBias) | newest << kOffsetBits | second << 2 * kOffsetBits;
}

// Goes on from a place by `first` to `last` bytes, where that is cheaper than what is known.
inline void NearOptimalParser::Reach(std::uint32_t from, std::uint32_t first, std::uint32_t last,
                                     std::uint32_t cost, const std::uint16_t* lengths,
                                     Item offset) {
  Node* const nodes = nodes_.data() + from;
  ends_[from + last] = 1;
  if (last > effort_.long_match) {
    nodes[last] = std::min(nodes[last], NodeOf(cost + lengths[last], offset << kLengthBits | last));
    last = effort_.long_match;
  }
  for (std::uint32_t length = first; length <= last; ++length) {
    const Node node = NodeOf(cost + lengths[length], offset << kLengthBits | length);
    nodes[length] = std::min(nodes[length], node);
  }
}

// Tries the recent offsets, and gives the longest length, or 1. What one of them reaches, a later
// one or an explicit offset seldom reaches for less.
inline std::uint32_t NearOptimalParser::TryRecent(std::uint32_t place, const std::uint8_t* here,
                                                  std::uint32_t limit) {
  std::uint32_t longest = kLzxMinMatch - 1;
  Recent rest = recent_[place];
  for (Item slot = 0; slot < kLzxRecentOffsets; ++slot, rest >>= kOffsetBits) {
    const std::uint8_t* const there = here - (rest & kOffsetMask);
    if (LoadLe16(here) != LoadLe16(there)) continue;
    const std::uint32_t length = MatchLength(here, there, limit);
    if (length <= longest) continue;
    Reach(place, longest + 1, length, CostOf(nodes_[place]), costs_.match[slot].data(), slot);
    longest = length;
  }
  return longest;
}

// The same with explicit offsets, for lengths above `longest`.
inline std::uint32_t NearOptimalParser::TryMatches(std::uint32_t place,
                                                   std::span<const Match> matches,
                                                   std::uint32_t longest) {
  for (const Match match : matches) {
    if (match.length <= longest) continue;
    const auto slot = static_cast<std::size_t>(LzxPositionSlot(match.distance));
    Reach(place, longest + 1, match.length,
          CostOf(nodes_[place]) + LzxOffsetCost(static_cast<int>(slot)), costs_.match[slot].data(),
          match.distance + kLzxOffsetBias);
    longest = match.length;
  }
  return longest;
}

// Whether a place further on, or `covered`, is reached for hardly more than this one. What matches
// here matches there as well, only shorter, so that a search would seldom find a cheaper path.
inline bool NearOptimalParser::IsPassed(std::uint32_t place, std::uint32_t covered) const {
  const std::uint32_t limit = CostOf(nodes_[place]) + kHardlyMore;
  if (place < covered && CostOf(nodes_[covered]) <= limit) return true;
  for (std::uint32_t ahead = 1; ahead <= kAhead; ++ahead) {
    if (CostOf(nodes_[place + ahead]) <= limit) return true;
  }
  return false;
}

// Sets nodes_ for the segment that begins at `start`, and gives its size. recent_[0] has been set.
std::uint32_t NearOptimalParser::ParseSegment(std::uint32_t start, MatchFinder& finder) {
  nodes_.fill(kUnreached);
  ends_.fill(0);
  nodes_[0] = 0;
  const auto size = static_cast<std::uint32_t>(interval_.size() - start);
  std::uint32_t covered = 0;  // the end of the long match that reaches furthest
  std::uint32_t place = 0;
  for (; place < size; ++place) {
    if (place < covered) {
      const std::uint8_t* const end = std::find(&ends_[place], &ends_[covered], 1);
      place = static_cast<std::uint32_t>(end - ends_.data());
      if (place == size) break;
    }
    const Node node = nodes_[place];
    if (node == kUnreached) continue;
    if (place >= kMaxSegment || (place >= kMinSegment && place == covered)) break;
    if (place > 0) {
      if (!effort_.every_position && IsPassed(place, covered)) continue;
      recent_[place] = After(recent_[place - (ItemOf(node) & kLengthMask)], ItemOf(node));
    }
    const std::uint32_t position = start + place;
    const Node literal = NodeOf(CostOf(node) + costs_.literal[interval_[position]], 1);
    if (literal < nodes_[place + 1]) {
      nodes_[place + 1] = literal;
      // Behind the first byte of a long match, but not behind others, a literal may be the better
      // beginning.
      if (place + 1 >= covered) ends_[place + 1] = 1;
    }
    const std::uint32_t limit = std::min<std::uint32_t>(
        kLzxMaxMatch, static_cast<std::uint32_t>(kLzxFrameSize - position % kLzxFrameSize));
    // Nothing comes before the first byte.
    if (limit < kLzxMinMatch || position == 0) continue;
    std::uint32_t longest = TryRecent(place, interval_.data() + position, limit);
    if (longest < limit) longest = TryMatches(place, finder.FindEach(position, limit), longest);
    if (longest >= effort_.long_match) covered = std::max(covered, place + longest);
  }
  return place;
}

// The last item on the path to a place, which is at `here`.
LzxToken NearOptimalParser::TokenTo(std::uint32_t place, const std::uint8_t* here) const {
  const std::uint32_t length = ItemOf(nodes_[place]) & kLengthMask;
  const std::uint32_t offset = ItemOf(nodes_[place]) >> kLengthBits;
  if (length == 1) return LzxToken::Literal(here[-1]);
  if (offset < kLzxRecentOffsets) return LzxToken::Match(length, static_cast<int>(offset), 0);
  const int slot = LzxPositionSlot(offset - kLzxOffsetBias);
  return LzxToken::Match(length, slot, offset - kLzxSlotBase[static_cast<std::size_t>(slot)]);
}

void NearOptimalParser::Parse(std::span<const std::uint8_t> interval, MatchFinder& finder,
                              BlockSplitter& splitter, const LzxFrequencies& expected,
                              Effort effort, std::vector<LzxToken>& tokens) {
  effort_ = effort;
  interval_ = interval;
  frequencies_ = expected;
  recent_[0] = FirstRecent();
  finder.StartOver();
  splitter.Start();
  tokens.clear();
  std::size_t unit_start = 0;
  for (std::uint32_t start = 0; start < interval.size();) {
    costs_.Set(frequencies_);
    const std::uint32_t size = ParseSegment(start, finder);
    std::size_t counted = tokens.size();
    for (std::uint32_t place = size; place > 0; place -= ItemOf(nodes_[place]) & kLengthMask) {
      tokens.push_back(TokenTo(place, interval.data() + start + place));
    }
    std::reverse(tokens.begin() + static_cast<std::ptrdiff_t>(counted), tokens.end());
    const std::span all(tokens);
    for (; all.size() - unit_start >= BlockSplitter::kUnitTokens;
         unit_start += BlockSplitter::kUnitTokens) {
      if (!splitter.Add(all.subspan(unit_start, BlockSplitter::kUnitTokens))) continue;
      frequencies_ = expected;
      counted = unit_start;
    }
    frequencies_.Count(all.subspan(counted), kTokenWeight);
    const Item last = ItemOf(nodes_[size]);
    recent_[0] = After(recent_[size - (last & kLengthMask)], last);
    start += size;
  }
  if (unit_start < tokens.size()) splitter.Add(std::span(tokens).subspan(unit_start));
}

}  // namespace scrivo
