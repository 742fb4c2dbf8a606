#include "html/page_bars.h"

#include <gtest/gtest.h>

namespace scrivo {
namespace {

// The bytes as the host writes them around a page's content.
constexpr char kTop[] =
    "<!--msnavigation--><table border=\"0\" cellpadding=\"0\" cellspacing=\"0\" width=\"100%\">"
    "<tr><td><!--mstheme--><font face=\"Arial\">\r\n<p><a href=\"up.htm\">Up</a></p>\r\n"
    "<!--mstheme--></font></td></tr><!--msnavigation--></table>";
constexpr char kContentStart[] =
    "<!--msnavigation--><table dir=\"ltr\" border=\"0\" width=\"100%\"><tr>"
    "<!--msnavigation--><td valign=\"top\">";
constexpr char kContentStartWithLeft[] =
    "<!--msnavigation--><table border=\"0\"><tr><td valign=\"top\" width=\"1%\">"
    "<a href=\"child.htm\"><img src=\"_derived/child_cmp_blank_vbtn.gif\"></a></td>"
    "<td valign=\"top\" width=\"24\"></td><!--msnavigation--><td valign=\"top\">";
constexpr char kContentEnd[] = "<!--msnavigation--></td></tr><!--msnavigation--></table>";
constexpr char kContentEndWithRight[] =
    "<!--msnavigation--></td><td width=\"24\"></td><td width=\"1%\">news</td></tr>"
    "<!--msnavigation--></table>";
constexpr char kBottom[] =
    "<!--msnavigation--><table border=\"0\"><tr><td><p>made by us</p></td></tr>"
    "<!--msnavigation--></table>";
constexpr char kOwn[] = "<h1>Own</h1>\r\n<table><tr><td>1</td></tr></table>\x80";

std::string Page(const std::string& body) {
  return "<html><head><title>T</title></head>\n<body bgcolor=\"#FFF\">" + body + "</body></html>\n";
}

std::string Bare(const std::string& body) { return WithoutBars(Page(body)).value_or("as it was"); }

TEST(PageBars, TakesAllFourBordersAndLeavesTheContent) {
  EXPECT_EQ(Bare(std::string(kTop) + kContentStart + kOwn + kContentEnd), Page(kOwn));
  EXPECT_EQ(Bare(std::string(kTop) + kContentStartWithLeft + kOwn + kContentEndWithRight + kBottom),
            Page(kOwn));
  EXPECT_EQ(Bare(std::string(kContentStartWithLeft) + kOwn + kContentEnd), Page(kOwn));
  EXPECT_EQ(Bare(std::string(kContentStart) + kOwn + kContentEnd + kBottom), Page(kOwn));
}

TEST(PageBars, TakesTheBordersBeforeTheContentOfAPageThatIsCutOff) {
  const std::string start = "<html><body>";
  EXPECT_EQ(WithoutBars(start + kTop + kContentStartWithLeft + kOwn), start + kOwn);
  const std::string whole = start + kTop + kContentStartWithLeft + kOwn + "</td></tr></table>";
  EXPECT_FALSE(WithoutBars(whole + "</body>")) << "an editor has lost the comments";
}

TEST(PageBars, TakesBordersWithBlanksBehindTheirComments) {
  EXPECT_EQ(Bare("<!--msnavigation-->\n<table><tr><!-- msnavigation --> <TD>own<!--msnavigation-->"
                 "</td></tr>\n<!--msnavigation--></TABLE>"),
            Page("own"));
}

TEST(PageBars, TakesNavigationComponents) {
  EXPECT_EQ(Bare("a<!--webbot bot=\"Navigation\"\nS-Type=\"children\" startspan --><a href=\"b\">"
                 "b</a><!--webbot\nbot=\"Navigation\" endspan i-checksum=\"9716\"\n-->c"),
            Page("ac"));
  EXPECT_EQ(
      Bare("<!--webbot bot=\"navigation\" startspan --><!--webbot bot=\"Navigation\" endspan "
           "i-checksum=\"0\" --><p>"
           "<!--webbot bot=\"Navigation\" startspan -->x<!--webbot bot=\"Navigation\" endspan "
           "-->"),
      Page("<p>"));
}

TEST(PageBars, TakesComponentsWithTheBorderThatTheyStandIn) {
  const std::string component =
      "<!--webbot bot=\"Navigation\" startspan -->x<!--webbot bot=\"Navigation\" endspan -->";
  EXPECT_EQ(Bare("<!--msnavigation--><table><tr><td>" + component +
                 "</td></tr><!--msnavigation--></table>" + kContentStart + "a" + component + "b" +
                 kContentEnd),
            Page("ab"));
}

TEST(PageBars, LeavesBannersOutsideBorders) {
  const std::string banner =
      "<!--webbot bot=\"Navigation\" s-type=\"banner\" startspan --><img src=\"_derived/b.gif\">"
      "<!--webbot bot=\"Navigation\" endspan -->";
  EXPECT_FALSE(WithoutBars(Page(banner)));
  EXPECT_EQ(Bare(std::string(kContentStart) + banner + kContentEnd), Page(banner));
}

TEST(PageBars, LeavesOtherComponents) {
  EXPECT_FALSE(
      WithoutBars(Page("<!--webbot bot=\"Timestamp\" startspan -->May<!--webbot "
                       "bot=\"Timestamp\" endspan -->")));
  EXPECT_FALSE(WithoutBars(Page("<!--webbot bot=\"Navigation\" s-type=\"children\" -->a")));
  EXPECT_FALSE(
      WithoutBars(Page("<!--webbot bot=\"Include\" startspan -->a<!--webbot "
                       "bot=\"Navigation\" endspan -->")));
}

TEST(PageBars, LeavesComponentsWithoutAnEndOfTheirOwn) {
  EXPECT_FALSE(WithoutBars(Page("<!--webbot bot=\"Navigation\" startspan -->a")));
  EXPECT_FALSE(WithoutBars(Page("a<!--webbot bot=\"Navigation\" endspan -->")));
  EXPECT_EQ(Bare("<!--webbot bot=\"Navigation\" startspan -->a<!--webbot bot=\"Navigation\" "
                 "startspan -->b<!--webbot bot=\"Navigation\" endspan -->c"),
            Page("<!--webbot bot=\"Navigation\" startspan -->ac"));
  // What lies across a border is no component: the page's content would go with it.
  EXPECT_EQ(Bare("<!--msnavigation--><table><tr><td><!--webbot bot=\"Navigation\" startspan -->"
                 "</td></tr><!--msnavigation--></table>" +
                 std::string(kContentStart) + "a<!--webbot bot=\"Navigation\" endspan -->b" +
                 kContentEnd),
            Page("a<!--webbot bot=\"Navigation\" endspan -->b"));
}

TEST(PageBars, LeavesBordersThatAreNotWhole) {
  const std::string whole = std::string(kTop) + kContentStart + kOwn + kContentEnd + kBottom;
  const std::string mark = "<!--msnavigation-->";
  // Without any one of the comments, the others do not tell for certain what is the content.
  for (std::size_t at = 0; (at = whole.find(mark, at)) != std::string::npos; ++at) {
    std::string broken = whole;
    broken.erase(at, mark.size());
    EXPECT_FALSE(WithoutBars(Page(broken))) << broken;
  }
  EXPECT_FALSE(WithoutBars(Page(kTop))) << "there is no content";
  EXPECT_FALSE(WithoutBars(Page(whole + whole))) << "there are two";
  EXPECT_FALSE(WithoutBars(Page(whole + mark)));
  EXPECT_FALSE(WithoutBars(Page(whole + mark + "<p>")));
  EXPECT_FALSE(WithoutBars(Page("<script>" + whole + "</script>")));
  EXPECT_FALSE(WithoutBars(""));
}

}  // namespace
}  // namespace scrivo
