#include "checker/page_check.h"

#include <gtest/gtest.h>

#include "tests/doubles/test_folder.h"
#include "text/code_page.h"

namespace scrivo {
namespace {

class PageCheckTest : public testing::Test {
 protected:
  PageCheckTest() {
    web.Write("index.htm", "x");
    web.Write("docs/Guide.htm", "x");
    web.Write("docs/a b.htm", "x");
    web.Write("docs/index.htm", "x");
    web.Write("docs/list.asp", "x");
    web.Write("images/logo.gif", "x");
  }

  // The findings about docs/page.htm: "kind:line subject", and the texts in `texts`.
  std::vector<std::string> Check(const std::string& page, int default_code_page = 1252) {
    ProjectTree tree(disk, PortablePath(web.path()), 1252, false);
    const PageFindings found =
        CheckPage(page, "docs/page.htm", default_code_page, tree, welcome_names);
    std::vector<std::string> lines;
    texts.clear();
    for (const Finding& finding : found.findings) {
      EXPECT_EQ(finding.file, "docs/page.htm");
      lines.push_back(std::string(FindingName(finding.kind)) + ":" + std::to_string(finding.line) +
                      " " + finding.subject);
      texts.push_back(finding.text);
    }
    frames = found.frames;
    return lines;
  }
  // The same for what stands in a body, on line 2.
  std::vector<std::string> CheckBody(const std::string& body) {
    return Check("<html><head><title>T</title></head><body>\n" + body + "</body></html>");
  }

