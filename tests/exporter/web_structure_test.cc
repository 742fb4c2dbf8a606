#include "exporter/web_structure.h"

#include <gtest/gtest.h>

namespace scrivo {
namespace {

// A help file's contents, and the files that they may lead to.
class WebStructureTest : public testing::Test {
 protected:
  WebStructureTest() {
    book.contents_name = "/toc.hhc";
    for (const std::string_view name : {"/index.htm", "/docs/a, b.htm", "/docs/c.htm"}) {
      entries.push_back({name, 0, 0, 0});
    }
    for (const Entry& entry : entries) files.push_back({&entry, std::string(entry.name.substr(1))});
  }

  void Add(int level, const std::string& name, const std::string& local = "",
           const std::string& url = "") {
    SitemapItem item;
    item.level = level;
    item.name = name;
    if (!local.empty() || !url.empty()) item.targets.push_back({"", local, url, ""});
    book.contents.items.push_back(item);
  }
  WebStructure Make() { return MakeWebStructure(book, BookTargets(files)); }

  HelpBook book;
  std::vector<Entry> entries;
  std::vector<PlannedFile> files;
};

TEST_F(WebStructureTest, WritesLevelByLevelAsTheHostDoes) {
  Add(0, "Home", "index.htm");
  Add(1, "A", "docs/a, b.htm");
  Add(2, "C", "docs\\c.htm");
  Add(1, "Heading");
  Add(0, "Back\\slash, too");
  const WebStructure made = Make();
  EXPECT_EQ(made.text,
            "3.0.0.507\r\n1005\r\n"
            "1000,index.htm,0,Home,0,0,1\r\n"
            "vti_globalpage:BW|true\r\n"
            "1001,,0,Back\\\\slash\\, too,0,0,0\r\n"
            "1002,docs/a\\, b.htm,0,A,1000,0,0\r\n"
            "1003,,0,Heading,1000,0,0\r\n"
            "1004,docs/c.htm,0,C,1002,0,0");
  EXPECT_EQ(made.entries, 5U);
  EXPECT_EQ(made.home, "Home");
  EXPECT_EQ(made.labels.at("docs/c.htm"), "C");
  EXPECT_EQ(made.anchors + made.outside + made.missing + made.merged, 0U);
}

TEST_F(WebStructureTest, KeepsAddressesOutsideAndCountsWhatIsLost) {
  Add(0, "Anchor", "docs/c.htm#part");
  Add(0, "Out", "http://example.org/?a,b");
  Add(0, "Out by URL", "", "https://example.org/");
  Add(0, "None", "none.htm");
  book.contents.items.emplace_back().merge = "other.chm::/toc.hhc";
  const WebStructure made = Make();
  EXPECT_EQ(made.text,
            "3.0.0.507\r\n1005\r\n1000,docs/c.htm,0,Anchor,0,0,0\r\n"
            "1001,http://example.org/?a\\,b,1,Out,0,0,0\r\n"
            "1002,https://example.org/,1,Out by URL,0,0,0\r\n1003,,0,None,0,0,0\r\n"
            "1004,,0,,0,0,0");
  EXPECT_EQ(made.anchors, 1U);
  EXPECT_EQ(made.outside, 2U);
  EXPECT_EQ(made.missing, 1U);
  EXPECT_EQ(made.merged, 1U);
}

TEST_F(WebStructureTest, TakesTheFirstTargetThatIsThere) {
  SitemapItem item;
  item.name = "Two";
  item.targets = {{"", "none.htm", "", ""}, {"", "docs/c.htm", "", ""}};
  book.contents.items.push_back(item);
  EXPECT_TRUE(Make().text.ends_with("\r\n1000,docs/c.htm,0,Two,0,0,0"));
}

TEST_F(WebStructureTest, KeepsLinesWhole) {
  Add(0, "two\r\nlines");
  EXPECT_TRUE(Make().text.ends_with("\r\n1000,,0,two  lines,0,0,0"));
}

TEST_F(WebStructureTest, WritesOnlyTheHeaderForNoContents) {
  EXPECT_EQ(Make().text, "3.0.0.507\r\n1000");
}

TEST(WebService, TellsCharsetLanguageAndTitle) {
  HelpBook book;
  book.title = "One \\ two";
  book.code_page = 936;
  book.language = 0x804;
  EXPECT_EQ(WebServiceText(book),
            "vti_encoding:SR|utf8-nl\r\nvti_defaultcharset:SR|gb2312\r\n"
            "vti_defaultlanguage:SR|zh-cn\r\nvti_title:SR|One \\\\ two\r\n"
            "vti_welcomenames:VX|index.htm index.html default.htm default.html welcome.htm "
            "welcome.html home.htm home.html\r\n");
}

TEST(WebService, WritesAPagesTitleAsHtml) {
  EXPECT_EQ(PageNotesText("A & <B>"),
            "vti_encoding:SR|utf8-nl\r\nvti_title:SR|A &amp; &lt;B&gt;\r\n");
}

}  // namespace
}  // namespace scrivo
