#pragma once

// Finds earlier occurrences of the bytes at a position of an LZX interval.

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

// Chains the positions whose next five bytes hash alike, newest first, and keeps the last position
// of every hash of two, of three and of four bytes. It reaches back over one window,
// kLzxUsualWindowBits wide. It holds its tables (about 0.2 MiB) for any number of intervals and
// serves one thread.
class MatchFinder {
 public:
  MatchFinder();

  // Starts with a new interval, which must outlive its use.
  void Start(std::span<const std::uint8_t> interval);

  // Enters `position` into the tables and gives the longest match there with at most `max_length`
  // bytes (2 or more, and not past the end), the nearest of equals, looking at no more than `depth`
  // chained positions. Matches are longer than `min_length`, which is 2 or more. Positions must be
  // entered one after another, each once.
  Match Find(std::uint32_t position, std::uint32_t min_length, std::uint32_t max_length, int depth);

  // Enters positions first to end - 1 without looking for matches.
  void Skip(std::uint32_t first, std::uint32_t end);

  // Enters positions up to and including `position`, where nothing was entered behind it yet, and
  // gives the matches there of at most `max_length` bytes: longer and longer ones, each the nearest
  // that was found, of two bytes only near by. They are good until the next call.
  std::span<const Match> FindEach(std::uint32_t position, std::uint32_t max_length);

 private:
  // Matches of fewer than kChainedBytes bytes are only seen in the last place with the same
  // kShortBytes: further back they would not pay for their offset. Chains over four bytes are a
  // tenth slower and gain nothing.
  static constexpr int kChainedBytes = 5;
  static constexpr int kShortBytes = 3;

  // Fewer bits make more chance hits; more take longer to clear for each interval.
  static constexpr int kHashBits = 15;
  static constexpr int kFourHashBits = 14;
  static constexpr int kShortHashBits = 13;
  static constexpr int kTwoHashBits = 12;

  // A position as the tables hold it: modulo the window, in half the memory of a whole one. An
  // entry from before the window looks like one within it, and a table that was just cleared like
  // one full of position 0; neither does harm, since every match is checked against the bytes.
  using Place = std::uint16_t;
  static_assert(1 << kLzxUsualWindowBits == 1 << 8 * sizeof(Place));

  struct Places {
    Place newest;  // start of the chain
    Place newest_four;
    Place newest_short;  // for three bytes
    Place newest_two;
  };
  Places Enter(std::uint32_t position);

  const std::uint8_t* data_ = nullptr;
  std::uint32_t last_hashed_ = 0;  // positions from here on have too few bytes left to hash
  std::vector<Place> heads_;
  std::vector<Place> four_heads_;
  std::vector<Place> short_heads_;
  std::vector<Place> two_heads_;
  std::vector<Place> chain_;  // by place, the one before it in its chain

  // For FindEach.
  int steps_left_ = 0;
  std::uint32_t entered_ = 0;  // positions before this one
  std::uint32_t found_at_ = 0;
  std::vector<Match> found_, found_before_;
};

}  // namespace scrivo
