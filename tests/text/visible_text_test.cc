#include "text/visible_text.h"

#include <gtest/gtest.h>

namespace scrivo {
namespace {

TEST(VisibleText, ShowsControlCharactersByTheirBytes) {
  EXPECT_EQ(VisibleText("a\x1B[31mb\x07\x7F", ""), "a\\x1B[31mb\\x07\\x7F");
  EXPECT_EQ(VisibleText(std::string_view("\0\x1F", 2), ""), "\\x00\\x1F");
  EXPECT_EQ(VisibleText("\u009B2J\u0080\u009F\u00A0", ""),
            "\\xC2\\x9B2J\\xC2\\x80\\xC2\\x9F\u00A0");
}

TEST(VisibleText, KeepsWhatItIsToldTo) {
  EXPECT_EQ(VisibleText("a\tb\nc\rd", "\t\n"), "a\tb\nc\\x0Dd");
  EXPECT_EQ(VisibleText("a\tb\nc\rd", ""), "a\\x09b\\x0Ac\\x0Dd");
}

TEST(VisibleText, KeepsNamesInAnyLetters) {
  EXPECT_EQ(VisibleText("caf\u00E9 \u76EE\u0440 \U0001F600", ""),
            "caf\u00E9 \u76EE\u0440 \U0001F600");
  // Bytes that are no UTF-8 stay, except those that a terminal of single bytes would obey.
  EXPECT_EQ(VisibleText("caf\xE9.htm", ""), "caf\xE9.htm");
  EXPECT_EQ(VisibleText("\x9B"
                        "2J \xE3\x83",
                        ""),
            "\\x9B2J \xE3\\x83");
}

TEST(VisibleText, ShowsTextAsItIs) { EXPECT_EQ(VisibleText("\u202Eabc", ""), "\u202Eabc"); }

TEST(VisibleLine, IsOneLineThatReadsAsItIs) {
  EXPECT_EQ(VisibleLine("a\tb\nc"), "a\tb\\x0Ac");
  EXPECT_EQ(VisibleLine("\u202Egnp.exe\u2066"), "\\xE2\\x80\\xAEgnp.exe\\xE2\\x81\\xA6");
  // Joiners are part of the spelling of many languages.
  EXPECT_EQ(VisibleLine("\u0645\u06CC\u200C\u062E"), "\u0645\u06CC\u200C\u062E");
}

TEST(PrintableName, HasNothingHiddenInIt) {
  EXPECT_EQ(PrintableName("a\u200Bb\uFEFF\t\xE9"), "a\\xE2\\x80\\x8Bb\\xEF\\xBB\\xBF\\x09\\xE9");
}

}  // namespace
}  // namespace scrivo
