#include "cli/message_limit.h"

#include <gtest/gtest.h>

namespace scrivo {
namespace {

std::size_t ShownOf(std::size_t number, MessageLimit* limit, const std::string& before) {
  std::size_t shown = 0;
  for (std::size_t i = 0; i < number; ++i) {
    shown += limit->Shows(before + " \"" + std::to_string(i) + "-a\" on line " + std::to_string(i));
  }
  return shown;
}

TEST(MessageLimit, ShowsTheFirstOfEachKindAndCountsTheRest) {
  MessageLimit limit(false);
  EXPECT_EQ(ShownOf(20, &limit, "one"), 20u);
  EXPECT_EQ(ShownOf(23, &limit, "other"), 20u);
  EXPECT_EQ(limit.Sums(),
            (std::vector<std::string>{"and 3 more of the kind: other \"...\" on line ...\n"
                                      "To see them all, add --all-messages."}));
}

TEST(MessageLimit, ShowsAllWhenAsked) {
  MessageLimit limit(true);
  EXPECT_EQ(ShownOf(100, &limit, "one"), 100u);
  EXPECT_TRUE(limit.Sums().empty());
}

TEST(MessageLimit, TakesAQuoteThatIsNeverClosed) {
  MessageLimit limit(false);
  for (int i = 0; i < 21; ++i) limit.Shows("a \"" + std::string(1, static_cast<char>('a' + i)));
  limit.Shows("\"");
  EXPECT_EQ(limit.Sums(),
            (std::vector<std::string>{"and 1 more of the kind: a \"...\"\nTo see them all, add "
                                      "--all-messages."}));
}

}  // namespace
}  // namespace scrivo
