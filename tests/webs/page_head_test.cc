#include "webs/page_head.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace scrivo {
namespace {

PageHead Head(const std::string& page, Headings headings = Headings::kNo) {
  return FindPageHead(page, headings, [] { return 1252; });
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

TEST(PageHead, APageWithoutATitleHasNone) {
  EXPECT_EQ(Title("<html><head></head><body>Text</body></html>"), "");
  EXPECT_EQ(Title(""), "");
  EXPECT_EQ(Title("plain text"), "");
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

TEST(PageHead, AByteOrderMarkGoesBeforeADeclaration) {
  const PageHead head = Head("\xEF\xBB\xBF<title>\xC3\xA9</title><meta charset=\"windows-1252\">");
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
  }
}

// Gives its bytes in pieces.
class PieceReader : public FileReader {
 public:
  explicit PieceReader(std::string bytes) : bytes_(std::move(bytes)) {}

  std::size_t Read(char* buffer, std::size_t size) override {
    const std::size_t got = bytes_.copy(buffer, std::min<std::size_t>(size, 7000), at_);
    at_ += got;
    return got;
  }

 private:
  const std::string bytes_;
  std::size_t at_ = 0;
};

TEST(ReadWhole, GivesAllBytesUpToTheLimit) {
  std::string bytes;
  for (int i = 0; i < 10000; ++i) bytes += std::to_string(i);
  PieceReader whole(bytes), some(bytes), none("");
  EXPECT_EQ(ReadWhole(whole), bytes);
  EXPECT_EQ(ReadWhole(some, 33000), bytes.substr(0, 33000));
  EXPECT_EQ(ReadWhole(none), "");
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

TEST(PageHead, TheBodysMetaTagsAreNone) {
  EXPECT_TRUE(Head("<body><meta name=a content=b>", Headings::kYes).metas.empty());
  EXPECT_TRUE(Head("<head></head><meta name=a content=b>", Headings::kYes).metas.empty());
}

TEST(PageHead, TextComesInUtf8WithItsReferencesReplaced) {
  const PageHead head = Head(
      "<title> A &amp; B\r\n \xE9 </title><meta name=keywords content=\"&quot;\xE9&quot;\r\n\">"
      "<h1>\xE9 &lt;</h1>",
      Headings::kYes);
  EXPECT_EQ(head.title, " A & B\r\n \xC3\xA9 ");
  EXPECT_EQ(Meta(head, "keywords"), "\"\xC3\xA9\"\r\n");
  EXPECT_EQ(head.headings, Texts{"\xC3\xA9 <"});
}

TEST(PageHead, TheWholePageTellsWhatItsHeadIsIn) {
  std::string russian;
  for (int i = 0; i < 10; ++i) russian += "\xD0\xB4";
  const std::string head = "<meta charset=koi8-r><title>\xD0\xB4</title><body>";
  EXPECT_EQ(Title(head + russian), "\xD0\xB4");
  EXPECT_EQ(Title(head + russian + "\xD0"), "\xD0\xBF\xE2\x95\xA2");  // as KOI8-R: not UTF-8
}

TEST(PageHead, TheDefaultIsAskedForOnlyWhereItCounts) {
  int asked = 0;
  const auto title = [&](const char* page) {
    return FindPageHead(page, Headings::kNo,
                        [&] {
                          ++asked;
                          return 1251;
                        })
        .title;
  };
  EXPECT_EQ(title("<title>ASCII</title>"), "ASCII");
  EXPECT_EQ(title("<meta charset=koi8-r><title>\xC1</title>"), "\xD0\xB0");
  EXPECT_EQ(title("<title>\xD0\xB0</title>"), "\xD0\xB0");
  EXPECT_EQ(asked, 0);
  EXPECT_EQ(title("<title>\xE0</title>"), "\xD0\xB0");
  EXPECT_EQ(asked, 1);
}

TEST(PageHead, FindsHeadingsOfTheFirstThreeLevels) {
  EXPECT_EQ(HeadingsOf("<body><h1>One</h1><p>Text</p><H2 align=center>Two</H2><h3>Three</h3>"
                       "<h4>Four</h4><h5>Five</h5></body>"),
            (Texts{"One", "Two", "Three"}));
}

TEST(PageHead, WithoutHeadingsWantedThereAreNone) {
  EXPECT_TRUE(Head("<h1>One</h1>").headings.empty());
}

TEST(PageHead, ATagOfAnyLengthIsPassedOver) {
  EXPECT_EQ(Title("<meta name=\"" + std::string(1 << 20, 'x') + "\"><title>A</title>"), "A");
}

}  // namespace
}  // namespace scrivo
