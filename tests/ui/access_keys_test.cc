#include "ui/access_keys.h"

#include <gtest/gtest.h>

namespace scrivo {
namespace {

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
