#include "compiler/transcript.h"

#include <gtest/gtest.h>

#include <limits>

namespace scrivo {
namespace {

using Messages = std::vector<std::string>;

TEST(MessageScan, TakesTheTextAfterTheCodeToTheEndOfItsLine) {
  EXPECT_EQ(ScanForMessages("HHC5003: Error: Compilation failed.\r\nDone"),
            Messages{"Error: Compilation failed."});
}

TEST(MessageScan, KeepsTheOrderOfTheMessages) {
  EXPECT_EQ(ScanForMessages("HHC1: b\r\nplain\r\nHHC22: a\r\nHHC1: b\r\n"),
            (Messages{"b", "a", "b"}));
}

TEST(MessageScan, FindsNothingInAQuietTranscript) {
  EXPECT_EQ(ScanForMessages(""), Messages{});
  EXPECT_EQ(ScanForMessages("Created c:\\a.chm, 12 bytes\r\n"), Messages{});
}

TEST(MessageScan, IgnoresTheCaseOfTheLetters) {
  EXPECT_EQ(ScanForMessages("hhc1: a\r\nHhC2: b\r\nhHC3: c"), (Messages{"a", "b", "c"}));
}

TEST(MessageScan, FindsAMessageInTheMiddleOfALine) {
  EXPECT_EQ(ScanForMessages("page.htm : HHC3002: Warning: x"), Messages{"Warning: x"});
  EXPECT_EQ(ScanForMessages("HHHHC7: a"), Messages{"a"});
  EXPECT_EQ(ScanForMessages("HHHC HHC1 HHC12: a"), Messages{"a"});
}

TEST(MessageScan, NeedsADigitAColonAWhiteSpaceAndAText) {
  EXPECT_EQ(ScanForMessages("HHC: a"), Messages{});
  EXPECT_EQ(ScanForMessages("HHC12 : a"), Messages{});
  EXPECT_EQ(ScanForMessages("HHC12:a"), Messages{});
  EXPECT_EQ(ScanForMessages("HHC12: "), Messages{});
  EXPECT_EQ(ScanForMessages("HHC12:"), Messages{});
  EXPECT_EQ(ScanForMessages("HHC12"), Messages{});
  EXPECT_EQ(ScanForMessages("HHC"), Messages{});
  EXPECT_EQ(ScanForMessages("HH"), Messages{});
  EXPECT_EQ(ScanForMessages("HHW1: a"), Messages{});
}

TEST(MessageScan, TakesAnyOneWhiteSpaceAsSeparator) {
  for (const char separator : std::string(" \t\n\v\f\r")) {
    EXPECT_EQ(ScanForMessages(std::string("HHC1:") + separator + "a"), Messages{"a"})
        << static_cast<int>(separator);
  }
  EXPECT_EQ(ScanForMessages("HHC1:  a"), Messages{" a"});
}

TEST(MessageScan, LeavesTheLineEndOutOfTheText) {
  EXPECT_EQ(ScanForMessages("HHC1: a\r\n"), Messages{"a"});
  EXPECT_EQ(ScanForMessages("HHC1: a\n"), Messages{"a"});
  EXPECT_EQ(ScanForMessages("HHC1: a\rb\n"), Messages{"a"});
}

TEST(MessageScan, NeverJoinsTwoLinesIntoAMessage) {
  EXPECT_EQ(ScanForMessages("HHC1:\r\na\r\n"), Messages{});
  EXPECT_EQ(ScanForMessages("HHC1: \r\na\r\n"), Messages{});
  EXPECT_EQ(ScanForMessages("HHC1:\r\nHHC2: b\r\n"), Messages{"b"});
}

TEST(MessageScan, GivesAMarkInsideATextToThatText) {
  EXPECT_EQ(ScanForMessages("HHC1: see HHC2: b\r\nHHC3: c"), (Messages{"see HHC2: b", "c"}));
}

TEST(MessageScan, KeepsBytesThatAreNoText) {
  const std::string bytes("a\0\xFF\xE9", 4);
  EXPECT_EQ(ScanForMessages("HHC1: " + bytes + "\r\n"), Messages{bytes});
}

TEST(MessageScan, ReadsLongLinesWithoutGoingBack) {
  const std::string digits(1 << 20, '7');
  EXPECT_EQ(ScanForMessages("HHC" + digits + "HHC" + digits + ": a"), Messages{"a"});
  const std::string text(1 << 20, 'h');
  EXPECT_EQ(ScanForMessages(text + "hhc1: " + text), Messages{text});
}

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
