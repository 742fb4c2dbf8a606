#include "lzx/match_finder.h"

#include <algorithm>
#include <array>
#include <bit>

#include "bytes/little_endian.h"

namespace scrivo {
namespace {

// Bytes that are loaded to hash a position, though fewer of them count.
constexpr std::uint32_t kLoadedBytes = 8;

// Positions of each chain that FindEach looks at, and the most when it knows a match of kGoodLength
// from a position before. Few places share many bytes, so the long chains may be followed far.
constexpr std::array<int, 3> kDepths = {8, 32, 256};
constexpr std::uint32_t kGoodLength = 32;
constexpr int kShortDepth = 32;

// Positions of chains that FindEach looks at in an interval for each of its bytes, before all
// searches get as short as can be: a bound for text of few different strings, whose chains are all
// long.
constexpr int kStepsPerByte = 32;
constexpr int kLeastDepth = 4;

// How far back two bytes are looked for. Among bytes of many kinds, as in pictures, they pay for
// the offset; beyond this they seldom do.
constexpr std::uint32_t kFarthestTwo = 2048;

// Spreads what differs over the upper bits by 2^64 over the golden ratio.
constexpr std::uint64_t Spread(std::uint64_t bytes) { return bytes * 0x9E3779B97F4A7C15u; }

// A hash of the next kBytes bytes: at most 8, or 16.
template <int kBytes, int kHashBits>
std::size_t Hash(const std::uint8_t* at) {
  std::uint64_t bytes = LoadLe64(at);
  if constexpr (kBytes > 8) {
    static_assert(kBytes == 16);
    bytes = Spread(bytes) ^ LoadLe64(at + 8);
  } else {
    bytes <<= 64 - 8 * kBytes;
  }
  return static_cast<std::size_t>(Spread(bytes) >> (64 - kHashBits));
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

MatchFinder::MatchFinder() : heads_(std::size_t{1} << kMaxHashBits) {}

template <int kBytes, int kHashBits>
void MatchFinder::Link(std::size_t size, Links* links) {
  static_assert(kHashBits <= kMaxHashBits);
  constexpr std::size_t kNeeded = std::max<std::size_t>(kBytes, kLoadedBytes);
  links->resize(size);
  Place* const heads = heads_.data();
  std::fill_n(heads, std::size_t{1} << kHashBits, Place{0});
  const std::size_t end = size < kNeeded ? 0 : size - kNeeded + 1;
  for (std::size_t position = 0; position < end; ++position) {
    Place& head = heads[Hash<kBytes, kHashBits>(data_ + position)];
    const auto place = static_cast<Place>(position);
    (*links)[position] = static_cast<Place>(place - head);
    head = place;
  }
  std::fill(links->begin() + static_cast<std::ptrdiff_t>(end), links->end(), Place{0});
}

void MatchFinder::Start(std::span<const std::uint8_t> interval) {
  const std::size_t size = interval.size();
  data_ = interval.data();
  last_hashed_ = static_cast<std::uint32_t>(size < kLoadedBytes ? 0 : size - kLoadedBytes + 1);
  Link<2, 12>(size, &nearest_[0]);
  Link<3, 13>(size, &nearest_[1]);
  Link<4, 14>(size, &nearest_[2]);
  Link<kChainedBytes[0], 15>(size, &chains_[0]);
  Link<kChainedBytes[1], 15>(size, &chains_[1]);
  Link<kChainedBytes[2], 15>(size, &chains_[2]);
}

void MatchFinder::StartOver() {
  steps_left_ = kStepsPerByte * static_cast<int>(nearest_[0].size());
  found_at_ = 0;
  found_.clear();
}

Match MatchFinder::Find(std::uint32_t position, std::uint32_t min_length, std::uint32_t max_length,
                        int depth) const {
  if (position >= last_hashed_) return {};
  const std::uint8_t* const here = data_ + position;
  Match best{min_length, 0};
  if (best.length >= max_length) return {};

  const std::uint32_t short_distance = nearest_[1][position];
  if (min_length < 3 && short_distance != 0 && short_distance <= kLzxMaxUsedDistance) {
    const std::uint32_t length = MatchLength(here, here - short_distance, max_length);
    if (length > best.length) best = {length, short_distance};
  }
  const Place* links = chains_[ChainFor(best.length)].data();
  std::uint32_t distance = 0;
  for (; depth > 0 && best.length < max_length; --depth) {
    const std::uint32_t more = links[position - distance];
    distance += more;
    if (more == 0 || distance > kLzxMaxUsedDistance) break;
    const std::uint8_t* const there = here - distance;
    // A longer match must agree in the byte after the best one so far, and in the hashed ones.
    if (there[best.length] == here[best.length] && LoadLe32(there) == LoadLe32(here)) {
      const std::uint32_t length = MatchLength(here, there, max_length);
      if (length <= best.length) continue;
      best = {length, distance};
      links = chains_[ChainFor(length)].data();
    }
  }
  return best.distance == 0 ? Match{} : best;
}

std::span<const Match> MatchFinder::FindEach(std::uint32_t position, std::uint32_t max_length) {
  std::swap(found_, found_before_);
  found_.clear();
  if (position >= last_hashed_) return {};
  const std::uint32_t gone = position - found_at_;
  found_at_ = position;
  const std::uint8_t* const here = data_ + position;
  std::uint32_t best = 1;
  const auto try_distance = [&](std::uint32_t distance) {
    const std::uint32_t length = MatchLength(here, here - distance, max_length);
    if (length <= best) return;
    found_.push_back({length, distance});
    best = length;
  };
  // A match that was found has the nearest place of fewer bytes too.
  for (std::uint32_t length = 2; length <= 4; ++length) {
    best = std::max(best, length - 1);
    if (best >= length || best >= max_length) continue;
    const std::uint32_t distance = nearest_[length - 2][position];
    if (distance != 0 && distance <= (length == 2 ? kFarthestTwo : kLzxMaxUsedDistance)) {
      try_distance(distance);
    }
  }

  const bool has_good = !found_before_.empty() && found_before_.back().length >= kGoodLength + gone;
  const int most = steps_left_ <= 0 ? kLeastDepth : has_good ? kShortDepth : kDepths.back();
  best = std::max(best, 3u);
  std::size_t chain = ChainFor(best);
  const Place* links = chains_[chain].data();
  std::uint32_t distance = chain == 0 ? 0 : found_.back().distance;
  int depth = std::min(kDepths[chain], most);
  while (best < max_length) {
    if (depth-- == 0) {
      // The next chain passes over what was looked at: nothing there has as many bytes.
      if (++chain == chains_.size()) break;
      links = chains_[chain].data();
      distance = 0;
      depth = std::min(kDepths[chain], most);
      continue;
    }
    --steps_left_;
    const std::uint32_t more = links[position - distance];
    distance += more;
    if (more == 0 || distance > kLzxMaxUsedDistance) break;
    const std::uint8_t* const there = here - distance;
    if (LoadLe32(there + best - 3) != LoadLe32(here + best - 3)) continue;
    try_distance(distance);
    if (ChainFor(best) <= chain) continue;
    chain = ChainFor(best);
    links = chains_[chain].data();
    depth = std::min(kDepths[chain], most);
  }
  // What was found a little before is here too, shorter by the bytes between.
  for (const Match& match : found_before_) {
    if (match.length <= best + gone) continue;
    best = match.length - gone;
    found_.push_back({best, match.distance});
  }
  return found_;
}

}  // namespace scrivo
