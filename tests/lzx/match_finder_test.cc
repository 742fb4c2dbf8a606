#include "lzx/match_finder.h"

#include <gtest/gtest.h>

#include <numeric>
#include <string>
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

// Pieces of a sentence, the longer ones further back, each with another end.
TEST(MatchFinder, FindsLongerMatchesFurtherBack) {
  const std::string sentence = "the quick brown fox jumps over the lazy dog";
  const std::vector<std::size_t> lengths = {40, 33, 20, 12, 6, 3};
  std::string text = "#";
  for (std::size_t i = 0; i < lengths.size(); ++i) {
    text += sentence.substr(0, lengths[i]) + static_cast<char>('0' + i) + std::string(50, '-');
  }
  const std::size_t position = text.size();
  text += sentence + std::string(16, '+');
  MatchFinder finder;
  const std::vector<std::uint8_t> bytes(text.begin(), text.end());
  finder.Start(bytes);
  std::vector<std::size_t> found;
  for (const Match match : finder.FindEach(static_cast<std::uint32_t>(position), 43)) {
    EXPECT_EQ(text.substr(position - match.distance, match.length),
              sentence.substr(0, match.length));
    found.push_back(match.length);
  }
  EXPECT_EQ(found, std::vector<std::size_t>(lengths.rbegin(), lengths.rend()));
}

TEST(MatchFinder, FindsNothingInBytesThatAreNew) {
  std::vector<std::uint8_t> bytes(256);
  std::iota(bytes.begin(), bytes.end(), std::uint8_t{0});
  MatchFinder finder;
  finder.Start(bytes);
  for (std::uint32_t position = 1; position + 1 < bytes.size(); ++position) {
    EXPECT_TRUE(finder.FindEach(position, 2).empty()) << position;
  }
}

// The last bytes are too few to look for, and the match is known from the position before.
TEST(MatchFinder, GoesOnWithAMatchAtTheEnd) {
  const std::string text = "#abcdefghijkl-abcdefghijkl";
  const std::vector<std::uint8_t> bytes(text.begin(), text.end());
  MatchFinder finder;
  finder.Start(bytes);
  for (std::uint32_t position = 14; position < bytes.size() - 1; ++position) {
    const auto left = static_cast<std::uint32_t>(bytes.size() - position);
    const auto found = finder.FindEach(position, left);
    ASSERT_FALSE(found.empty()) << position;
    EXPECT_EQ(found.back().length, left);
    EXPECT_EQ(found.back().distance, 13u);
  }
}

}  // namespace
}  // namespace scrivo
