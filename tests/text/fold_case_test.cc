#include "text/fold_case.h"

#include <gtest/gtest.h>

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

}  // namespace
}  // namespace scrivo
