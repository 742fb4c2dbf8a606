#include "webs/name_order.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace scrivo {
namespace {

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
