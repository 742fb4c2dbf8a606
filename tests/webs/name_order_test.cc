#include "webs/name_order.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace scrivo {
namespace {

TEST(FoldCase, MakesLettersOfSeveralAlphabetsSmall) {
  EXPECT_EQ(FoldCase("Index.HTM 09[]"), "index.htm 09[]");
  EXPECT_EQ(FoldCase("\xC3\x84\xC3\x96\xC3\x97"), "\xC3\xA4\xC3\xB6\xC3\x97");  // Ä Ö ×
  EXPECT_EQ(FoldCase("\xC5\xA0\xC5\xBD\xC5\xB8"), "\xC5\xA1\xC5\xBE\xC3\xBF");  // Š Ž Ÿ
  EXPECT_EQ(FoldCase("\xCE\x91\xCE\xA3\xCF\x82"), "\xCE\xB1\xCF\x83\xCF\x83");  // Α Σ ς
  EXPECT_EQ(FoldCase("\xD0\x81\xD0\x90\xD0\xAF"), "\xD1\x91\xD0\xB0\xD1\x8F");  // Ё А Я
}

TEST(FoldCase, SmallLettersAndSignsStayAsTheyAre) {
  for (const char* text :
       {"\xC3\x9F", "\xC3\xB7", "\xC5\xA1", "\xD1\x8F", "\xE6\xBC\xA2", "\xC4\xB1"}) {
    EXPECT_EQ(FoldCase(text), text);
  }
}

TEST(FoldCase, BytesThatAreNoUtf8StayAsTheyAre) {
  EXPECT_EQ(FoldCase("A\xFC\xC4"
                     "B\xE2\x82"),
            "a\xFC\xC4"
            "b\xE2\x82");
}

TEST(PersonOrderKey, PutsTextsAsAPersonWould) {
  const std::vector<std::string> ordered = {"",
                                            "(draft)",
                                            "2 first",
                                            "10 last",
                                            "apple",
                                            "Banana",
                                            "Step 2",
                                            "step 002b",
                                            "Step 10",
                                            "Step 10a",
                                            "Step 99999999999999999999",
                                            "Step 100000000000000000000",
                                            "steps",
                                            "zebra"};
  std::vector<std::string> sorted(ordered.rbegin(), ordered.rend());
  std::sort(sorted.begin(), sorted.end(), [](const std::string& a, const std::string& b) {
    return PersonOrderKey(a) < PersonOrderKey(b);
  });
  EXPECT_EQ(sorted, ordered);
}

TEST(PersonOrderKey, LeadingZerosDoNotCount) {
  EXPECT_EQ(PersonOrderKey("Part 007"), PersonOrderKey("part 7"));
  EXPECT_EQ(PersonOrderKey("000"), PersonOrderKey("0"));
  EXPECT_LT(PersonOrderKey("0"), PersonOrderKey("1"));
}

}  // namespace
}  // namespace scrivo
