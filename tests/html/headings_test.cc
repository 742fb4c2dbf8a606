#include "html/headings.h"

#include <gtest/gtest.h>

namespace scrivo {
namespace {

using Texts = std::vector<std::string>;

// Headings as "level text #anchor".
Texts HeadingsIn(std::string_view html, int deepest = 6, int code_page = 1252) {
  HtmlTokenizer tokens(html);
  HeadingFinder finder(code_page, deepest);
  HtmlToken token;
  while (tokens.Next(&token)) finder.See(token);
  Texts headings;
  for (const PageHeading& heading : finder.Take()) {
    headings.push_back(std::to_string(heading.level) + " " + heading.text +
                       (heading.anchor.empty() ? "" : " #" + heading.anchor));
  }
  return headings;
}

TEST(HeadingFinder, FindsHeadingsWithTheirPlaces) {
  EXPECT_EQ(HeadingsIn("<h1> One <b>b</b>old\n&amp; more</h1><h2 id=two>Two<br>lines</h2>"
                       "<H3><a name=\"three\">Three</a> <a name=no></a></H3>"),
            (Texts{"1 One bold & more", "2 Two lines #two", "3 Three #three"}));
}

TEST(HeadingFinder, PartsWordsAtBlocksAndPicturesOnly) {
  EXPECT_EQ(HeadingsIn("<h1>Set<b>ting</b><!--x--> up<br>it<img src=a.gif>now<p>x</p>y</h1>"),
            (Texts{"1 Setting up it now x y"}));
}

TEST(HeadingFinder, FindsThemDownToTheLevelAskedFor) {
  const std::string page = "<h1>One</h1><h3>Three</h3><h4>Four</h4>";
  EXPECT_EQ(HeadingsIn(page, 3), (Texts{"1 One", "3 Three"}));
  EXPECT_EQ(HeadingsIn(page, 4), (Texts{"1 One", "3 Three", "4 Four"}));
}

TEST(HeadingFinder, LeavesOutThoseWithoutText) {
  EXPECT_EQ(HeadingsIn("<h1></h1><h2> \r\n&nbsp;</h2><h3>\xA0</h3><h1><img src=\"a.gif\"></h1>"),
            Texts{});
  EXPECT_EQ(HeadingsIn("<h3>\xC2\xA0</h3>", 3, 65001), Texts{});
}

TEST(HeadingFinder, EndsOneThatIsNeverClosedAtTheNextBlock) {
  EXPECT_EQ(HeadingsIn("<h1>One<h2>Two</h3><table><tr><td><h3>Three</td><td>No</td></table>"
                       "<h2>Four<ul><li>No</ul><h1>Five"),
            (Texts{"1 One", "2 Two", "3 Three", "2 Four", "1 Five"}));
}

TEST(HeadingFinder, IsInTheCodePageOfThePage) {
  EXPECT_EQ(HeadingsIn("<h1 id=\xC1>\xC1</h1>", 6, 20866), Texts{"1 \xD0\xB0 #\xD0\xB0"});
}

TEST(HeadingFinder, CutsALongOne) {
  EXPECT_EQ(HeadingsIn("<h1>" + std::string(100000, 'x'))[0].size(), 2 + 4096u);
}

}  // namespace
}  // namespace scrivo
