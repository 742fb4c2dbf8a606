#include "ui/number_text.h"

#include <gtest/gtest.h>

#include <limits>

#include "system/error.h"

namespace scrivo {
namespace {

TEST(NumberTextTest, ASingleIsWrittenShortAndWithoutAnExponent) {
  EXPECT_EQ(TextOfSingle(4080), "4080");
  EXPECT_EQ(TextOfSingle(0), "0");
  EXPECT_EQ(TextOfSingle(-1234.5F), "-1234.5");
  EXPECT_EQ(TextOfSingle(0.1F), "0.1");
  EXPECT_EQ(TextOfSingle(1e6F), "1000000");
  EXPECT_EQ(TextOfSingle(1e-5F), "0.00001");
}

TEST(NumberTextTest, EverySingleReadsBackTheSame) {
  for (const float number :
       {6000.5F, -75.0F, 16777216.0F, 0.3333333F, std::numeric_limits<float>::max(),
        std::numeric_limits<float>::min(), std::numeric_limits<float>::denorm_min()}) {
    EXPECT_EQ(static_cast<float>(NumberFromText(TextOfSingle(number))), number);
  }
}

TEST(NumberTextTest, NumbersMayHaveSignFractionExponentAndBlanksAround) {
  EXPECT_EQ(NumberFromText("1"), 1);
  EXPECT_EQ(NumberFromText("1.0"), 1);
  EXPECT_EQ(NumberFromText(" +1 "), 1);
  EXPECT_EQ(NumberFromText("\t-1"), -1);
  EXPECT_EQ(NumberFromText("1e2"), 100);
  EXPECT_EQ(NumberFromText(".5"), 0.5);
}

TEST(NumberTextTest, AnyOtherTextIsATypeMismatchThatNamesIt) {
  for (const char* text :
       {"", " ", "yes", "1x", "1 2", "+", "+-1", "--1", "1,5", "0x1", "inf", "nan", "1e999"}) {
    try {
      NumberFromText(text);
      FAIL() << text;
    } catch (const Error& error) {
      EXPECT_EQ(error.number, kTypeMismatch) << text;
      EXPECT_NE(error.description.find("\"" + std::string(text) + "\""), std::string::npos);
    }
  }
}

}  // namespace
}  // namespace scrivo
