#pragma once

// The first parse of an LZX interval into literals and matches, by lazy matching.

#include <cstdint>
#include <span>
#include <vector>

#include "lzx/match_finder.h"
#include "lzx/token.h"

namespace scrivo {

// Weighs matches by the bits they are expected to save, and puts a match off for one byte when the
// next position saves more: a first parse, made without knowing what symbols will cost.
class LazyParser {
 public:
  // Sets `tokens` to the parse of `interval`, a whole number of frames, with which `finder` was
  // started. No match reaches past the
  // end of a frame or before the start of the interval. The recent offsets start as
  // kLzxInitialRecentOffsets.
  void Parse(std::span<const std::uint8_t> interval, const MatchFinder& finder,
             std::vector<LzxToken>& tokens);

 private:
  // A way to code what comes next; slot below kLzxRecentOffsets names a recent offset.
  struct Candidate {
    std::uint32_t length = 0;  // 0: nothing but a literal
    std::uint32_t distance = 0;
    int slot = 0;
    int gain = 0;  // bits saved over literals, about
  };

  // Matches with an explicit offset are only looked for if longer than `wanted`.
  Candidate BestAt(std::uint32_t position, std::uint32_t wanted);
  Candidate BestRecent(std::uint32_t position, std::uint32_t limit) const;
  void Emit(const Candidate& match, std::vector<LzxToken>& tokens);

  const MatchFinder* finder_ = nullptr;
  std::span<const std::uint8_t> interval_;
  RecentOffsets recent_{};
};

}  // namespace scrivo
