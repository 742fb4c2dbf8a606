#pragma once

// The near-optimal parse of an LZX interval: shortest paths over its positions, given what symbols
// cost.

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "lzx/match_finder.h"
#include "lzx/symbol_costs.h"
#include "lzx/token.h"

namespace scrivo {

// Keeps its tables (17 times the largest interval so far) for any number of intervals and serves
// one thread.
class NearOptimalParser {
 public:
  // Costs that hold for the matches and literals that begin at `start` or behind it.
  struct CostRange {
    std::uint32_t start;
    const LzxCosts* costs;
  };

  // Sets `tokens` to the cheapest parse of `interval`, with which `finder` was started, over the
  // matches that it finds, or nearly: only the cheapest path to each position is followed, with the
  // recent offsets that it leaves behind. No match reaches past the end of a frame. The first of
  // `ranges` starts at 0.
  //
  // A match of `long_match` bytes covers the positions within it: they are only looked at where
  // another match ends. Of a longer match only the whole and its beginnings up to this length are
  // weighed: a match that begins within it and reaches further may as well begin behind it.
  void Parse(std::span<const std::uint8_t> interval, MatchFinder& finder,
             std::span<const CostRange> ranges, std::uint32_t long_match,
             std::vector<LzxToken>& tokens);

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
  void Reach(std::uint32_t from, std::uint32_t first, std::uint32_t last, std::uint32_t cost,
             const std::uint16_t* lengths, Item offset);
  std::uint32_t TryRecent(std::uint32_t position, const LzxCosts& costs, std::uint32_t limit);
  std::uint32_t TryMatches(std::uint32_t position, const LzxCosts& costs,
                           std::span<const Match> matches, std::uint32_t longest);
  void Collect(std::vector<LzxToken>& tokens);

  std::span<const std::uint8_t> interval_;
  std::uint32_t long_match_ = 0;
  std::vector<Node> nodes_;               // by position
  std::vector<Recent> recent_;            // by position, of those that were looked at
  std::vector<std::uint8_t> ends_;        // by position: an item of some path ends there
  std::vector<std::uint32_t> positions_;  // on the cheapest path, from the end
};

}  // namespace scrivo
