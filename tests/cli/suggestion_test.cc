#include "cli/suggestion.h"

#include <gtest/gtest.h>

namespace scrivo {
namespace {

const std::vector<std::string> kCommands = {"compile", "project", "tree"};

TEST(Suggestion, FindsTheWordThatWasMistyped) {
  EXPECT_EQ(Suggest("compil", kCommands), "compile");
  EXPECT_EQ(Suggest("complie", kCommands), "compile") << "swapped letters";
  EXPECT_EQ(Suggest("projekt", kCommands), "project");
  EXPECT_EQ(Suggest("treee", kCommands), "tree");
}

TEST(Suggestion, CompletesAWordThatWasBegun) {
  EXPECT_EQ(Suggest("co", kCommands), "compile");
  EXPECT_EQ(Suggest("pro", {"project", "projection"}), "") << "which of them?";
}

TEST(Suggestion, PrefersTheNearestWord) {
  EXPECT_EQ(Suggest("--indxe", {"--no-index", "--index"}), "--index");
}

TEST(Suggestion, MakesNoneForAWordThatIsLikeNoOther) {
  EXPECT_EQ(Suggest("unpack", kCommands), "");
  EXPECT_EQ(Suggest("x", {}), "");
  EXPECT_EQ(Suggest(std::string(100000, 'c'), kCommands), "");
}

}  // namespace
}  // namespace scrivo
