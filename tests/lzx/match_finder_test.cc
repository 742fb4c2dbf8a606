#include "lzx/match_finder.h"

#include <gtest/gtest.h>

#include <vector>

namespace scrivo {
namespace {

// "ab", zeros, and "ab" again with other bytes behind it.
std::vector<std::uint8_t> PairAgainAfter(std::size_t distance) {
  std::vector<std::uint8_t> bytes(distance + 16);
  bytes[0] = bytes[distance] = 'a';
  bytes[1] = bytes[distance + 1] = 'b';
  for (std::uint8_t i = 2; i < 16; ++i) bytes[distance + i] = i;
  return bytes;
}

std::vector<Match> MatchesAt(const std::vector<std::uint8_t>& bytes, std::uint32_t position) {
  MatchFinder finder;
  finder.Start(bytes);
  finder.StartOver();
  const auto found = finder.FindEach(position, 16);
  return {found.begin(), found.end()};
}

TEST(MatchFinder, FindsTwoBytesNearBy) {
  const auto found = MatchesAt(PairAgainAfter(40), 40);
  ASSERT_EQ(found.size(), 1u);
  EXPECT_EQ(found[0].length, 2u);
  EXPECT_EQ(found[0].distance, 40u);
}

TEST(MatchFinder, DoesNotFindThemFarAway) {
  EXPECT_TRUE(MatchesAt(PairAgainAfter(3000), 3000).empty());
}

TEST(MatchFinder, FindsLongerOnesAnywhere) {
  std::vector<std::uint8_t> bytes = PairAgainAfter(3000);
  bytes[2] = bytes[3002];
  const auto found = MatchesAt(bytes, 3000);
  ASSERT_EQ(found.size(), 1u);
  EXPECT_EQ(found[0].length, 3u);
}

}  // namespace
}  // namespace scrivo
