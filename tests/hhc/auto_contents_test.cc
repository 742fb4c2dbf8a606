#include "hhc/auto_contents.h"

#include <gtest/gtest.h>

#include "hhc/page_scan.h"
#include "project/sitemap.h"

namespace scrivo {
namespace {

using Texts = std::vector<std::string>;

// "level name -> local" of the items that a reader of contents files finds.
Texts Items(const AutoContents& contents, int code_page = 1252) {
  Texts items;
  std::size_t lost = 0;
  const std::string text = contents.Write(code_page, &lost);
  for (const SitemapItem& item : ReadSitemap(text, code_page).items) {
    items.push_back(std::to_string(item.level) + " " + item.name + " -> " +
                    item.targets.at(0).local);
  }
  return items;
}

TEST(AutoContents, NestsHeadingsByTheirLevel) {
  AutoContents contents(3);
  contents.AddPage("a.htm", {{1, "A", "x"}, {2, "B", "b"}, {3, "C", ""}, {2, "D", "d"}});
  contents.AddPage("sub/b.htm", {{1, "E", ""}});
  EXPECT_EQ(Items(contents), (Texts{"0 A -> a.htm", "1 B -> a.htm#b", "2 C -> a.htm",
                                    "1 D -> a.htm#d", "0 E -> sub/b.htm"}));
}

TEST(AutoContents, LeavesOutDeeperAndEmptyHeadings) {
  AutoContents contents(2);
  contents.AddPage("a.htm", {{3, "deep", ""}, {1, "", ""}});
  EXPECT_TRUE(contents.Empty());
  contents.AddPage("b.htm", {{3, "deep", ""}, {2, "B", "b"}});
  EXPECT_EQ(Items(contents), Texts{"0 B -> b.htm"});
}

TEST(AutoContents, CopesWithLevelsThatAreLeftOut) {
  AutoContents contents(6);
  contents.AddPage("a.htm", {{4, "A", ""}, {2, "B", ""}, {1, "C", ""}, {3, "D", ""}, {2, "E", ""}});
  EXPECT_EQ(Items(contents), (Texts{"0 A -> a.htm", "0 B -> a.htm", "0 C -> a.htm", "1 D -> a.htm",
                                    "1 E -> a.htm"}));
}

TEST(AutoContents, EscapesNamesAndAddressesAndCountsWhatTheCodePageLacks) {
  AutoContents contents(1);
  contents.AddPage("50% #1?.htm", {{1, "\"a\" & <b> \xC3\xA4 \xD0\x96", ""}});
  EXPECT_EQ(Items(contents), Texts{"0 \"a\" & <b> \xC3\xA4 \xD0\x96 -> 50%25 %231%3F.htm"});
  std::size_t lost = 1;
  EXPECT_NE(contents.Write(1252, &lost).find("&#1046;"), std::string::npos);
  EXPECT_EQ(lost, 2u);
}

TEST(ScanPage, FindsHeadingsWithTheirPlaces) {
  const PageScan page = ScanPage(
      "<h1> One <b>b</b>old\n&amp; more</h1><h2 id=two>Two<br>lines</h2>"
      "<H3><a name=\"three\">Three</a> <a name=no></a></H3><h4>open<h5>next",
      1252, nullptr);
  ASSERT_EQ(page.headings.size(), 5u);
  EXPECT_EQ(page.headings[0].text, "One bold & more");
  EXPECT_EQ(page.headings[0].anchor, "");
  EXPECT_EQ(page.headings[1].text, "Two lines");
  EXPECT_EQ(page.headings[1].anchor, "two");
  EXPECT_EQ(page.headings[2].level, 3);
  EXPECT_EQ(page.headings[2].anchor, "three");
  EXPECT_EQ(page.headings[3].text, "open");
  EXPECT_EQ(page.headings[4].text, "next");
}

}  // namespace
}  // namespace scrivo
