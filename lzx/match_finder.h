#pragma once

// Finds earlier occurrences of the bytes at a position of an LZX interval.

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "lzx/constants.h"

namespace scrivo {

// The largest distance of a match. The format allows window - 3, but 7-Zip takes wrong bytes for
// matches that far back; this one keeps even the longest match clear of what it overwrites in a
// decoder whose buffer is a ring of just the window.
inline constexpr std::uint32_t kLzxMaxUsedDistance = (1u << kLzxUsualWindowBits) - kLzxMaxMatch;

// An earlier occurrence: `length` bytes, `distance` bytes back. Length 0 means none.
struct Match {
  std::uint32_t length = 0;
  std::uint32_t distance = 0;
};

// Equal bytes at a and b, at most `limit`; both may be read that far.
std::uint32_t MatchLength(const std::uint8_t* a, const std::uint8_t* b, std::uint32_t limit);

// Links every position to the one before it with the same next bytes: for two, three and four
// bytes, where only the nearest is of use, and for each of kChainedBytes, where links are followed
// from one position to the next. It reaches back over one window, kLzxUsualWindowBits wide. It
// keeps its tables, 12 times the largest interval so far, for any number of intervals, and serves
// one thread.
class MatchFinder {
 public:
  MatchFinder();

  // Links the positions of a new interval, which must outlive its use.
  void Start(std::span<const std::uint8_t> interval);

  // Gives the longest match at `position` with at most `max_length` bytes (2 or more, and not past
  // the end), the nearest of equals, looking at no more than `depth` linked positions. Matches are
  // longer than `min_length`, which is 2 or more.
  Match Find(std::uint32_t position, std::uint32_t min_length, std::uint32_t max_length,
             int depth) const;

  // Lets FindEach begin again with any position.
  void StartOver();

  // Gives the matches at `position`, which is behind those of the calls since StartOver, of at most
  // `max_length` bytes: longer and longer ones, each the nearest that was found, of two bytes only
  // near by. They are good until the next call.
  std::span<const Match> FindEach(std::uint32_t position, std::uint32_t max_length);

 private:
  // Matches of fewer bytes are only seen in the last place with the same: further back they would
  // not pay for their offset. A search that has found a match goes on with the longest of these
  // that the match has: what a longer one would have to share, links in between do not.
  static constexpr std::array<std::uint32_t, 3> kChainedBytes = {5, 8, 16};
  static std::size_t ChainFor(std::uint32_t length) {
    return std::size_t{length >= kChainedBytes[1]} + std::size_t{length >= kChainedBytes[2]};
  }

  // Fewer bits make more chance hits; more take longer to clear for each interval.
  static constexpr int kMaxHashBits = 15;

  // A position modulo the window, or a distance, in half the memory of a whole one. A link from
  // before the window looks like one within it, and a table that was just cleared like one full of
  // position 0; neither does harm, since every match is checked against the bytes.
  using Place = std::uint16_t;
  static_assert(1 << kLzxUsualWindowBits == 1 << 8 * sizeof(Place));
  // By position, how far back the one before it is; 0: nowhere.
  using Links = std::vector<Place>;

  template <int kBytes, int kHashBits>
  void Link(std::size_t size, Links* links);

  const std::uint8_t* data_ = nullptr;
  std::uint32_t last_hashed_ = 0;  // positions from here on have too few bytes left to hash
  std::vector<Place> heads_;       // by hash, the last position so far
  std::array<Links, 3> nearest_;   // for two, three and four bytes
  std::array<Links, kChainedBytes.size()> chains_;

  // For FindEach.
  int steps_left_ = 0;
  std::uint32_t found_at_ = 0;
  std::vector<Match> found_, found_before_;
};

}  // namespace scrivo
