#include "chm/match_finder.h"

#include <algorithm>
#include <bit>

#include "chm/little_endian.h"

namespace scrivo::chm {
namespace {

constexpr std::uint32_t kHashedBytes = 4;

// 2^32 over the golden ratio spreads the bytes over the upper bits.
constexpr std::uint32_t kHashFactor = 0x9E3779B1;

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
      short_heads_(std::size_t{1} << kShortHashBits),
      chain_(std::size_t{1} << kLzxUsualWindowBits) {}

void MatchFinder::Start(std::span<const std::uint8_t> interval) {
  data_ = interval.data();
  last_hashed_ = static_cast<std::uint32_t>(
      interval.size() < kHashedBytes ? 0 : interval.size() - kHashedBytes + 1);
  std::fill(heads_.begin(), heads_.end(), Place{0});
  std::fill(short_heads_.begin(), short_heads_.end(), Place{0});
}

MatchFinder::Places MatchFinder::Enter(std::uint32_t position) {
  const std::uint32_t bytes = LoadLe32(data_ + position);
  Place& head = heads_[bytes * kHashFactor >> (32 - kHashBits)];
  Place& short_head = short_heads_[(bytes << 8) * kHashFactor >> (32 - kShortHashBits)];
  const Places found = {head, short_head};
  const Place place = static_cast<Place>(position);
  chain_[place] = head;
  head = short_head = place;
  return found;
}

Match MatchFinder::Find(std::uint32_t position, std::uint32_t min_length, std::uint32_t max_length,
                        int depth, std::uint32_t nice_length) {
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
  const std::uint32_t good_enough = std::min(nice_length, max_length);
  std::uint32_t before = 0;
  std::uint32_t distance = distance_to(found.newest);
  for (; depth > 0 && best.length < good_enough; --depth) {
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

}  // namespace scrivo::chm
