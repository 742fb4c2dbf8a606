#include "chm/match_finder.h"

#include <algorithm>
#include <bit>

#include "chm/little_endian.h"

namespace scrivo::chm {
namespace {

constexpr std::uint32_t kHashedBytes = 4;
constexpr std::uint32_t kMaxDistance = LzxMaxDistance(kLzxUsualWindowBits);

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
      chain_(kLzxUsualInterval) {}

void MatchFinder::Start(std::span<const std::uint8_t> interval) {
  data_ = interval.data();
  last_hashed_ = static_cast<std::uint32_t>(
      interval.size() < kHashedBytes ? 0 : interval.size() - kHashedBytes + 1);
  std::fill(heads_.begin(), heads_.end(), std::uint16_t{0});
  std::fill(short_heads_.begin(), short_heads_.end(), std::uint16_t{0});
}

std::uint32_t MatchFinder::Enter(std::uint32_t position, std::uint32_t& short_candidate) {
  const std::uint32_t bytes = LoadLe32(data_ + position);
  std::uint16_t& head = heads_[bytes * 0x9E3779B1u >> (32 - kHashBits)];
  std::uint16_t& short_head = short_heads_[(bytes << 8) * 0x9E3779B1u >> (32 - kShortHashBits)];
  const std::uint32_t candidate = head;
  short_candidate = short_head;
  chain_[position] = head;
  head = short_head = static_cast<std::uint16_t>(position + 1);
  return candidate;
}

Match MatchFinder::Find(std::uint32_t position, std::uint32_t min_length, std::uint32_t max_length,
                        int depth, std::uint32_t nice_length) {
  if (position >= last_hashed_) return {};
  std::uint32_t short_candidate;
  std::uint32_t candidate = Enter(position, short_candidate);
  const std::uint8_t* const here = data_ + position;
  Match best{min_length, 0};
  if (best.length >= max_length) return {};

  if (min_length < 3 && short_candidate != 0 && position + 1 - short_candidate <= kMaxDistance) {
    const std::uint32_t length = MatchLength(here, data_ + short_candidate - 1, max_length);
    if (length > best.length) best = {length, position + 1 - short_candidate};
  }
  const std::uint32_t good_enough = std::min(nice_length, max_length);
  for (; candidate != 0 && depth > 0 && best.length < good_enough; --depth) {
    const std::uint8_t* const there = data_ + candidate - 1;
    const std::uint32_t distance = position + 1 - candidate;
    if (distance > kMaxDistance) break;
    // A longer match must agree in the byte after the best one so far, and in the hashed ones.
    if (there[best.length] == here[best.length] && LoadLe32(there) == LoadLe32(here)) {
      const std::uint32_t length = MatchLength(here, there, max_length);
      if (length > best.length) best = {length, distance};
    }
    candidate = chain_[candidate - 1];
  }
  return best.distance == 0 ? Match{} : best;
}

void MatchFinder::Skip(std::uint32_t first, std::uint32_t end) {
  end = std::min(end, last_hashed_);
  std::uint32_t ignored;
  for (std::uint32_t position = first; position < end; ++position) Enter(position, ignored);
}

}  // namespace scrivo::chm
