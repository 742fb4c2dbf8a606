#include <gtest/gtest.h>

#include <algorithm>

#include "hhc/keyword_streams.h"
#include "hhc/keyword_tree.h"

namespace scrivo {
namespace {

std::vector<std::string> KeywordTexts(const KeywordTree& tree) {
  std::size_t too_long = 0;
  std::vector<std::string> texts;
  for (const Keyword& keyword : tree.Sorted(&too_long)) texts.push_back(keyword.text);
  return texts;
}

using List = std::vector<std::string>;

TEST(KeywordSortKey, PutsPunctuationThenDigitsThenLetters) {
  List words = {"zebra", "Apple", "apple", "\u00C4pfel", "10", "9",
                ".net",  "co-op", "coop",  "_x",         "Ap"};
  std::sort(words.begin(), words.end(), [](const std::string& a, const std::string& b) {
    return KeywordSortKey(a) < KeywordSortKey(b);
  });
  EXPECT_EQ(words, (List{"_x", ".net", "10", "9", "Ap", "\u00C4pfel", "apple", "Apple", "coop",
                         "co-op", "zebra"}));
}

TEST(KeywordSortKey, ComparesCaseAndMarksOnlyBetweenEqualLetters) {
  EXPECT_LT(KeywordSortKey("a"), KeywordSortKey("A"));
  EXPECT_LT(KeywordSortKey("Ab"), KeywordSortKey("ac"));
  EXPECT_LT(KeywordSortKey("e"), KeywordSortKey("\u00E9"));
  EXPECT_LT(KeywordSortKey("\u00E9a"), KeywordSortKey("eb"));
  EXPECT_LT(KeywordSortKey("\u0435"), KeywordSortKey("\u0436"));
  EXPECT_LT(KeywordSortKey("\u0451"), KeywordSortKey("\u0436"));  // io among the other letters
}

TEST(KeywordTree, SortsEachLevelByItself) {
  KeywordTree tree;
  tree.Add(0, "contents files", {1}, "");
  tree.Add(0, "Contents command", {2}, "");
  tree.Add(0, "contents", {3}, "");
  tree.Add(1, "zoo", {4}, "");
  tree.Add(1, "adding", {5}, "");
  EXPECT_EQ(KeywordTexts(tree), (List{"contents", "contents, adding", "contents, zoo",
                                      "Contents command", "contents files"}));
}

TEST(KeywordTree, MergesEqualKeywordsInOrderOfAppearance) {
  KeywordTree tree;
  tree.Add(0, "a", {7}, "");
  tree.Add(0, "b", {1}, "");
  tree.Add(0, "a", {3, 7}, "");
  tree.Add(0, "A", {9}, "");
  std::size_t too_long = 0;
  const auto sorted = tree.Sorted(&too_long);
  ASSERT_EQ(sorted.size(), 3u);
  EXPECT_EQ(sorted[0].text, "a");
  EXPECT_EQ(sorted[0].topics, (std::vector<std::uint32_t>{7, 3, 7}));
  EXPECT_EQ(sorted[1].text, "A");
}

TEST(KeywordTree, SplitsKeywordsOfPages) {
  KeywordTree tree;
  tree.AddJoined("a, b", 1);
  tree.AddJoined("a, c", 2);
  tree.AddJoined("a, c", 2);
  std::size_t too_long = 0;
  const auto sorted = tree.Sorted(&too_long);
  ASSERT_EQ(sorted.size(), 3u);
  EXPECT_EQ(sorted[0].topics, std::vector<std::uint32_t>{1});  // made for "a, b"
  EXPECT_EQ(sorted[2].text, "a, c");
  EXPECT_EQ(sorted[2].topics, std::vector<std::uint32_t>{2});
  EXPECT_EQ(sorted[2].level, 1);
  EXPECT_EQ(sorted[2].last_component, 3u);
}

TEST(KeywordTree, LeavesOutWhatNoBlockCanHold) {
  KeywordTree tree;
  tree.Add(0, std::string(600, 'x'), {1}, "");
  tree.Add(0, "fits", {1}, "");
  std::size_t too_long = 0;
  EXPECT_EQ(tree.Sorted(&too_long).size(), 1u);
  EXPECT_EQ(too_long, 1u);
}

TEST(KeywordTree, LeavesOutAReferenceLongerThanAnyKeyword) {
  KeywordTree tree;
  tree.Add(0, std::string(488, 'x'), {1}, std::string(489, 'y'));
  tree.Add(0, std::string(488, 'z'), {1}, std::string(488, 'y'));
  std::size_t too_long = 0;
  const auto sorted = tree.Sorted(&too_long);
  EXPECT_EQ(sorted.at(0).see_also, "");
  EXPECT_EQ(sorted.at(1).see_also.size(), 488u);
  std::vector<TruncatedKeyword> truncated;
  EXPECT_EQ(WriteKeywords(sorted, 0x409, &truncated).btree.size(), 76u + 3 * 0x800);
}

TEST(WriteKeywords, WritesOnlyAPropertyForNoKeywords) {
  std::vector<TruncatedKeyword> truncated;
  const KeywordStreams streams = WriteKeywords({}, 0x409, &truncated);
  EXPECT_TRUE(streams.btree.empty());
  EXPECT_EQ(streams.property, (std::vector<std::uint8_t>{0, 0, 0, 0}));
}

TEST(WriteKeywords, CutsTopicsThatDoNotFitAndSaysSo) {
  Keyword keyword;
  keyword.text = "often";
  keyword.topics.resize(1000);
  std::vector<TruncatedKeyword> truncated;
  const KeywordStreams streams = WriteKeywords({keyword}, 0x409, &truncated);
  EXPECT_EQ(streams.btree.size(), 76u + 0x800);
  ASSERT_EQ(truncated.size(), 1u);
  EXPECT_EQ(truncated[0].left_out, 1000 - (0x800 - 12 - 12 - 16 - 8) / 4u);
}

TEST(WriteKeywords, BuildsAsManyLevelsAsItTakes) {
  std::vector<Keyword> keywords(5000);
  for (std::size_t i = 0; i < keywords.size(); ++i) {
    keywords[i].text = std::string(200, 'k') + std::to_string(100000 + i);
    keywords[i].topics = {static_cast<std::uint32_t>(i)};
  }
  std::vector<TruncatedKeyword> truncated;
  const KeywordStreams streams = WriteKeywords(keywords, 0x409, &truncated);
  EXPECT_GT(streams.btree[0x2A], 3);
  EXPECT_EQ(streams.data.size(), 13u * 5000);
  EXPECT_EQ((streams.btree.size() - 76) % 0x800, 0u);
}

}  // namespace
}  // namespace scrivo
