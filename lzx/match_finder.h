#pragma once

// Finds earlier occurrences of the bytes at a position of an LZX interval.

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "bytes/little_endian.h"
#include "lzx/constants.h"

namespace scrivo {

// The largest distance of a match. The format allows window - 3, but 7-Zip takes wrong bytes for
// matches that far back; this one keeps even the longest match clear of what it overwrites in a
// decoder whose buffer is a ring of just the window.
inline constexpr std::uint32_t kLzxMaxUsedDistance = (1u << kLzxUsualWindowBits) - kLzxMaxMatch;

// An earlier occurrence: `length` bytes, `distance` bytes back.
struct Match {
  std::uint32_t length;
  std::uint32_t distance;
};

// Equal bytes at a and b, at most `limit`; both may be read that far.
inline std::uint32_t MatchLength(const std::uint8_t* a, const std::uint8_t* b,
                                 std::uint32_t limit) {
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

// Links every position to the one before it with the same next bytes: for two and three bytes,
// where only the nearest is of use, and for each of kChainedBytes, where links are followed from
// one position to the next. It reaches back over one window, kLzxUsualWindowBits wide. It keeps its
// tables, 12 times the largest interval so far, for any number of intervals, and serves one thread.
class MatchFinder {
 public:
  MatchFinder();

  // Links the positions of a new interval, which must outlive its use.
  void Start(std::span<const std::uint8_t> interval);

  // Lets FindEach begin again with any position.
  void StartOver();

  // Gives the matches at `position`, which is behind those of the calls since StartOver, of at most
  // `max_length` bytes (up to kLzxMaxMatch): longer and longer ones, each the nearest that was
  // found, of two bytes only near by. They are good until the next call.
  std::span<const Match> FindEach(std::uint32_t position, std::uint32_t max_length);

 private:
  // A search that has found a match goes on with the longest of these that the match has: what a
  // longer one would have to share, links in between do not.
  static constexpr std::array<std::uint32_t, 4> kChainedBytes = {4, 8, 16, 32};
  static std::size_t ChainFor(std::uint32_t length) {
    return std::size_t{length >= kChainedBytes[1]} + std::size_t{length >= kChainedBytes[2]} +
           std::size_t{length >= kChainedBytes[3]};
  }

  // Fewer bits make more chance hits; more take longer to clear for each interval.
  static constexpr int kMaxHashBits = 15;

  // A position modulo the window, or a distance, in half the memory of a whole one. A link from
  // before the window looks like one within it, which does no harm, since every match is checked
  // against the bytes.
  using Place = std::uint16_t;
  static_assert(1 << kLzxUsualWindowBits == 1 << 8 * sizeof(Place));
  // By position, how far back the one before it is; with none, a place before the interval.
  using Links = std::vector<Place>;

  template <int kBytes, int kHashBits>
  void Link(std::size_t size, Links* links);

  const std::uint8_t* data_ = nullptr;
  std::uint32_t last_hashed_ = 0;  // positions from here on have too few bytes left to hash
  std::vector<Place> heads_;       // by hash, one more than the last position so far
  std::array<Links, 2> nearest_;   // for two and three bytes
  std::array<Links, kChainedBytes.size()> chains_;

  // What a call of FindEach found: one match of each length at most.
  struct Found {
    std::array<Match, kLzxMaxMatch> matches;
    std::size_t count = 0;
  };
  std::array<Found, 2> found_;  // by the last call and the one before, in turn
  std::size_t last_found_ = 0;
  std::uint32_t found_at_ = 0;  // the position of the last call
};

}  // namespace scrivo
