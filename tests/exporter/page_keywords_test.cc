#include "exporter/page_keywords.h"

#include <gtest/gtest.h>

namespace scrivo {
namespace {

std::string With(std::string_view page, const std::set<std::string>& keywords) {
  return WithKeywords(page, keywords, 1252).value_or("not touched");
}

TEST(PageKeywords, PutsOneTagIntoTheHead) {
  EXPECT_EQ(With("<html>\r\n<HEAD lang=en>\r\n<title>T</title></head><body>\x80</body></html>",
                 {"one", "two words"}),
            "<html>\r\n<HEAD lang=en><meta name=\"keywords\" content=\"one,two words\">\r\n<title>T"
            "</title></head><body>\x80</body></html>");
}

TEST(PageKeywords, FindsAPlaceInPagesWithoutAHead) {
  const std::string tag = "<meta name=\"keywords\" content=\"k\">";
  EXPECT_EQ(With("<!DOCTYPE html><html><body>", {"k"}), "<!DOCTYPE html><html>" + tag + "<body>");
  EXPECT_EQ(With("<!-- a --><title>T</title>", {"k"}), "<!-- a -->" + tag + "<title>T</title>");
  EXPECT_EQ(With("<p>text", {"k"}), tag + "<p>text");
  EXPECT_EQ(With("\xEF\xBB\xBFtext", {"k"}), "\xEF\xBB\xBF" + tag + "text");
  EXPECT_EQ(With("", {"k"}), tag);
}

TEST(PageKeywords, WritesAsciiOnly) {
  EXPECT_EQ(With("<head>", {"\"a\" & <b>", "Дом"}),
            "<head><meta name=\"keywords\" content=\"&#34;a&#34; &#38; "
            "&#60;b&#62;,&#1044;&#1086;&#1084;\">");
}

TEST(PageKeywords, LeavesAPageThatSaysSoAlready) {
  for (const std::string page :
       {"<head><META content='b; a' name=Keywords></head>", "<head></head><body>",
        "<head><meta name=\"keywords\" content=\"b,&#97;\"><title>T</title></head>"}) {
    const std::set<std::string> keywords = page.find('b') < page.find("</head>")
                                               ? std::set<std::string>{"a", "b"}
                                               : std::set<std::string>{};
    EXPECT_EQ(With(page, keywords), page);
  }
}

TEST(PageKeywords, ReplacesWhatThePageSaidBefore) {
  EXPECT_EQ(With("<head>1<meta name=keywords content=old>2<meta name=keywords content=b>3</head>"
                 "<body><meta name=keywords content=c>",
                 {"b"}),
            "<head>1<meta name=\"keywords\" content=\"b\">23</head><body><meta name=keywords "
            "content=c>");
  EXPECT_EQ(With("<head><meta name=keywords content=old>", {}),
            "<head><meta name=\"keywords\" content=\"\">");
  EXPECT_EQ(With("<head><meta name=keywords content=a,a>", {"a"}),
            "<head><meta name=\"keywords\" content=\"a\">");
}

TEST(PageKeywords, DoesNotTouchUtf16) {
  EXPECT_FALSE(WithKeywords(std::string_view("\xFF\xFE<\0p\0>\0", 8), {"k"}, 1252));
}

TEST(PageKeywords, DoesNotTouchPagesThatWouldSwallowTheTag) {
  EXPECT_FALSE(WithKeywords("<html x=\"><head><title>T</title>", {"k"}, 1252));
}

TEST(PageKeywords, TellsWhichNamesAPageCanHold) {
  EXPECT_TRUE(CanBeKeyword("two words & more"));
  EXPECT_TRUE(CanBeKeyword("Дом"));
  for (const char* name : {"", " ", "a,b", "a;b", "&nbsp;", "a\tb"}) {
    EXPECT_FALSE(CanBeKeyword(name)) << name;
  }
}

TEST(PageKeywords, FindsTitles) {
  EXPECT_EQ(TitleOfPage("<html><title>A &amp; \x80</title>", 1252), "A & €");
  EXPECT_EQ(TitleOfPage("<html><body>text", 1252), "");
}

}  // namespace
}  // namespace scrivo
