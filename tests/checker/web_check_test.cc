#include "checker/web_check.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "system/services.h"
#include "tests/doubles/test_folder.h"

namespace scrivo {
namespace {

class WebCheckTest : public testing::Test {
 protected:
  WebCheckTest() {
    TheServices() = CreateSystemServices();
    PutPage("index.htm", "Home", "start");
    PutPage("docs/a.htm", "A", "a");
  }
  ~WebCheckTest() override { TheServices() = {}; }

  void PutPage(const std::string& name, const std::string& title, const std::string& keywords,
               const std::string& body = "") {
    web.Write(name, "<html><head><meta charset=\"utf-8\"><title>" + title +
                        "</title><meta name=\"keywords\" content=\"" + keywords +
                        "\"></head><body>" + body + "</body></html>");
  }
  void PutStructure(const std::string& nodes) {
    web.Write("_vti_pvt/structure.cnf", "3.0.0.507\n2000\n" + nodes);
  }

  // The findings: "kind file:line text".
  std::vector<std::string> Check(int code_page = 1252) {
    WebProblemList problems;
    DiskWebOptions reading;
    reading.contents = contents;
    const auto opened = OpenDiskWeb(web.path().string(), reading, problems);
    CheckOptions options;
    options.help_code_page = code_page;
    const WebFindings found = CheckWeb(*opened, disk, PortablePath(web.path()), problems, options);
    pages = found.pages;
    entries = found.contents_entries;
    std::vector<std::string> lines;
    for (const Finding& finding : found.findings) {
      lines.push_back(std::string(FindingName(finding.kind)) + " " + finding.file + ":" +
                      std::to_string(finding.line) + " " + finding.text);
    }
    return lines;
  }

  const DiskFiles disk;
  ContentsChoice contents = ContentsChoice::kNavigation;
  TestFolder web;
  std::size_t pages = 0, entries = 0;
};

using Lines = std::vector<std::string>;

TEST_F(WebCheckTest, FindsNothingInAWebThatIsRight) {
  PutStructure("1000,index.htm,0,Home,0,1,0\n1001,docs/a.htm,0,A,1000,1,0\n1002,,0,More,0,1,0");
  EXPECT_EQ(Check(), Lines{});
  EXPECT_EQ(pages, 2U);
  EXPECT_EQ(entries, 3U);
}

TEST_F(WebCheckTest, FindsEntriesWithoutAPageAndPagesWithoutAnEntry) {
  PutStructure(
      "1000,index.htm,0,Home,0,1,0\n1001,docs/none.htm,0,None,1000,1,0\n"
      "1002,http://example.org/,1,Out,1000,1,0");
  EXPECT_EQ(
      Check(),
      (Lines{"contents-entry _vti_pvt/structure.cnf:5 the entry \"Out\" leads out of the web, "
             "to http://example.org/; contents made from a web lead to its own pages only",
             "contents-entry _vti_pvt/structure.cnf:4 the page \"docs/none.htm\" of the entry "
             "\"None\" does not exist",
             "page-outside-contents docs/a.htm:0 A"}));
}

TEST_F(WebCheckTest, AllowsFramesOutsideTheContents) {
  PutPage("index.htm", "Home", "start", "<iframe src=\"docs/a.htm\"></iframe>");
  PutStructure("1000,index.htm,0,Home,0,1,0");
  EXPECT_EQ(Check(), Lines{});
}

TEST_F(WebCheckTest, FindsPagesWithoutKeywordsOrThatNoneHasAny) {
  PutStructure("1000,index.htm,0,Home,0,1,0\n1001,docs/a.htm,0,A,1000,1,0");
  PutPage("docs/a.htm", "A", " ");
  EXPECT_EQ(Check(), Lines{"no-keywords docs/a.htm:0 has no keywords"});
  PutPage("index.htm", "Home", "");
  EXPECT_EQ(Check(),
            Lines{"no-keywords :0 no page has keywords, so the help file would have no index"});
}

TEST_F(WebCheckTest, FindsTextThatTheCodePageLacks) {
  PutStructure("1000,index.htm,0,Дом,0,1,0\n1001,docs/a.htm,0,A,1000,1,0\n1002,,0,Ж,0,1,0");
  PutPage("docs/a.htm", "A", "a,б");
  EXPECT_EQ(Check(),
            (Lines{"lost-text _vti_pvt/structure.cnf:3 code page 1252 lacks 3 characters (Дом) of: "
                   "label",
                   "lost-text _vti_pvt/structure.cnf:5 code page 1252 lacks 1 character (Ж) of: "
                   "label",
                   "lost-text docs/a.htm:0 code page 1252 lacks 1 character (б) of: keywords"}));
  EXPECT_EQ(Check(1251), Lines{});
}

TEST_F(WebCheckTest, FindsNoLostTextInAStructureThatIsNotUsed) {
  PutStructure("1000,index.htm,0,Дом,0,1,0");
  const std::filesystem::path folder = web.path() / std::filesystem::path(u8"Ж");
  std::filesystem::create_directory(folder);
  std::ofstream(folder / "b.htm") << "<title>B</title><meta name=keywords content=b>";
  contents = ContentsChoice::kFolders;
  EXPECT_EQ(Check(), Lines{"lost-text :0 code page 1252 lacks 1 character (Ж) of: folder name"});
}

TEST_F(WebCheckTest, FindsPagesThatOnlyAServerMakes) {
  PutStructure("1000,index.htm,0,Home,0,1,0\n1001,docs/a.htm,0,A,1000,1,0");
  web.Write("list.asp", "<%%>");
  EXPECT_EQ(Check(), Lines{"server-component list.asp:0 a page that only a web server can make"});
}

TEST_F(WebCheckTest, OrdersByKindAndTellsOnWhichPage) {
  PutStructure("1000,index.htm,0,Home,0,1,0\n1001,docs/a.htm,0,A,1000,1,0");
  PutPage("index.htm", "New Page 1", "start", "<img src=n.gif>\n<a href=n.htm>");
  PutPage("docs/a.htm", "A", "a", "<a href=n.htm>");
  EXPECT_EQ(Check(), (Lines{"missing-link index.htm:2 n.htm does not exist",
                            "missing-link docs/a.htm:1 n.htm does not exist",
                            "missing-picture index.htm:1 n.gif does not exist",
                            "no-title index.htm:1 still has the title of a new page, \"New Page "
                            "1\""}));
}

}  // namespace
}  // namespace scrivo
