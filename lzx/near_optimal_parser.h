#pragma once

// The near-optimal parse of an LZX interval: shortest paths over its positions, given what symbols
// cost.

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "lzx/block.h"
#include "lzx/block_splitter.h"
#include "lzx/match_finder.h"
#include "lzx/symbol_costs.h"
#include "lzx/token.h"

namespace scrivo {

// Keeps tables of 80 KB for any number of intervals and serves one thread.
class NearOptimalParser {
 public:
  struct Effort {
    // A match of so many bytes covers the positions within it: they are only looked at where
    // another match ends. Of a longer match only the whole and its beginnings up to this length are
    // weighed: a match that begins within it and reaches further may as well begin behind it.
    std::uint32_t long_match;
    // Otherwise, positions are passed over where one further on is reached for hardly more.
    bool every_position;
  };

  // Sets `tokens` to the cheapest parse of `interval`, with which `finder` was started, over the
  // matches that it finds, or nearly: only the cheapest path to each position is followed, with the
  // recent offsets that it leaves behind. No match reaches past the end of a frame.
  //
  // Symbols cost what follows from how often they occur: in the block so far, every token counting
  // kTokenWeight times, and in `expected`, which stands for what is to come. `splitter` says where
  // blocks end.
  //
  // `effort` says how closely it is looked at.
  void Parse(std::span<const std::uint8_t> interval, MatchFinder& finder, BlockSplitter& splitter,
             const LzxFrequencies& expected, Effort effort, std::vector<LzxToken>& tokens);

  static constexpr std::uint32_t kTokenWeight = 16;

 private:
  // The literal or match that reaches a position: its length and above it a recent offset's slot,
  // or an explicit offset as formatted. Length 1 is a literal.
  using Item = std::uint32_t;
  // The cheapest path to a position so far: its cost above its last item, so that the cheaper node
  // is the smaller number.
  using Node = std::uint64_t;
  static Node NodeOf(std::uint32_t cost, Item item) { return Node{cost} << 32 | item; }
  static std::uint32_t CostOf(Node node) { return static_cast<std::uint32_t>(node >> 32); }
  static Item ItemOf(Node node) { return static_cast<Item>(node); }
  // Three recent offsets of 16 bits, the newest lowest.
  using Recent = std::uint64_t;

  static Recent After(Recent recent, Item item);

  // An interval is parsed in segments, which end where all paths are made to meet: best at the end
  // of a long match, where most of them do, but after kMaxSegment bytes anywhere.
  static constexpr std::uint32_t kMinSegment = 2048;
  static constexpr std::uint32_t kMaxSegment = 4096;
  // How far behind a place another one is looked for that makes a search there needless.
  static constexpr std::uint32_t kAhead = 4;
  // Places in a segment and behind it, as far as a match may reach.
  static constexpr std::size_t kPlaces = kMaxSegment + kLzxMaxMatch + kAhead;

  std::uint32_t ParseSegment(std::uint32_t start, MatchFinder& finder);
  void Reach(std::uint32_t from, std::uint32_t first, std::uint32_t last, std::uint32_t cost,
             const std::uint16_t* lengths, Item offset);
  std::uint32_t TryRecent(std::uint32_t place, const std::uint8_t* here, std::uint32_t limit);
  std::uint32_t TryMatches(std::uint32_t place, std::span<const Match> matches,
                           std::uint32_t longest);
  bool IsPassed(std::uint32_t place, std::uint32_t covered) const;
  LzxToken TokenTo(std::uint32_t place, const std::uint8_t* here) const;

  std::span<const std::uint8_t> interval_;
  Effort effort_{};
  LzxFrequencies frequencies_;
  LzxCosts costs_;
  // By place in the segment.
  std::array<Node, kPlaces> nodes_;
  std::array<Recent, kPlaces> recent_;      // of those that were looked at
  std::array<std::uint8_t, kPlaces> ends_;  // 1: an item of some path ends there
};

}  // namespace scrivo
