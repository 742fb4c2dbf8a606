#include "html/html_scanner.h"

#include <gtest/gtest.h>

#include "html/css_links.h"

namespace scrivo {
namespace {

std::vector<std::string> Addresses(const std::string& html) {
  std::vector<std::string> addresses;
  for (const PageLink& link : ScanHtml(html, 1252, nullptr).links)
    addresses.push_back(link.address);
  return addresses;
}

// The words of a page in order; title words have a "*" in front.
std::vector<std::string> Words(const std::string& html, int code_page = 1252) {
  WordCollector collector;
  ScanHtml(html, code_page, &collector);
  const PageWords words = collector.Finish();
  std::vector<std::string> ordered(words.word_count);
  std::string_view rest = words.encoded;
  while (!rest.empty()) {
    const std::size_t length = static_cast<unsigned char>(rest[0]);
    std::string word(rest[1 + length] != 0 ? 1 : 0, '*');
    word += rest.substr(1, length);
    rest.remove_prefix(2 + length);
    const std::uint64_t count = TakeVarint(&rest);
    TakeVarint(&rest);
    std::uint64_t position = 0;
    for (std::uint64_t i = 0; i < count; ++i) {
      position += TakeVarint(&rest);
      ordered.at(position) = word;
    }
  }
  return ordered;
}

using Texts = std::vector<std::string>;

TEST(ScanHtml, FindsTheTitle) {
  const PageScan page = ScanHtml("<head><TITLE> A &amp; B\r\n c </TITLE></head>", 1252, nullptr);
  EXPECT_TRUE(page.has_title);
  EXPECT_EQ(page.title, "A & B   c");
  EXPECT_EQ(ScanHtml("<title>first</title><svg><title>second</title></svg>", 1252, nullptr).title,
            "first");
  EXPECT_FALSE(ScanHtml("<p>none</p>", 1252, nullptr).has_title);
}

TEST(ScanHtml, FollowsEveryAttributeThatNamesAFile) {
  EXPECT_EQ(
      Addresses("<body background=b.gif><a href='a.htm#x'><area href=\"m.htm\"><img src = i.png "
                "lowsrc=l.png dynsrc=d.avi><link href=s.css><script src=s.js></script>"
                "<table background=t.gif><tr background=r.gif><td background=d.gif>"
                "<th background=h.gif><frame src=f.htm><iframe src=g.htm></iframe>"
                "<input src=n.gif><embed src=e.swf><bgsound src=w.wav><object data=o.svg>"
                "</object><video src=v.mp4 poster=p.png></video><audio src=u.mp3></audio>"),
      (Texts{"b.gif", "a.htm#x", "m.htm", "i.png", "l.png", "d.avi", "s.css",
             "s.js",  "t.gif",   "r.gif", "d.gif", "h.gif", "f.htm", "g.htm",
             "n.gif", "e.swf",   "w.wav", "o.svg", "v.mp4", "p.png", "u.mp3"}));
}

TEST(ScanHtml, FollowsStylesAndRefreshes) {
  EXPECT_EQ(Addresses("<style>@import 'a.css'; b { background: url( \"c d.png\" ) }</style>"
                      "<p style=\"background:url(e.gif)\"><meta http-equiv=Refresh "
                      "content=\"0; URL=next.htm\">"),
            (Texts{"a.css", "c d.png", "e.gif", "next.htm"}));
}

TEST(ScanHtml, DecodesReferencesInAddresses) {
  EXPECT_EQ(Addresses("<a href=\"a&amp;b.htm?x=1&copy=2\">"), (Texts{"a&b.htm?x=1&copy=2"}));
}

TEST(ScanHtml, PassesOverAnchorsOfTheSamePageCommentsAndScripts) {
  EXPECT_EQ(
      Addresses("<a href=\"#top\"><a href=''><!-- <a href=no.htm> --><script>'<a href=no.htm>'"
                "</script><a name=x>"),
      Texts{});
}

TEST(ScanHtml, TellsWhereALinkStands) {
  const PageScan page = ScanHtml("ab\n<img src=x.gif>", 1252, nullptr);
  EXPECT_EQ(page.links.at(0).offset, 3u);
  EXPECT_EQ(page.links.at(0).kind, LinkKind::kImage);
}

TEST(ScanHtml, ReadsKeywordObjects) {
  const PageScan page = ScanHtml(
      "<OBJECT type=\"application/x-oleobject\" "
      "classid=\"clsid:1E2A7BD0-dab9-11d0-b93a-00c04fc99f9e\">"
      "<param name=\"Keyword\" value=\"a &amp; b\"><param name=\"ALink Name\" "
      "value=\"link\"></OBJECT>"
      "<object classid=other><param name=Keyword value=no></object>",
      1252, nullptr);
  EXPECT_EQ(page.keywords, Texts{"a & b"});
  EXPECT_EQ(page.associations, Texts{"link"});
}

TEST(ScanHtml, KnowsTheCodePageOfThePage) {
  EXPECT_EQ(ScanHtml("<meta charset=koi8-r>", 1252, nullptr).code_page, 20866);
  EXPECT_EQ(ScanHtml("caf\xE9", 1250, nullptr).code_page, 1250);
  EXPECT_EQ(ScanHtml("caf\u00E9", 1252, nullptr).code_page, 65001);
  EXPECT_EQ(ScanHtml("<title>\xC1</title><meta charset=koi8-r>", 1252, nullptr).title, "\u0430");
}

TEST(ScanHtmlWords, FoldsAndMarksTitleWords) {
  EXPECT_EQ(Words("<title>Big News</title><body>caf\xC9 na\xEFve_1 THE</body>"),
            (Texts{"*big", "*news", "cafe", "naive_1", "the"}));
}

TEST(ScanHtmlWords, BreaksNumbersAsTheViewerDoes) {
  EXPECT_EQ(Words("1.6.x costs 2,100 you'll a.b 12. 3, x,y 0x40,0x80"),
            (Texts{"1.6.x", "costs", "2100", "youll", "a", "b", "12", "3", "x", "y", "0x400x80"}));
}

TEST(ScanHtmlWords, ResolvesLigaturesAndReferences) {
  EXPECT_EQ(Words("stra\xDF"
                  "e &AElig;on a&nbsp;b&lt;c"),
            (Texts{"strasse", "aeon", "a", "b", "c"}));
}

TEST(ScanHtmlWords, GoesOnThroughInlineTagsOnly) {
  EXPECT_EQ(Words("w<b>or</b>d one<br>two <td>x</td><td>y</td>"),
            (Texts{"word", "one", "two", "x", "y"}));
}

TEST(ScanHtmlWords, LeavesOutScriptsStylesAndComments) {
  EXPECT_EQ(Words("a<script>no()</script> b<style>no{}</style> <!-- no --> c"),
            (Texts{"a", "b", "c"}));
}

TEST(ScanHtmlWords, TurnsUtf8PagesIntoTheProjectsCodePage) {
  EXPECT_EQ(Words("\u00C4rger \u0431"), (Texts{"arger"}));
  EXPECT_EQ(Words("\u041F\u0430", 1251), (Texts{"ia"}));  // folded as the viewer's table says
}

TEST(ScanHtmlWords, TakesEachDoubleByteCharacterAsAWord) {
  EXPECT_EQ(Words("<meta charset=shift_jis>ab\x93\xFA\x96{c", 932),
            (Texts{"ab", "\x93\xFA", "\x96{", "c"}));
}

TEST(ScanHtmlWords, CutsWordsOfAHundredCharacters) {
  EXPECT_EQ(Words(std::string(150, 'a')), (Texts{std::string(99, 'a')}));
}

TEST(ScanHtml, TakesTimeInProportionForHostileInput) {
  std::string tags, quotes, comments, scripts;
  for (int i = 0; i < 200000; ++i) {
    tags += "<a href=\"";
    quotes += "<a href='x ";
    comments += "<!--";
    scripts += "<script></s";
  }
  for (const std::string& html : {tags, quotes, comments, scripts, "<p " + tags + quotes}) {
    EXPECT_LE(ScanHtml(html, 1252, nullptr).links.size(), 400000u);
  }
}

TEST(FindCssLinks, FindsAddressesAndPassesOverComments) {
  std::vector<std::string> found;
  for (const CssLink& link : FindCssLinks(
           "@import url(a.css); @import \"b.css\"; /* url(no.png) */ p { src: URL('c.woff') }"
           " q { background: url(d.png")) {
    found.emplace_back(link.address);
  }
  EXPECT_EQ(found, (Texts{"a.css", "b.css", "c.woff", "d.png"}));
}

}  // namespace
}  // namespace scrivo
