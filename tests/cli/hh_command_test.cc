#include "cli/hh_command.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace scrivo {
namespace {

using Words = std::vector<std::string>;

// Parses with just these files and folders there.
std::optional<DecompileArguments> Parse(const Words& arguments, const Words& files = {},
                                        const Words& folders = {}) {
  const auto in = [](const Words& words) {
    return [&words](const std::string& path) {
      return std::find(words.begin(), words.end(), path) != words.end();
    };
  };
  return ParseDecompileArguments(arguments, in(files), in(folders));
}

TEST(DecompileArgumentsTest, TakesFolderAndFile) {
  const auto parsed = Parse({"-decompile", "out", "help.chm"});
  ASSERT_TRUE(parsed);
  EXPECT_EQ(parsed->folder, "out");
  EXPECT_EQ(parsed->file, "help.chm");
  EXPECT_FALSE(parsed->verbose);
  EXPECT_FALSE(parsed->internal);
}

TEST(DecompileArgumentsTest, TakesTheSwitchInAnyCase) {
  EXPECT_TRUE(Parse({"-Decompile", "out", "help.chm"}));
  EXPECT_TRUE(Parse({"-DECOMPILE", "out", "help.chm"}));
}

TEST(DecompileArgumentsTest, TakesItsOwnSwitchesAroundThePaths) {
  for (const Words& words : {Words{"-v", "--internal", "-decompile", "out", "help.chm"},
                             Words{"-decompile", "-v", "--internal", "out", "help.chm"},
                             Words{"-decompile", "out", "help.chm", "--internal", "-v"}}) {
    const auto parsed = Parse(words);
    ASSERT_TRUE(parsed);
    EXPECT_TRUE(parsed->verbose);
    EXPECT_TRUE(parsed->internal);
    EXPECT_EQ(parsed->folder, "out");
    EXPECT_EQ(parsed->file, "help.chm");
  }
}

TEST(DecompileArgumentsTest, TakesPathsWithBlanksWhole) {
  const auto parsed = Parse({"-decompile", "my folder", "my help.chm"});
  ASSERT_TRUE(parsed);
  EXPECT_EQ(parsed->folder, "my folder");
  EXPECT_EQ(parsed->file, "my help.chm");
}

TEST(DecompileArgumentsTest, DropsQuotesThatCameThrough) {
  const auto parsed =
      Parse({"-decompile", "\"my", "folder\"", "\"my", "help.chm\""}, {"my help.chm"});
  ASSERT_TRUE(parsed);
  EXPECT_EQ(parsed->folder, "my folder");
  EXPECT_EQ(parsed->file, "my help.chm");
}

TEST(DecompileArgumentsTest, PutsTornPathsTogetherWhereTheFileIs) {
  const auto parsed =
      Parse({"-decompile", "C:\\My", "Out", "Folder", "C:\\My", "help.chm"}, {"C:\\My help.chm"});
  ASSERT_TRUE(parsed);
  EXPECT_EQ(parsed->folder, "C:\\My Out Folder");
  EXPECT_EQ(parsed->file, "C:\\My help.chm");
}

TEST(DecompileArgumentsTest, LetsTheFolderDecideBetweenTwoFiles) {
  const Words words = {"-decompile", "out", "my", "help.chm"};
  const Words files = {"my help.chm", "help.chm"};
  const auto parsed = Parse(words, files, {"out my"});
  ASSERT_TRUE(parsed);
  EXPECT_EQ(parsed->folder, "out my");
  EXPECT_EQ(parsed->file, "help.chm");
  EXPECT_FALSE(Parse(words, files, {}));
  EXPECT_FALSE(Parse(words, files, {"out", "out my"}));
}

TEST(DecompileArgumentsTest, RefusesAnythingElse) {
  for (const Words& words :
       {Words{}, Words{"-v"}, Words{"-decompile"}, Words{"-decompile", "out"}, Words{"help.chm"},
        Words{"--help"}, Words{"-mapid", "1", "help.chm"}, Words{"-decompile", "", "help.chm"},
        Words{"-decompile", "out", ""}, Words{"-decompile", "out", "my", "help.chm"},
        Words{"out", "help.chm", "-decompile"}}) {
    EXPECT_FALSE(Parse(words));
  }
}

}  // namespace
}  // namespace scrivo
