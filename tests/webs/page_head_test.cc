#include "webs/page_head.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace scrivo {
namespace {

// A file in memory that remembers how much of it was read.
class CountingReader : public FileReader {
 public:
  explicit CountingReader(std::string bytes) : bytes_(std::move(bytes)) {}

  std::size_t Read(char* buffer, std::size_t size) override {
    const std::size_t got = bytes_.copy(buffer, size, read);
    read += got;
    return got;
  }

  std::size_t read = 0;

 private:
  const std::string bytes_;
};

PageHead Scanned(const std::string& page, std::size_t piece, Headings headings) {
  PageHeadScanner scanner(headings);
  for (std::size_t at = 0; at < page.size(); at += piece) {
    if (scanner.Feed(std::string_view(page).substr(at, piece))) break;
  }
  return scanner.Finish();
}

// The head, after making sure that it does not depend on how the page was cut into pieces.
PageHead Head(const std::string& page, Headings headings = Headings::kNo) {
  PageHead whole = Scanned(page, page.size() + 1, headings);
  for (const std::size_t piece : {1, 2, 3, 7}) {
    const PageHead cut = Scanned(page, piece, headings);
    EXPECT_EQ(cut.title, whole.title) << piece;
    EXPECT_EQ(cut.headings, whole.headings) << piece;
    EXPECT_EQ(cut.code_page, whole.code_page) << piece;
    EXPECT_EQ(cut.metas.size(), whole.metas.size()) << piece;
  }
  return whole;
}

std::string Title(const std::string& page) { return Head(page).title; }

std::string Meta(const PageHead& head, const std::string& name) {
  const auto meta = std::find_if(head.metas.begin(), head.metas.end(),
                                 [&](const MetaTag& tag) { return tag.name == name; });
  return meta == head.metas.end() ? "(none)" : meta->content;
}

std::vector<std::string> HeadingsOf(const std::string& page) {
  return Head(page, Headings::kYes).headings;
}

using Texts = std::vector<std::string>;

TEST(PageHead, FindsTheTitle) {
  EXPECT_EQ(Title("<html>\r\n<head>\r\n<title>Close</title>\r\n</head>"), "Close");
}

TEST(PageHead, TagsAreKnownInAnyCaseAndWithAttributes) {
  EXPECT_EQ(Title("<HTML><HEAD><TITLE lang=\"en\">Close</Title ></HEAD>"), "Close");
}

TEST(PageHead, ATitleKeepsItsBytes) {
  EXPECT_EQ(Title("<title> A &amp; B\r\n \xE9 </title>"), " A &amp; B\r\n \xE9 ");
}

TEST(PageHead, APageWithoutATitleHasNone) {
  EXPECT_EQ(Title("<html><head></head><body>Text</body></html>"), "");
  EXPECT_EQ(Title(""), "");
  EXPECT_EQ(Title("plain text"), "");
}

TEST(PageHead, AnEmptyTitleGivesWayToALaterOne) {
  EXPECT_EQ(Title("<head><title> \n</title><title>Real</title></head>"), "Real");
}

TEST(PageHead, TheFirstOfSeveralTitlesCounts) {
  EXPECT_EQ(Title("<head><title>One</title><title>Two</title></head>"), "One");
}

TEST(PageHead, TagsInsideATitleAreText) {
  EXPECT_EQ(Title("<title>The <b> element < 3</title>"), "The <b> element < 3");
}

TEST(PageHead, ATitleThatIsNeverClosedEndsWhereTheHeadGoesOn) {
  EXPECT_EQ(Title("<head><title>Open<meta name=\"a\" content=\"b\"></head>"), "Open");
  EXPECT_EQ(Title("<head><title>Open</head><body>Text"), "Open");
  EXPECT_EQ(Title("<head><title>Open<body>Text"), "Open");
  EXPECT_EQ(Meta(Head("<title>Open<meta name=a content=b>"), "a"), "b");
}

TEST(PageHead, ATitleThatIsNeverClosedIsCut) {
  EXPECT_EQ(Title("<title>" + std::string(100000, 'x')).size(), 4096u);
}

TEST(PageHead, ATitleInACommentOrAScriptIsNone) {
  EXPECT_EQ(Title("<head><!-- <title>No</title> --><title>Yes</title>"), "Yes");
  EXPECT_EQ(Title("<head><script>'<title>No</title>'</script><title>Yes</title>"), "Yes");
  EXPECT_EQ(Title("<head><STYLE>/* <title>No</title> */</STYLE ><title>Yes</title>"), "Yes");
}

TEST(PageHead, ScriptTextEndsAtItsOwnEndTagOnly) {
  EXPECT_EQ(Title("<script>a</b></scrip</scr<</script><title>Yes</title>"), "Yes");
}

TEST(PageHead, CommentsEndAsInBrowsers) {
  EXPECT_EQ(Title("<!--><title>A</title>"), "A");
  EXPECT_EQ(Title("<!--a->b--c---><title>A</title>"), "A");
  EXPECT_EQ(Title("<!-- never closed <title>A</title>"), "");
}

TEST(PageHead, DeclarationsAndInstructionsArePassedOver) {
  EXPECT_EQ(Title("<?xml version=\"1.0\"?><!DOCTYPE HTML PUBLIC \"x\"><!-x><title>A</title>"), "A");
}

TEST(PageHead, AGreaterSignInsideQuotesDoesNotEndATag) {
  const PageHead head = Head("<meta name=\"a\" content=\"x > y\"><title>A</title>");
  EXPECT_EQ(Meta(head, "a"), "x > y");
  EXPECT_EQ(head.title, "A");
}

TEST(PageHead, AQuoteOutsideAValueOpensNothing) {
  EXPECT_EQ(Title("<meta name=a\" content=b><title>A</title>"), "A");
}

TEST(PageHead, FindsMetaTagsWhateverTheirQuotesAndOrder) {
  const PageHead head = Head(
      "<META CONTENT='setup, \"first\" steps' NAME=\" Keywords \"><meta name=author content=me>"
      "<meta name = \"x\"  content = \"y z\"/>");
  EXPECT_EQ(Meta(head, "keywords"), "setup, \"first\" steps");
  EXPECT_EQ(Meta(head, "author"), "me");
  EXPECT_EQ(Meta(head, "x"), "y z");
}

TEST(PageHead, KeywordsMayStandUnderHttpEquiv) {
  EXPECT_EQ(Meta(Head("<meta http-equiv=\"Keywords\" content=\"a, b\">"), "keywords"), "a, b");
}

TEST(PageHead, AMetaTagWithoutContentHasAnEmptyOne) {
  EXPECT_EQ(Meta(Head("<meta name=\"keywords\">"), "keywords"), "");
  EXPECT_EQ(Meta(Head("<meta name=\"keywords\" content>"), "keywords"), "");
}

TEST(PageHead, FindsTheDeclaredCharset) {
  const auto declared = [](const std::string& meta) { return Head(meta).code_page; };
  EXPECT_EQ(declared("<meta http-equiv=\"Content-Type\" content=\"text/html; "
                     "charset=windows-1251\">"),
            1251);
  EXPECT_EQ(declared("<meta charset=\"UTF-8\">"), 65001);
  EXPECT_EQ(declared("<meta http-equiv=content-type content='text/html;charset=utf8; x=y'>"),
            65001);
  EXPECT_EQ(declared("<meta http-equiv=content-type content='text/html'>"), std::nullopt);
  EXPECT_EQ(declared("<meta name=charset content=utf-8>"), std::nullopt);
}

TEST(PageHead, TheFirstKnownOfSeveralCharsetsCounts) {
  EXPECT_EQ(
      Head("<meta charset=\"klingon\"><meta charset=\"windows-1250\"><meta charset=\"utf-8\">")
          .code_page,
      1250);
}

TEST(PageHead, AByteOrderMarkGoesBeforeADeclaration) {
  const PageHead head = Head("\xEF\xBB\xBF<title>\xC3\xA9</title><meta charset=\"windows-1252\">");
  EXPECT_EQ(head.code_page, 65001);
  EXPECT_EQ(head.title, "\xC3\xA9");
}

std::string Utf16(const std::u16string& text, bool little) {
  std::string bytes;
  for (const char16_t c : text) {
    const char low = static_cast<char>(c & 0xFF), high = static_cast<char>(c >> 8);
    bytes.push_back(little ? low : high);
    bytes.push_back(little ? high : low);
  }
  return bytes;
}

TEST(PageHead, APageInUtf16ComesAsUtf8) {
  const std::u16string page = u"\xFEFF<title>\x00E9 \xD83D\xDE00</title>";
  for (const bool little : {true, false}) {
    const PageHead head = Head(Utf16(page, little));
    EXPECT_EQ(head.title, "\xC3\xA9 \xF0\x9F\x98\x80");
    EXPECT_EQ(head.code_page, 65001);
  }
}

TEST(PageHead, HalfASurrogatePairIsAReplacementCharacter) {
  EXPECT_EQ(Head(Utf16(u"\xFEFF<title>\xDE00"
                       u"a</title>",
                       true))
                .title,
            "\xEF\xBF\xBD"
            "a");
}

TEST(PageHead, AFileThatEndsAnywhereGivesWhatStoodBefore) {
  const std::string page =
      "<html><head><meta name=\"keywords\" content=\"a\"><title>Title</title></head>";
  const std::size_t start = page.find("Title");
  for (std::size_t size = start; size <= page.size(); ++size) {
    const PageHead head = Head(page.substr(0, size));
    EXPECT_EQ(head.title, std::string("Title").substr(0, size - start)) << size;
    EXPECT_EQ(Meta(head, "keywords"), "a") << size;
  }
  for (std::size_t size = 0; size < start; ++size) EXPECT_EQ(Title(page.substr(0, size)), "");
}

TEST(PageHead, ReadsNoMoreOfTheFileThanItsHead) {
  for (const char* end : {"</head>", "<body>", "<frameset>", "<p>", "<table>", "<h1>"}) {
    CountingReader reader(std::string("<html><title>T</title>") + end + std::string(1 << 20, 'x'));
    EXPECT_EQ(ReadPageHead(reader, Headings::kNo).title, "T");
    EXPECT_LE(reader.read, 4096u) << end;
  }
}

TEST(PageHead, ReadsOnToAHeadThatIsLong) {
  CountingReader reader("<head><style>" + std::string(20000, 'x') +
                        "</style><title>T</title></head>" + std::string(1 << 20, 'x'));
  EXPECT_EQ(ReadPageHead(reader, Headings::kNo).title, "T");
  EXPECT_LE(reader.read, 24576u);
}

TEST(PageHead, ReadsNothingPastTheEndOfThePageForHeadings) {
  CountingReader reader("<h1>A</h1></html>" + std::string(1 << 20, 'x'));
  EXPECT_EQ(ReadPageHead(reader, Headings::kYes).headings, Texts{"A"});
  EXPECT_LE(reader.read, 4096u);
}

TEST(PageHead, WhatLooksLikeAHeadInsideTheBodyIsNone) {
  const PageHead head =
      Head("<body><title>No</title><meta name=a content=b><h1>H</h1>", Headings::kYes);
  EXPECT_EQ(head.title, "");
  EXPECT_TRUE(head.metas.empty());
  EXPECT_EQ(head.headings, Texts{"H"});
}

TEST(PageHead, FindsHeadingsOfTheFirstThreeLevels) {
  EXPECT_EQ(HeadingsOf("<body><h1>One</h1><p>Text</p><H2 align=center>Two</H2><h3>Three</h3>"
                       "<h4>Four</h4><h5>Five</h5></body>"),
            (Texts{"One", "Two", "Three"}));
}

TEST(PageHead, WithoutHeadingsWantedThereAreNone) {
  EXPECT_TRUE(Head("<h1>One</h1>").headings.empty());
}

TEST(PageHead, TagsInsideAHeadingAreLeftOut) {
  EXPECT_EQ(HeadingsOf("<h1><a name=\"x\"><b>Set</b>ting</a><!--x--> up<br>it</h1>"),
            Texts{"Setting up it"});
}

TEST(PageHead, EmptyHeadingsAreLeftOut) {
  EXPECT_TRUE(HeadingsOf("<h1></h1><h2> \r\n&nbsp;</h2><h3>\xA0</h3><h3>\xC2\xA0</h3>"
                         "<h1><img src=\"a.gif\"></h1>")
                  .empty());
}

TEST(PageHead, AHeadingThatIsNeverClosedEndsAtTheNextBlock) {
  EXPECT_EQ(HeadingsOf("<h1>One<h2>Two</h3><table><tr><td><h3>Three</td><td>No</td></table>"
                       "<h2>Four<ul><li>No</ul>"),
            (Texts{"One", "Two", "Three", "Four"}));
}

TEST(PageHead, ALongHeadingIsCut) {
  EXPECT_EQ(HeadingsOf("<h1>" + std::string(100000, 'x'))[0].size(), 4096u);
}

TEST(PageHead, ATagOfAnyLengthIsPassedOver) {
  EXPECT_EQ(Title("<meta name=\"" + std::string(1 << 20, 'x') + "\"><title>A</title>"), "A");
}

}  // namespace
}  // namespace scrivo
