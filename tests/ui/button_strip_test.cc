#include "ui/button_strip.h"

#include <gtest/gtest.h>

#include "system/error.h"

namespace scrivo {
namespace {

TEST(ButtonStripTest, ItemsAreFoundByKeyAndKeepTheirOrder) {
  ButtonStrip strip({{.key = "SPACE"}, {.key = "OK", .caption = "Fine", .tip = "Goes on"}});
  EXPECT_EQ(strip["OK"].caption, "Fine");
  strip["OK"].enabled = false;
  ASSERT_EQ(strip.Items().size(), 2U);
  EXPECT_EQ(strip.Items()[0].key, "SPACE");
  EXPECT_TRUE(strip.Items()[0].enabled);
  EXPECT_FALSE(strip.Items()[1].enabled);
}

TEST(ButtonStripTest, AnUnknownKeyIsAnErrorThatNamesIt) {
  ButtonStrip strip({{.key = "OK"}});
  try {
    strip["ok"];
    FAIL() << "no error";
  } catch (const Error& error) {
    EXPECT_EQ(error.number, kInvalidProcedureCall);
    EXPECT_EQ(error.description, "There is no button \"ok\"");
  }
}

TEST(ButtonStripTest, TheWidthOfAllItemsCountsTheSpacer) {
  ButtonStrip strip({{.key = "SPACE", .width = 15}, {.key = "A", .width = 1000.5F}, {.key = "B"}});
  EXPECT_EQ(strip.ItemsWidth(), 1015.5F);
  EXPECT_EQ(ButtonStrip({}).ItemsWidth(), 0);
}

using Captions = std::vector<std::string>;

TEST(AccessKeys, EachCaptionTakesItsFirstLetterThatIsFree) {
  EXPECT_EQ(WithAccessKeys({"Help", "Home", "Hh"}), (Captions{"&Help", "H&ome", "Hh"}));
}

TEST(AccessKeys, CaseMakesNoDifference) {
  EXPECT_EQ(WithAccessKeys({"close", "Compile"}), (Captions{"&close", "C&ompile"}));
}

TEST(AccessKeys, OnlyLettersServe) {
  EXPECT_EQ(WithAccessKeys({"1 (a)", "", "..."}), (Captions{"1 (&a)", "", "..."}));
}

TEST(AccessKeys, AnAmpersandOfTheCaptionStaysVisible) {
  EXPECT_EQ(WithAccessKeys({"Pages & more"}), (Captions{"&Pages && more"}));
}

}  // namespace

}  // namespace scrivo
