#include "html/bad_tags.h"

#include <gtest/gtest.h>

namespace scrivo {
namespace {

std::vector<BadTag> Find(std::string_view html) {
  HtmlTokenizer tokens(html);
  BadTagFinder finder(html);
  HtmlToken token;
  while (tokens.Next(&token)) finder.See(token);
  return finder.Take();
}

std::vector<std::string> Shown(std::string_view html, int code_page = 1252) {
  std::vector<std::string> shown;
  for (const BadTag& tag : Find(html)) shown.push_back(ShownTag(html, tag, code_page));
  return shown;
}

using Texts = std::vector<std::string>;

TEST(BadTags, HasNothingAgainstTagsCommentsAndDeclarations) {
  EXPECT_EQ(Shown("<!DOCTYPE html><p a='>'>x</p><!-- < > --><br/><my-tag><3></ x>"), Texts{});
  EXPECT_EQ(Shown("<script>if (a < b) c();</script><style>a<b</style>"), Texts{});
}

TEST(BadTags, FindsWhatDoesNotBeginLikeATagUpToTheNextEnd) {
  EXPECT_EQ(Shown("a < b <p>c <= d</p> <> <-x>"), (Texts{" b <p", "= d</p", "", "-x"}));
  EXPECT_EQ(Shown("<?xml version=\"1.0\"?><?php echo 1 ?>"),
            (Texts{"?xml version=\"1.0\"?", "?php echo 1 ?"}));
}

TEST(BadTags, TellsWhereTheyStandAndWhetherTheyAreClosed) {
  const auto tags = Find("ab< c>d <img src=\"x");
  ASSERT_EQ(tags.size(), 2u);
  EXPECT_EQ(tags[0].offset, 2u);
  EXPECT_TRUE(tags[0].is_closed);
  EXPECT_EQ(tags[1].offset, 8u);
  EXPECT_FALSE(tags[1].is_closed);
}

TEST(BadTags, KnowsATagThatEndsWithTheDocument) {
  EXPECT_EQ(Shown("<b>"), Texts{});
  EXPECT_EQ(Shown("<b"), Texts{"b"});
  EXPECT_EQ(Shown("</b "), Texts{"/b "});
  EXPECT_EQ(Shown("a <"), Texts{""});
}

TEST(BadTags, ShowsFiftyCharactersOnOneLine) {
  EXPECT_EQ(Shown("< a\r\nb\t>"), Texts{" a  b "});
  const std::string fifty(50, 'x');
  EXPECT_EQ(Shown("<=" + fifty.substr(1) + ">"), Texts{"=" + fifty.substr(1)});
  EXPECT_EQ(Shown("<=" + fifty + ">"), Texts{"=" + fifty.substr(1) + "..."});
  EXPECT_EQ(Shown("<\xE4>"), Texts{"\xC3\xA4"});
  std::string wide, shown;
  for (int i = 0; i < 60; ++i) wide += "\xE2\x82\xAC";
  EXPECT_EQ(Shown("<" + wide + ">", 65001), Texts{wide.substr(0, 150) + "..."});
}

TEST(BadTags, TakesTimeInProportionForHostileInput) {
  std::string html;
  for (int i = 0; i < 300000; ++i) html += "< ";
  EXPECT_EQ(Find(html).size(), 1u);
}

}  // namespace
}  // namespace scrivo
