#include "lzx/match_finder.h"

#include <algorithm>

namespace scrivo {
namespace {

// Bytes that are loaded to hash a position, though fewer of them count.
constexpr std::uint32_t kLoadedBytes = 8;

// Positions of each chain that a search looks at. Few places share many bytes, so that the chains
// of more bytes may be followed further.
constexpr std::array<int, 4> kDepths = {6, 16, 32, 64};

// How far back two bytes are looked for. Among bytes of many kinds, as in pictures, they pay for
// the offset; beyond this they seldom do.
constexpr std::uint32_t kFarthestTwo = 2048;

// Spreads what differs over the upper bits by 2^64 over the golden ratio.
constexpr std::uint64_t Spread(std::uint64_t bytes) { return bytes * 0x9E3779B97F4A7C15u; }

// A hash of the next kBytes bytes; of more than 16, the first and the last eight stand for all.
template <int kBytes, int kHashBits>
std::size_t Hash(const std::uint8_t* at) {
  std::uint64_t bytes = LoadLe64(at);
  if constexpr (kBytes > 8) {
    bytes = Spread(bytes) ^ LoadLe64(at + kBytes - 8);
  } else {
    bytes <<= 64 - 8 * kBytes;
  }
  return static_cast<std::size_t>(Spread(bytes) >> (64 - kHashBits));
}

}  // namespace

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
    const auto next = static_cast<Place>(position + 1);
    (*links)[position] = static_cast<Place>(next - head);
    head = next;
  }
  for (std::size_t position = end; position < size; ++position) {
    (*links)[position] = static_cast<Place>(position + 1);
  }
}

void MatchFinder::Start(std::span<const std::uint8_t> interval) {
  const std::size_t size = interval.size();
  data_ = interval.data();
  last_hashed_ = static_cast<std::uint32_t>(size < kLoadedBytes ? 0 : size - kLoadedBytes + 1);
  Link<2, 12>(size, &nearest_[0]);
  Link<3, 13>(size, &nearest_[1]);
  Link<kChainedBytes[0], 15>(size, &chains_[0]);
  Link<kChainedBytes[1], 15>(size, &chains_[1]);
  Link<kChainedBytes[2], 15>(size, &chains_[2]);
  Link<kChainedBytes[3], 15>(size, &chains_[3]);
  StartOver();
}

void MatchFinder::StartOver() {
  found_at_ = 0;
  found_[last_found_].count = 0;
}

std::span<const Match> MatchFinder::FindEach(std::uint32_t position, std::uint32_t max_length) {
  const Found& before = found_[last_found_];
  last_found_ ^= 1;
  Match* const found = found_[last_found_].matches.data();
  Match* next = found;
  const std::uint32_t gone = position - found_at_;
  found_at_ = position;
  const std::uint8_t* const here = data_ + position;
  std::uint32_t best = 1;
  if (position < last_hashed_) {
    const std::uint32_t reach = std::min(position, kLzxMaxUsedDistance);
    const auto is_near = [](std::uint32_t distance, std::uint32_t farthest) {
      return distance - 1 < farthest;  // and not 0
    };
    const auto try_distance = [&](std::uint32_t distance) {
      const std::uint32_t length = MatchLength(here, here - distance, max_length);
      if (length <= best) return;
      *next++ = {length, distance};
      best = length;
    };
    const std::uint32_t two = nearest_[0][position];
    if (is_near(two, std::min(reach, kFarthestTwo))) try_distance(two);
    // A match of more bytes has the nearest place of three too.
    const std::uint32_t three = nearest_[1][position];
    if (best < 3) {
      best = 2;
      if (is_near(three, reach)) try_distance(three);
    }

    best = std::max(best, 3u);
    std::size_t chain = ChainFor(best);
    const Place* links = chains_[chain].data();
    std::uint32_t at = position - (chain == 0 ? 0 : next[-1].distance);
    int depth = kDepths[chain];
    while (best < max_length) {
      if (depth-- == 0) {
        // The next chain passes over what was looked at: nothing there has as many bytes.
        if (++chain == chains_.size()) break;
        links = chains_[chain].data();
        at = position;
        depth = kDepths[chain];
        continue;
      }
      at -= links[at];
      const std::uint32_t distance = position - at;
      if (!is_near(distance, reach)) break;
      // A longer match must agree in the byte after the best one so far.
      const std::uint8_t* const there = here - distance;
      if (LoadLe32(there + best - 3) != LoadLe32(here + best - 3)) continue;
      try_distance(distance);
      if (ChainFor(best) <= chain) continue;
      chain = ChainFor(best);
      links = chains_[chain].data();
      depth = kDepths[chain];
    }
  }
  // What was found a little before is here too, shorter by the bytes between.
  for (const Match& match : std::span(before.matches).first(before.count)) {
    if (match.length <= best + gone) continue;
    best = match.length - gone;
    *next++ = {best, match.distance};
  }
  found_[last_found_].count = static_cast<std::size_t>(next - found);
  return {found, next};
}

}  // namespace scrivo