  const DiskFiles disk;
  TestFolder web;
  std::vector<std::string> welcome_names = {"index.htm"};
  std::vector<std::string> texts, frames;
};

using Lines = std::vector<std::string>;

TEST_F(PageCheckTest, FindsNothingInAPageThatIsRight) {
  EXPECT_EQ(
      CheckBody("<a href=\"Guide.htm#top\">a</a><a href=\"a%20b.htm?x=1\">b</a>"
                "<a href=\"../index.htm\">c</a><a href=\"/docs/Guide.htm\">d</a>"
                "<a href=\"#here\">e</a><a href=\"http://example.org/none.htm\">f</a>"
                "<a href=\"mailto:a@example.org\">g</a><a href=\"javascript:go('n.htm')\">h</a>"
                "<a href=\"//example.org/n\">i</a><a href=\"?page=2\">j</a>"
                "<a href=\"<%=next%>\">k</a>"
                "<img src=\"../images/logo.gif\">"),
      Lines{});
}

TEST_F(PageCheckTest, FindsMissingFilesOncePerPageWithTheirLine) {
  EXPECT_EQ(CheckBody("<a href=\"none.htm#x\">a</a>\n<a href=none.htm#x>again</a>\n"
                      "<img src=\"../images/none.gif\"><frame src=\"none2.htm\">"),
            (Lines{"missing-link:2 none.htm#x", "missing-picture:4 ../images/none.gif",
                   "missing-link:4 none2.htm"}));
  EXPECT_EQ(texts[0], "none.htm#x does not exist");
}

TEST_F(PageCheckTest, FindsLinksInOtherCapitalLetters) {
  EXPECT_EQ(CheckBody("<a href=\"guide.HTM\">a</a><img src=\"../Images/logo.gif\">"),
            (Lines{"link-case:2 guide.HTM", "link-case:2 ../Images/logo.gif"}));
  EXPECT_EQ(texts[0], "guide.HTM is the file docs/Guide.htm");
}

TEST_F(PageCheckTest, TellsFoldersAndTheAuthorsDiskFromMissingFiles) {
  EXPECT_EQ(CheckBody("<a href=\"../docs/\">a</a><a href=\"file:///C:/webs/a.htm\">b</a>"
                      "<img src=\"D:\\pictures\\b.gif\"><a href=\"../images/\">c</a>"),
            (Lines{"missing-link:2 ../docs/", "missing-link:2 file:///C:/webs/a.htm",
                   "missing-picture:2 D:\\pictures\\b.gif", "missing-link:2 ../images/"}));
  EXPECT_EQ(texts[0], "../docs/ is a folder; only a server finds its page docs/index.htm");
  EXPECT_NE(texts[1].find("the author's own disk"), std::string::npos);
  EXPECT_NE(texts[2].find("the author's own disk"), std::string::npos);
  EXPECT_EQ(texts[3], "../images/ does not exist");
  welcome_names = {"guide.htm", "index.htm"};
  CheckBody("<a href=\"../docs/\">a</a>");
  EXPECT_EQ(texts[0], "../docs/ is a folder; only a server finds its page docs/Guide.htm");
}

TEST_F(PageCheckTest, FollowsTheBaseOfAPage) {
  EXPECT_EQ(Check("<title>T</title><base href=\"http://example.org/\"><a href=none.htm>"), Lines{});
  EXPECT_EQ(Check("<title>T</title><base href=\"../index.htm\"><a href=docs/Guide.htm>"), Lines{});
}

TEST_F(PageCheckTest, FindsWhatNeedsAServer) {
  EXPECT_EQ(CheckBody("<a href=\"list.asp\">a</a>\n<a href=\"/cgi-bin/x.pl?a\">b</a>\n"
                      "<form action=\"--WEBBOT-SELF--\"></form>\n<!--webbot bot=\"HitCounter\" "
                      "startspan --><img src=\"../_vti_bin/fpcount.exe/?Page=a\"><!--webbot "
                      "bot=\"HitCounter\" endspan -->"),
            (Lines{"server-component:2 list.asp", "server-component:3 /cgi-bin/x.pl?a",
                   "server-component:4 form", "server-component:5 hit counter"}));
}

TEST_F(PageCheckTest, FindsMissingTitlesAndThoseOfNewPages) {
  EXPECT_EQ(Check("<html><title> </title></html>"), Lines{"no-title:0 "});
  EXPECT_EQ(Check("<html>\n<title>new page 12</title></html>"), Lines{"no-title:2 new page 12"});
  EXPECT_EQ(Check("<meta charset=utf-8><title>新建网页 1</title>"), Lines{"no-title:1 新建网页 1"});
  EXPECT_EQ(Check("<title>New pages</title>"), Lines{});
  EXPECT_EQ(Check("<title>2026</title>"), Lines{});
}

TEST_F(PageCheckTest, FindsCharsetsThatAreDeclaredWrongly) {
  const auto page = [](const std::string& label, const std::string& text) {
    return "<title>T</title>\n<meta http-equiv=Content-Type content=\"text/html; charset=" + label +
           "\">" + text;
  };
  const std::string chinese = "紅樹林生態學習網";
  EXPECT_EQ(Check(page("big5", chinese)), Lines{"wrong-charset:2 big5"});
  EXPECT_EQ(texts[0], "declares big5, but its text is in UTF-8");
  EXPECT_EQ(Check(page("utf-8", chinese + "\xFF")), Lines{"wrong-charset:2 utf-8"});
  EXPECT_EQ(texts[0], "declares utf-8, but not all of its bytes are UTF-8");
  EXPECT_EQ(Check(page("x-klingon", chinese)), Lines{"wrong-charset:2 x-klingon"});
  EXPECT_EQ(texts[0], "declares x-klingon, which is not a known charset");
  EXPECT_EQ(Check(page("big5", "plain")), Lines{}) << "nothing depends on it";
  EXPECT_EQ(Check(page("utf8", chinese)), Lines{});
  EXPECT_EQ(Check(page("windows-1252", "caf\xE9")), Lines{});
  EXPECT_EQ(Check(page("x-klingon", "") + page("utf-8", chinese)), Lines{}) << "one is heard";
  EXPECT_EQ(Check("<title>T</title><meta charset='\"big5\"'>" + chinese),
            Lines{"wrong-charset:1 big5"});
}

TEST_F(PageCheckTest, FindsPagesOfTheHostThatEndTooEarly) {
  const std::string page =
      "<html><head><title>T</title><meta name=\"GENERATOR\" content=\"Microsoft FrontPage 4.0\">"
      "</head>\n<body>\ntext";
  EXPECT_EQ(Check(page), Lines{"cut-off:3 "});
  EXPECT_EQ(Check(page + "</body>"), Lines{});
  EXPECT_EQ(Check("<html><head><title>T</title></head><body>text"), Lines{}) << "another author's";
}

TEST_F(PageCheckTest, TellsThePagesInItsFrames) {
  EXPECT_EQ(CheckBody("<iframe src=\"Guide.htm\"></iframe><a href=\"../index.htm\">a</a>"
                      "<iframe src=\"http://example.org/\"></iframe>"),
            Lines{});
  EXPECT_EQ(frames, Lines{"docs/Guide.htm"});
}

TEST_F(PageCheckTest, ReadsPagesInUtf16) {
  EXPECT_EQ(Check(std::string("\xFF\xFE<\0t\0i\0t\0l\0e\0>\0T\0<\0/\0t\0i\0t\0l\0e\0>\0"
                              "<\0a\0 \0h\0r\0e\0f\0=\0n\0>\0",
                              54)),
            Lines{"missing-link:1 n"});
}

}  // namespace
}  // namespace scrivo
