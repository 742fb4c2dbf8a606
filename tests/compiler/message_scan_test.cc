#include "compiler/message_scan.h"

#include <gtest/gtest.h>

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

}  // namespace
}  // namespace scrivo
