#pragma once

// The cheapest way through an LZX interval, given what symbols cost.

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "lzx/lzx_costs.h"
#include "lzx/lzx_token.h"
#include "lzx/match_finder.h"

namespace scrivo {

// Keeps its tables (17 times the largest interval so far) for any number of intervals and serves
// one thread.
class LzxPath {
 public:
  // Costs that hold for the matches and literals that begin at `start` or behind it.
  struct Stretch {
    std::uint32_t start;
    const LzxCosts* costs;
  };

  // Sets `tokens` to the cheapest parse of `interval` over the matches that `finder` finds, or
  // nearly: only the cheapest way to each place is followed, with the recent offsets that it leaves
  // behind, and inside long matches few places are looked at. No match reaches past the end of a
  // frame. The first of `stretches` starts at 0.
  void Find(std::span<const std::uint8_t> interval, MatchFinder& finder,
            std::span<const Stretch> stretches, std::vector<LzxToken>& tokens);

 private:
  // The last step of a way to a place: a length and above it a recent offset's slot, or
  // an explicit offset as formatted. Length 1 is a literal.
  using Step = std::uint32_t;
  // The cheapest way to a place so far: its cost above its last step, so that the cheaper way is
  // the smaller number.
  using Way = std::uint64_t;
  static Way WayOf(std::uint32_t cost, Step step) { return Way{cost} << 32 | step; }
  static std::uint32_t CostOf(Way way) { return static_cast<std::uint32_t>(way >> 32); }
  static Step StepOf(Way way) { return static_cast<Step>(way); }
  // Three recent offsets of 16 bits, the newest lowest.
  using Recent = std::uint64_t;

  static Recent After(Recent recent, Step step);
  void Reach(std::uint32_t from, std::uint32_t first, std::uint32_t last, std::uint32_t cost,
             const std::uint16_t* lengths, Step offset);
  std::uint32_t TryRecent(std::uint32_t position, const LzxCosts& costs, std::uint32_t limit);
  std::uint32_t TryMatches(std::uint32_t position, const LzxCosts& costs,
                           std::span<const Match> matches, std::uint32_t longest);
  void Collect(std::vector<LzxToken>& tokens);

  std::span<const std::uint8_t> interval_;
  std::vector<Way> ways_;              // by place
  std::vector<Recent> recent_;         // by place, of those that were looked at
  std::vector<std::uint8_t> ends_;     // by place: a match or a literal on the way there ends at it
  std::vector<std::uint32_t> places_;  // on the way, from the end
};

}  // namespace scrivo
