#include "lzx/match_finder.h"

#include <algorithm>
#include <bit>

#include "bytes/little_endian.h"

namespace scrivo {
namespace {

// Bytes that are loaded to hash a position, though fewer of them count.
constexpr std::uint32_t kLoadedBytes = 8;

// Positions of a chain that FindEach looks at, and how many when it knows a match of kGoodLength
// from a position before. On pages of a web site half as many of either make the file 0.1 % larger
// and save a fifteenth of the time.
constexpr int kDepth = 256;
constexpr std::uint32_t kGoodLength = 32;
constexpr int kShortDepth = 16;

// Positions of chains that FindEach looks at in an interval for each of its bytes, before all
// searches get short: a bound for text of few different strings, whose chains are all long.
constexpr int kStepsPerByte = 32;

// How far back two bytes are looked for. Among bytes of many kinds, as in pictures, they pay for
// the offset; beyond this they seldom do.
constexpr std::uint32_t kFarthestTwo = 2048;

// The lowest `count` bytes of `bytes`, spread over the upper bits by 2^64 over the golden ratio,
// of which the upper `bits` stay.
std::size_t Hash(std::uint64_t bytes, int count, int bits) {
  return static_cast<std::size_t>((bytes << (64 - 8 * count)) * 0x9E3779B97F4A7C15u >> (64 - bits));
}

}  // namespace

std::uint32_t MatchLength(const std::uint8_t* a, const std::uint8_t* b, std::uint32_t limit) {
  std::uint32_t length = 0;
  while (limit - length >= 8) {
    const std::uint64_t difference = LoadLe64(a + length) ^ LoadLe64(b + length);
    if (difference != 0) {
      return length + static_cast<std::uint32_t>(std::countr_zero(difference)) / 8;
    }
    length += 8;
  }
  while (length < limit && a[length] == b[length]) ++length;
  return length;
}

MatchFinder::MatchFinder()
    : heads_(std::size_t{1} << kHashBits),
      four_heads_(std::size_t{1} << kFourHashBits),
      short_heads_(std::size_t{1} << kShortHashBits),
      two_heads_(std::size_t{1} << kTwoHashBits),
      chain_(std::size_t{1} << kLzxUsualWindowBits) {}

void MatchFinder::Start(std::span<const std::uint8_t> interval) {
  data_ = interval.data();
  last_hashed_ = static_cast<std::uint32_t>(
      interval.size() < kLoadedBytes ? 0 : interval.size() - kLoadedBytes + 1);
  std::fill(heads_.begin(), heads_.end(), Place{0});
  std::fill(four_heads_.begin(), four_heads_.end(), Place{0});
  std::fill(short_heads_.begin(), short_heads_.end(), Place{0});
  std::fill(two_heads_.begin(), two_heads_.end(), Place{0});
  steps_left_ = kStepsPerByte * static_cast<int>(interval.size());
  entered_ = 0;
  found_at_ = 0;
  found_.clear();
}

MatchFinder::Places MatchFinder::Enter(std::uint32_t position) {
  const std::uint64_t bytes = LoadLe64(data_ + position);
  Place& head = heads_[Hash(bytes, kChainedBytes, kHashBits)];
  Place& short_head = short_heads_[Hash(bytes, kShortBytes, kShortHashBits)];
  Place& four_head = four_heads_[Hash(bytes, 4, kFourHashBits)];
  Place& two_head = two_heads_[Hash(bytes, 2, kTwoHashBits)];
  const Places found = {head, four_head, short_head, two_head};
  const Place place = static_cast<Place>(position);
  chain_[place] = head;
  head = four_head = short_head = two_head = place;
  return found;
}

Match MatchFinder::Find(std::uint32_t position, std::uint32_t min_length, std::uint32_t max_length,
                        int depth) {
  if (position >= last_hashed_) return {};
  const Places found = Enter(position);
  const std::uint8_t* const here = data_ + position;
  Match best{min_length, 0};
  if (best.length >= max_length) return {};
  const auto distance_to = [position](Place place) -> std::uint32_t {
    return static_cast<Place>(position - place);
  };

  const std::uint32_t short_distance = distance_to(found.newest_short);
  if (min_length < 3 && short_distance != 0 && short_distance <= kLzxMaxUsedDistance) {
    const std::uint32_t length = MatchLength(here, here - short_distance, max_length);
    if (length > best.length) best = {length, short_distance};
  }
  std::uint32_t before = 0;
  std::uint32_t distance = distance_to(found.newest);
  for (; depth > 0 && best.length < max_length; --depth) {
    // Distances rise along a chain, until it goes on with something from before the window.
    if (distance <= before || distance > kLzxMaxUsedDistance) break;
    const std::uint8_t* const there = here - distance;
    // A longer match must agree in the byte after the best one so far, and in the hashed ones.
    if (there[best.length] == here[best.length] && LoadLe32(there) == LoadLe32(here)) {
      const std::uint32_t length = MatchLength(here, there, max_length);
      if (length > best.length) best = {length, distance};
    }
    before = distance;
    distance = distance_to(chain_[static_cast<Place>(position - distance)]);
  }
  return best.distance == 0 ? Match{} : best;
}

void MatchFinder::Skip(std::uint32_t first, std::uint32_t end) {
  end = std::min(end, last_hashed_);
  for (std::uint32_t position = first; position < end; ++position) Enter(position);
}

std::span<const Match> MatchFinder::FindEach(std::uint32_t position, std::uint32_t max_length) {
  Skip(entered_, position);
  entered_ = position + 1;
  std::swap(found_, found_before_);
  found_.clear();
  if (position >= last_hashed_) return {};
  const std::uint32_t gone = position - found_at_;
  found_at_ = position;
  const Places places = Enter(position);
  const std::uint8_t* const here = data_ + position;
  std::uint32_t best = 1;
  const auto distance_to = [position](Place place) -> std::uint32_t {
    return static_cast<Place>(position - place);
  };
  const auto try_distance = [&](std::uint32_t distance) {
    const std::uint32_t length = MatchLength(here, here - distance, max_length);
    if (length <= best) return;
    found_.push_back({length, distance});
    best = length;
  };
  const std::uint32_t two = distance_to(places.newest_two);
  if (two != 0 && two <= kFarthestTwo) try_distance(two);
  best = std::max(best, 2u);
  const std::uint32_t shortest = distance_to(places.newest_short);
  if (shortest != 0 && shortest <= kLzxMaxUsedDistance && best < max_length) try_distance(shortest);
  const std::uint32_t four = distance_to(places.newest_four);
  if (four > shortest && four <= kLzxMaxUsedDistance && best < max_length) try_distance(four);

  // What was found a little before is here too, shorter by the bytes between.
  const std::uint32_t inherited = found_before_.empty() || found_before_.back().length <= gone
                                      ? 0
                                      : found_before_.back().length - gone;
  best = std::max(best, 3u);
  const bool is_short = inherited >= kGoodLength || steps_left_ < kDepth;
  int depth = is_short ? kShortDepth : kDepth;
  steps_left_ -= std::min(steps_left_, depth);
  std::uint32_t before = 0;
  std::uint32_t distance = distance_to(places.newest);
  for (; depth > 0 && best < max_length; --depth) {
    if (distance <= before || distance > kLzxMaxUsedDistance) break;
    const std::uint8_t* const there = here - distance;
    if (LoadLe32(there + best - 3) == LoadLe32(here + best - 3)) try_distance(distance);
    before = distance;
    distance = distance_to(chain_[static_cast<Place>(position - distance)]);
  }
  steps_left_ += depth;
  for (const Match& match : found_before_) {
    if (match.length <= best + gone) continue;
    best = match.length - gone;
    found_.push_back({best, match.distance});
  }
  return found_;
}

}  // namespace scrivo
