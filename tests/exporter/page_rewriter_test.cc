#include "exporter/page_rewriter.h"

#include <gtest/gtest.h>

namespace scrivo {
namespace {

class PageRewriter : public testing::Test {
 protected:
  PageRewriter() {
    names.Add("/a/Page.htm", true);
    names.Add("/start.htm", true);
    names.Add("/a/pic.gif", false);
    rules.head = "[{up}HEAD]";
  }
  std::string Rewrite(std::string_view html, std::string_view name = "/a/x.htm") {
    page = RewritePage(html, name, name.substr(1), names, topics, rules);
    return page.html;
  }
  SiteNames names{"book.chm"};
  HelpTopics topics;
  RewriteRules rules;
  RewrittenPage page;
};

TEST_F(PageRewriter, PutsItsLineAtTheStartOfTheHead) {
  EXPECT_EQ(Rewrite("<!DOCTYPE html><html><head lang=x><title>T</title></head>"),
            "<!DOCTYPE html><html><head lang=x>[../HEAD]<title>T</title></head>");
  EXPECT_EQ(Rewrite("<!DOCTYPE html><p>x"), "<!DOCTYPE html>[../HEAD]<p>x");
  EXPECT_EQ(Rewrite("text only"), "text only[../HEAD]");
}

TEST_F(PageRewriter, TakesScriptsAwayThatSeemToStandInAValue) {
  rules.head = "";
  EXPECT_EQ(Rewrite("<a x=y='z><script>a</script>'>b"), "<a x=y='z>'>b");
}

TEST_F(PageRewriter, TakesAHandlerAwayWithoutJoiningWhatStandsAroundIt) {
  rules.head = "";
  // The equals sign behind it would give the attribute in front a value, which reaches to the
  // next quotation mark: the picture's title would be over, and a handler of the link begin.
  const std::string once = Rewrite("<a b onclick=x =\"> <img title=\" onclick=hit>\">");
  EXPECT_EQ(once, "<a b data-removed=\"\" =\"> <img title=\" onclick=hit>\">");
  EXPECT_EQ(Rewrite(once), once);
  EXPECT_EQ(Rewrite("<a b onclick=x c=d>"), "<a b  c=d>");
}

TEST_F(PageRewriter, TakesScriptsAwayWithoutMakingATagOfWhatStandsAroundThem) {
  rules.head = "";
  const std::string image = "img src=pic.gif onerror=hit>";
  EXPECT_EQ(Rewrite("<<script>a</script>" + image), "&lt;" + image);
  EXPECT_EQ(Rewrite("<</script>" + image), "&lt;" + image);
  EXPECT_EQ(Rewrite("<<noscript>" + image), "&lt;" + image);
  EXPECT_EQ(
      Rewrite("<<object classid=\"clsid:adb880a6-d8ff-11cf-9377-00aa003b7a11\"></object>" + image),
      "&lt;" + image);
}

TEST_F(PageRewriter, TakesHandlersAwayFromTheHeadItself) {
  EXPECT_EQ(Rewrite("<html><head onclick=x lang=y><p>"), "<html><head  lang=y>[../HEAD]<p>");
}

TEST_F(PageRewriter, TakesScriptsWithinAnObjectAwayWithIt) {
  rules.head = "";
  const std::string object = "<object classid=\"clsid:adb880a6-d8ff-11cf-9377-00aa003b7a11\">";
  EXPECT_EQ(Rewrite(object + "<script>a</script><script src=b.js></script></object>x"), "x");
  EXPECT_EQ(Rewrite(object + "<style>a</style><script src=b.js></script>"), "");
}

TEST_F(PageRewriter, TakesEveryMarkOfUtf8AwayThatStandsInFront) {
  rules.head = "";
  EXPECT_EQ(Rewrite("\xEF\xBB\xBF\xEF\xBB\xBF<p>x"), "<p>x");
  EXPECT_EQ(Rewrite("<p>\xEF\xBB\xBFx"), "<p>\xEF\xBB\xBFx");
}

TEST_F(PageRewriter, LeavesBytesAndGoodLinksAlone) {
  rules.head = "";
  const std::string html =
      "<P Align=left ><A  HREF='Page.htm#x'>a</A><img src=pic.gif><a href=\"http://x/?a&amp;b\">";
  EXPECT_EQ(Rewrite(html), html);
}

TEST_F(PageRewriter, MapsLinksWhereverTheyStand) {
  rules.head = "";
  EXPECT_EQ(Rewrite("<a href=PAGE.htm>"), "<a href=\"Page.htm\">");
  EXPECT_EQ(Rewrite("<img src='/A/PIC.gif'>"), "<img src='pic.gif'>");
  EXPECT_EQ(Rewrite("<td background=\"../a/PIC.GIF\">"), "<td background=\"pic.gif\">");
  EXPECT_EQ(Rewrite("<meta http-equiv=refresh content='0; url=PAGE.HTM'>"),
            "<meta http-equiv=refresh content='0; url=Page.htm'>");
  EXPECT_EQ(Rewrite("<style>p{background:url(PIC.gif)}</style>"),
            "<style>p{background:url(pic.gif)}</style>");
  EXPECT_EQ(Rewrite("<img srcset='PIC.gif 1x, none.gif 2x'>"),
            "<img srcset='pic.gif 1x, none.gif 2x'>");
  EXPECT_EQ(Rewrite("<p style=\"background:url('PIC.gif')\">"),
            "<p style=\"background:url(&#39;pic.gif&#39;)\">");
}

TEST_F(PageRewriter, PutsABaseIntoTheLinks) {
  rules.head = "";
  EXPECT_EQ(Rewrite("<base href=\"ms-its:book.chm::/a/\" target=m><a href=Page.htm>", "/start.htm"),
            "<base  target=m><a href=\"a/Page.htm\">");
}

TEST_F(PageRewriter, ChangesTheDeclarationOfTheCharset) {
  rules.head = "";
  EXPECT_EQ(Rewrite("<meta charset=big5><meta http-equiv='Content-Type' content='text/html; "
                    "charset=windows-1251'>"),
            "<meta charset=\"utf-8\"><meta http-equiv='Content-Type' content='text/html; "
            "charset=utf-8'>");
  EXPECT_EQ(PageInUtf8("<meta charset=windows-1251>\xC6", 1252),
            "<meta charset=windows-1251>\xD0\x96");
  EXPECT_EQ(PageInUtf8("\xE9", 1252), "\xC3\xA9");
  EXPECT_EQ(PageInUtf8(std::string("\xFF\xFE<\0\xE9\0", 6), 1252), "\xEF\xBB\xBF<\xC3\xA9");
}

TEST_F(PageRewriter, TakesScriptsOutUnlessTheyAreKept) {
  rules.head = "";
  const std::string html =
      "<body onload='x()'><script>a</script><noscript>n</noscript><a href='javascript:x()'>b</a>";
  EXPECT_EQ(Rewrite(html), "<body >n<a >b</a>");
  EXPECT_EQ(Rewrite("<script>never closed <p>text"), "");
  EXPECT_EQ(Rewrite("<iframe srcdoc='<script>x</script>'>"), "<iframe >");
  rules.keep_scripts = true;
  EXPECT_EQ(Rewrite(html), html);
}

TEST_F(PageRewriter, GathersTitleTextAndHeadings) {
  Rewrite(
      "<title> A &amp;\n B</title><p>One<b>two</b> three</p><H2>Head <i>line</i></H2>four"
      "<script>no</script>");
  EXPECT_EQ(page.content.title, "A & B");
  EXPECT_EQ(page.content.text, "Onetwo three Head line four");
  ASSERT_EQ(page.content.headings.size(), 1u);
  const auto [begin, end] = page.content.headings[0];
  EXPECT_EQ(page.content.text.substr(begin, end - begin), " Head line");
}

TEST_F(PageRewriter, MakesListsOfRelatedTopics) {
  rules.head = "";
  EXPECT_EQ(
      Rewrite("<object id=r classid='clsid:ADB880A6-D8FF-11CF-9377-00AA003B7A11'><param "
              "name=Command value='Related Topics, Menu'><param name=Button value='Text:More'>"
              "<param name=Item1 value='One &lt;1&gt;;Page.htm'><param name=Item2 "
              "value='Two;/start.htm'></object>x"),
      "<span id=\"r\">More: <a href=\"Page.htm\">One &lt;1&gt;</a>, <a "
      "href=\"../start.htm\">Two</a></span>x");
}

TEST_F(PageRewriter, LetsLinksThatClickAnObjectLeadWhereItDoes) {
  rules.head = "";
  topics.keywords["tulip"].push_back({"Start", "start.htm", true});
  const std::string object =
      "<object id=k classid=clsid:adb880a6-d8ff-11cf-9377-00aa003b7a11><param name=Command "
      "value=KLink><param name=Item1 value=''><param name=Item2 value='Tulip; none'></object>";
  EXPECT_EQ(Rewrite("<a href='javascript:K.Click()'>x</a>" + object),
            "<a href='../start.htm'>x</a>");
  topics.keywords["none"].push_back({"Page", "a/Page.htm", true});
  EXPECT_EQ(Rewrite("<a href='javascript:k.Click()'>x</a>" + object),
            "<a href='#k'>x</a><span id=\"k\">Related topics: <a href=\"../start.htm\">Start</a>, "
            "<a href=\"Page.htm\">Page</a></span>");
}

TEST_F(PageRewriter, TellsThePopupsTextBehindItsLink) {
  rules.head = "";
  EXPECT_EQ(Rewrite("<a href=\"javascript:p.TextPopup('It\\'s &lt;wet&gt;', 'f')\">rain</a>."),
            "<a >rain</a> (It&#39;s &lt;wet&gt;).");
}

TEST_F(PageRewriter, TakesIndexObjectsOutAndGathersTheirWords) {
  rules.head = "";
  EXPECT_EQ(Rewrite("a<OBJECT classid=\"clsid:1e2a7bd0-dab9-11d0-b93a-00c04fc99f9e\"><param "
                    "name=Keyword value=k1><param name=\"ALink Name\" value=l1></OBJECT>b"),
            "ab");
  EXPECT_EQ(page.keywords, std::vector<std::string>{"k1"});
  EXPECT_EQ(page.associations, std::vector<std::string>{"l1"});
}

TEST_F(PageRewriter, MapsTheAddressesOfStyleSheets) {
  EXPECT_EQ(RewriteStyleSheet("@import \"x.css\"; p{background:url(A/PIC.gif)}", "/s.css", "s.css",
                              names),
            "@import \"x.css\"; p{background:url(a/pic.gif)}");
}

}  // namespace
}  // namespace scrivo
