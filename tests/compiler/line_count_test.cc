#include "compiler/line_count.h"

#include <gtest/gtest.h>

#include <limits>

namespace scrivo {
namespace {

std::int64_t Count(PathStyle style, std::initializer_list<std::string_view> pieces) {
  LineCount count(style);
  for (const std::string_view piece : pieces) count.Add(piece);
  return count.Breaks();
}

TEST(LineCount, CountsPairsOfCarriageReturnAndLineFeed) {
  EXPECT_EQ(Count(PathStyle::kWindows, {}), 0);
  EXPECT_EQ(Count(PathStyle::kWindows, {"a"}), 0);
  EXPECT_EQ(Count(PathStyle::kWindows, {"a\r\nb\r\n\r\n"}), 3);
}

TEST(LineCount, CountsAPairSplitBetweenTwoPiecesOnce) {
  EXPECT_EQ(Count(PathStyle::kWindows, {"a\r", "\nb"}), 1);
  EXPECT_EQ(Count(PathStyle::kWindows, {"a\r", "", "\nb"}), 1);
  EXPECT_EQ(Count(PathStyle::kPosix, {"a\r", "\nb"}), 1);
}

TEST(LineCount, CountsNoLoneCharacterOfThePairInTheWindowsStyle) {
  EXPECT_EQ(Count(PathStyle::kWindows, {"a\rb\nc\n\r"}), 0);
  EXPECT_EQ(Count(PathStyle::kWindows, {"a\r", "b\n"}), 0);
}

TEST(LineCount, TakesALineFeedAsLineBreakInThePosixStyle) {
  EXPECT_EQ(Count(PathStyle::kPosix, {"a\nb\r\nc", "\n"}), 3);
}

TEST(EstimateProgress, ComparesLinesWithFilesAndTenLinesOfFraming) {
  EXPECT_EQ(EstimateProgress(50, 90), 50);
  EXPECT_EQ(EstimateProgress(0, 90), 0);
  EXPECT_EQ(EstimateProgress(1, 0), 10);
}

TEST(EstimateProgress, StaysAt99OnceThereAreMoreLinesThanExpected) {
  EXPECT_EQ(EstimateProgress(25, 0), 99);
  EXPECT_EQ(EstimateProgress(101, 90), 99);
}

TEST(EstimateProgress, ReachesExactly100WhenLinesAndExpectationAgree) {
  EXPECT_EQ(EstimateProgress(10, 0), 100);
  EXPECT_EQ(EstimateProgress(201, 190), 100) << "100.5 is rounded before it is held";
}

TEST(EstimateProgress, RoundsHalvesToTheEvenNumber) {
  EXPECT_EQ(EstimateProgress(1, 190), 0);
  EXPECT_EQ(EstimateProgress(3, 190), 2);
  EXPECT_EQ(EstimateProgress(5, 190), 2);
  EXPECT_EQ(EstimateProgress(7, 190), 4);
}

TEST(EstimateProgress, TakesTheLargestNumbers) {
  constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
  EXPECT_EQ(EstimateProgress(0, kMost), 0);
  EXPECT_EQ(EstimateProgress(kMost, kMost), 100);
}

TEST(EstimateProgress, IsZeroWithNothingToDivideBy) {
  EXPECT_EQ(EstimateProgress(5, -10), 0);
  EXPECT_EQ(EstimateProgress(5, -1000), 0);
}

}  // namespace
}  // namespace scrivo
