#include "hhc/page_scan.h"

#include <gtest/gtest.h>

namespace scrivo {
namespace {

// The words of a page in order; title words have a "*" in front.
std::vector<std::string> Words(const std::string& html, int code_page = 1252) {
  WordCollector collector;
  ScanPage(html, code_page, &collector);
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

TEST(ScanPage, FindsTheTitle) {
  const PageScan page = ScanPage("<head><TITLE> A &amp; B\r\n c </TITLE></head>", 1252, nullptr);
  EXPECT_EQ(page.title, "A & B   c");
  EXPECT_EQ(ScanPage("<title>first</title><svg><title>second</title></svg>", 1252, nullptr).title,
            "first");
}

TEST(ScanPage, GathersLinksHeadingsAndBase) {
  const PageScan page =
      ScanPage("<base href=docs/><h1 id=x>One</h1><h6>Six</h6><img src=i.gif>", 1252, nullptr);
  EXPECT_EQ(page.base, "docs/");
  ASSERT_EQ(page.links.size(), 1u);
  EXPECT_EQ(page.links[0].address, "i.gif");
  ASSERT_EQ(page.headings.size(), 2u);
  EXPECT_EQ(page.headings[1].text, "Six");
}

TEST(ScanPage, ReadsKeywordObjects) {
  const PageScan page = ScanPage(
      "<OBJECT type=\"application/x-oleobject\" "
      "classid=\"clsid:1E2A7BD0-dab9-11d0-b93a-00c04fc99f9e\">"
      "<param name=\"Keyword\" value=\"a &amp; b\"><param name=\"ALink Name\" "
      "value=\"link\"></OBJECT>"
      "<object classid=other><param name=Keyword value=no></object>",
      1252, nullptr);
  EXPECT_EQ(page.keywords, Texts{"a & b"});
  EXPECT_EQ(page.associations, Texts{"link"});
}

TEST(ScanPage, KnowsTheCodePageOfThePage) {
  EXPECT_EQ(ScanPage("<meta charset=koi8-r>", 1252, nullptr).code_page, 20866);
  EXPECT_EQ(ScanPage("caf\xE9", 1250, nullptr).code_page, 1250);
  EXPECT_EQ(ScanPage("caf\u00E9", 1252, nullptr).code_page, 65001);
  EXPECT_EQ(ScanPage("<title>\xC1</title><meta charset=koi8-r>", 1252, nullptr).title, "\u0430");
}

TEST(ScanPageWords, FoldsAndMarksTitleWords) {
  EXPECT_EQ(Words("<title>Big News</title><body>caf\xC9 na\xEFve_1 THE</body>"),
            (Texts{"*big", "*news", "cafe", "naive_1", "the"}));
}

TEST(ScanPageWords, BreaksNumbersAsTheViewerDoes) {
  EXPECT_EQ(Words("1.6.x costs 2,100 you'll a.b 12. 3, x,y 0x40,0x80"),
            (Texts{"1.6.x", "costs", "2100", "youll", "a", "b", "12", "3", "x", "y", "0x400x80"}));
}

TEST(ScanPageWords, ResolvesLigaturesAndReferences) {
  EXPECT_EQ(Words("stra\xDF"
                  "e &AElig;on a&nbsp;b&lt;c"),
            (Texts{"strasse", "aeon", "a", "b", "c"}));
}

TEST(ScanPageWords, GoesOnThroughInlineTagsOnly) {
  EXPECT_EQ(Words("w<b>or</b>d one<br>two <td>x</td><td>y</td>"),
            (Texts{"word", "one", "two", "x", "y"}));
}

TEST(ScanPageWords, LeavesOutScriptsStylesAndComments) {
  EXPECT_EQ(Words("a<script>no()</script> b<style>no{}</style> <!-- no --> c"),
            (Texts{"a", "b", "c"}));
}

TEST(ScanPageWords, TakesTheTextOfXmpAndTextareaAsItIsShown) {
  EXPECT_EQ(Words("a<xmp><b>&amp;c</b></xmp>d<textarea><i>&lt;e</textarea>f"),
            (Texts{"a", "b", "amp", "c", "b", "d", "i", "e", "f"}));
}

TEST(ScanPageWords, KeepsTheBodyBehindATitleThatIsNeverClosed) {
  EXPECT_EQ(Words("<head><title>Open<meta name=a></head><body>body <b>text</b>"),
            (Texts{"*open", "body", "text"}));
  EXPECT_EQ(Words("<title>Open<p>body"), (Texts{"*open", "body"}));
}

TEST(ScanPageWords, MarksTheWordsOfThePagesOwnTitleOnly) {
  EXPECT_EQ(Words("<title>one</title><svg><title>two</title></svg><title>three</title>"),
            (Texts{"*one", "two", "three"}));
}

TEST(ScanPageWords, TurnsUtf8PagesIntoTheProjectsCodePage) {
  EXPECT_EQ(Words("\u00C4rger \u0431"), (Texts{"arger"}));
  EXPECT_EQ(Words("\u041F\u0430", 1251), (Texts{"ia"}));  // folded as the viewer's table says
}

TEST(ScanPageWords, TakesEachDoubleByteCharacterAsAWord) {
  EXPECT_EQ(Words("<meta charset=shift_jis>ab\x93\xFA\x96{c", 932),
            (Texts{"ab", "\x93\xFA", "\x96{", "c"}));
}

TEST(ScanPageWords, CutsWordsOfAHundredCharacters) {
  EXPECT_EQ(Words(std::string(150, 'a')), (Texts{std::string(99, 'a')}));
}

TEST(ScanPage, TakesTimeInProportionForHostileInput) {
  std::string tags, quotes, comments, scripts;
  for (int i = 0; i < 200000; ++i) {
    tags += "<a href=\"";
    quotes += "<a href='x ";
    comments += "<!--";
    scripts += "<script></s";
  }
  for (const std::string& html : {tags, quotes, comments, scripts, "<p " + tags + quotes}) {
    EXPECT_LE(ScanPage(html, 1252, nullptr).links.size(), 400000u);
  }
}

}  // namespace
}  // namespace scrivo
