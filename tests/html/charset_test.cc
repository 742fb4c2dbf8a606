#include "html/charset.h"

#include <gtest/gtest.h>

#include "text/code_page.h"

namespace scrivo {
namespace {

// The Chinese "contents", in GBK: its bytes are well-formed UTF-8 too, as two other characters.
const std::string kContentsInGbk = "\xC4\xBF\xC2\xBC";

std::string Declaring(const std::string& charset, const std::string& body) {
  return "<meta charset=" + charset + "><body>" + body;
}

TEST(CodePageOfPage, AMarkGoesBeforeADeclaration) {
  EXPECT_EQ(CodePageOfPage("\xEF\xBB\xBF<meta charset=gbk>" + kContentsInGbk), kUtf8CodePage);
  EXPECT_EQ(CodePageOfPage("\xEF\xBB\xBF<meta charset=windows-1252>ASCII"), kUtf8CodePage);
  EXPECT_EQ(CodePageOfPage("\xEF\xBB\xBF"), kUtf8CodePage);
}

TEST(CodePageOfPage, ADeclarationGoesBeforeTheLooksOfTheBytes) {
  EXPECT_EQ(CodePageOfPage(Declaring("windows-1251", "\xEF\xF0\xE8")), 1251);
  EXPECT_EQ(CodePageOfPage(Declaring("gbk", kContentsInGbk)), 936);
  EXPECT_EQ(CodePageOfPage(Declaring("koi8-r", "ASCII")), 20866);
}

TEST(CodePageOfPage, TenWellFormedCharactersOverruleADeclaration) {
  std::string nine, ten;
  for (int i = 0; i < 10; ++i) (i < 9 ? nine : ten) += "\xC3\xA9";  // also letters of 1252
  ten += nine;
  EXPECT_EQ(CodePageOfPage(Declaring("windows-1252", nine)), 1252);
  EXPECT_EQ(CodePageOfPage(Declaring("windows-1252", ten)), kUtf8CodePage);
  EXPECT_EQ(CodePageOfPage(Declaring("windows-1252", ten + "\xE9")), 1252);
}

TEST(CodePageOfPage, BytesThatTheDeclaredCodePageLacksOverruleItToo) {
  EXPECT_EQ(CodePageOfPage(Declaring("windows-1252", "\xC3\x81")), kUtf8CodePage);
  EXPECT_EQ(CodePageOfPage(Declaring("big5", "\xE7\xB4\x85")), kUtf8CodePage);
  EXPECT_EQ(CodePageOfPage(Declaring("windows-1252", "\x81")), 1252);  // nor is it UTF-8
}

TEST(CodePageOfPage, Utf8ThatIsDeclaredAndNowhereFoundCountsForNothing) {
  EXPECT_EQ(CodePageOfPage(Declaring("utf-8", "caf\xE9")), std::nullopt);
  EXPECT_EQ(CodePageOfPage(Declaring("utf-8", "caf\xC3\xA9 \xE9")), kUtf8CodePage);
  EXPECT_EQ(CodePageOfPage(Declaring("utf-8", "\xEF\xBF\xBD \xE9")), kUtf8CodePage);
}

TEST(CodePageOfPage, WithoutADeclarationWellFormedUtf8IsUtf8) {
  EXPECT_EQ(CodePageOfPage("caf\xC3\xA9"), kUtf8CodePage);
  EXPECT_EQ(CodePageOfPage("caf\xE9"), std::nullopt);
  EXPECT_EQ(CodePageOfPage("plain"), std::nullopt);
  EXPECT_EQ(CodePageOfPage(Declaring("klingon", "caf\xC3\xA9")), kUtf8CodePage);
}

TEST(DeclaredCodePage, IsReadFromBothFormsOfTheElement) {
  EXPECT_EQ(DeclaredCodePage("<meta http-equiv=\"Content-Type\" content=\"text/html; "
                             "charset=windows-1251\">"),
            1251);
  EXPECT_EQ(DeclaredCodePage("<META CHARSET = 'UTF-8' />"), kUtf8CodePage);
  EXPECT_EQ(
      DeclaredCodePage("<meta http-equiv=content-type content='text/html;charset=utf8; x=y'>"),
      kUtf8CodePage);
  EXPECT_EQ(DeclaredCodePage("<meta content='x charset = \"koi8-r\" y' http-equiv=Content-Type>"),
            20866);
  EXPECT_EQ(DeclaredCodePage("<meta name=Content-Type content='text/html; charset=shift_jis'>"),
            932);
  EXPECT_EQ(DeclaredCodePage("<meta http-equiv=content-type content='text/html'>"), std::nullopt);
  EXPECT_EQ(DeclaredCodePage("<meta name=charset content=utf-8>"), std::nullopt);
  EXPECT_EQ(DeclaredCodePage("<meta name=keywords content='charset=utf-8'>"), std::nullopt);
}

TEST(DeclaredCodePage, OfUtf16IsThatOfUtf8) {
  EXPECT_EQ(DeclaredCodePage("<meta charset=UTF-16>"), kUtf8CodePage);
  EXPECT_EQ(DeclaredCodePage("<meta http-equiv=content-type content='text/html; charset=unicode'>"),
            kUtf8CodePage);
}

TEST(DeclaredCodePage, TheFirstKnownOfSeveralCounts) {
  EXPECT_EQ(
      DeclaredCodePage("<meta charset=klingon><meta charset=windows-1250><meta charset=utf-8>"),
      1250);
}

TEST(DeclaredCodePage, StandsOutsideCommentsScriptsAndTitles) {
  EXPECT_EQ(DeclaredCodePage("<!-- <meta charset=koi8-r> --><meta charset=windows-1251>"), 1251);
  EXPECT_EQ(DeclaredCodePage("<!-- <meta charset=koi8-r> -->"), std::nullopt);
  EXPECT_EQ(DeclaredCodePage("<script>'<meta charset=koi8-r>'</script>"), std::nullopt);
  EXPECT_EQ(DeclaredCodePage("<title>The <meta charset=koi8-r> tag</title>"), std::nullopt);
}

TEST(DeclaredCodePage, StandsInTheHeadHoweverLongOrInTheFirstKilobytes) {
  const std::string style = "<style>" + std::string(20000, 'x') + "</style>";
  EXPECT_EQ(DeclaredCodePage("<head>" + style + "<meta charset=koi8-r>"), 20866);
  EXPECT_EQ(DeclaredCodePage("<body><p>x<meta charset=koi8-r>"), 20866);
  EXPECT_EQ(DeclaredCodePage("<body>" + style + "<meta charset=koi8-r>"), std::nullopt);
}

TEST(DeclaredCodePage, MayBeThatOfXml) {
  EXPECT_EQ(DeclaredCodePage("<?xml version='1.0' encoding='gb2312'?><html>"), 936);
  EXPECT_EQ(DeclaredCodePage("<?xml version=\"1.0\" encoding=\"gb2312\"?><meta charset=koi8-r>"),
            20866);
  EXPECT_EQ(DeclaredCodePage("<?xml version=\"1.0\"?><html>"), std::nullopt);
}

// Ten characters: evidence of UTF-8 also where the system finds some of these bytes in its Big5.
std::string PlainUtf8() {
  std::string text;
  while (text.size() < 30) text += "\xE7\xB4\x85\xE6\xA8\xB9";
  return text;
}

TEST(WithUtf8Declared, CorrectsWhatViewersWouldBelieve) {
  const std::string text = PlainUtf8();
  EXPECT_EQ(WithUtf8Declared(
                "<META HTTP-EQUIV=Content-Type CONTENT='text/html; charset=Big5'>\r\n" + text),
            "<META HTTP-EQUIV=Content-Type CONTENT='text/html; charset=utf-8'>\r\n" + text);
  const std::string element =
      "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=utf-8\"";
  EXPECT_EQ(WithUtf8Declared("<?xml version='1.0' encoding='big5'?><meta charset=\"big5\"/>"
                             "<meta charset=klingon><meta charset=UTF8><meta charset=gbk>" +
                             text),
            "<?xml version='1.0' encoding='utf-8'?>" + element +
                " /><meta charset=klingon><meta charset=UTF8>" + element + ">" + text);
  EXPECT_EQ(WithUtf8Declared("<meta charset=big5 http-equiv=content-type content='charset=big5'>"
                             "<meta charset=big5 name=author content=A>" +
                             text),
            element + "><meta charset=utf-8 name=author content=A>" + text);
}

TEST(WithUtf8Declared, LeavesAllOtherPagesAsTheyAre) {
  const std::string text = PlainUtf8();
  for (const std::string& page :
       {Declaring("utf-8", text), Declaring("utf8", text), Declaring("big5", "ASCII"),
        Declaring("big5", "\xAC\xF5"), Declaring("gbk", kContentsInGbk),
        "\xEF\xBB\xBF" + Declaring("big5", text), Declaring("klingon", text), text,
        Declaring("utf-8", text) + "<meta charset=big5>", std::string()}) {
    EXPECT_EQ(WithUtf8Declared(page), std::nullopt) << page;
  }
}

TEST(WithUtf8Declared, ChangesNothingTwice) {
  const auto once = WithUtf8Declared(Declaring("big5", "\xE7\xB4\x85"));
  ASSERT_TRUE(once);
  EXPECT_EQ(WithUtf8Declared(*once), std::nullopt);
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

TEST(Utf16AsUtf8, ReadsBothByteOrdersAndKeepsTheMark) {
  for (const bool little : {true, false}) {
    const auto utf8 = Utf16AsUtf8(Utf16(u"\xFEFF<p>\x00E9 \xD83D\xDE00", little));
    ASSERT_TRUE(utf8);
    EXPECT_EQ(*utf8, "\xEF\xBB\xBF<p>\xC3\xA9 \xF0\x9F\x98\x80");
    EXPECT_EQ(CodePageOfPage(*utf8), kUtf8CodePage);
  }
}

TEST(Utf16AsUtf8, ReplacesHalfAPairAndDropsHalfAUnit) {
  const std::string mark = "\xEF\xBB\xBF", bad = "\xEF\xBF\xBD";
  EXPECT_EQ(Utf16AsUtf8(Utf16(u"\xFEFF\xDE00"
                              u"a",
                              true)),
            mark + bad + "a");
  EXPECT_EQ(Utf16AsUtf8(Utf16(u"\xFEFF\xD83D"
                              u"a",
                              true)),
            mark + bad + "a");
  EXPECT_EQ(Utf16AsUtf8(Utf16(u"\xFEFF\xD83D\xD83D\xDE00", false)),
            mark + bad + "\xF0\x9F\x98\x80");
  EXPECT_EQ(Utf16AsUtf8(Utf16(u"\xFEFF"
                              u"a\xD83D",
                              true)),
            mark + "a" + bad);
  EXPECT_EQ(Utf16AsUtf8(Utf16(u"\xFEFF"
                              u"ab",
                              true)
                            .substr(0, 5)),
            mark + "a");
}

TEST(Utf16AsUtf8, IsForTextWithAMarkOnly) {
  EXPECT_EQ(Utf16AsUtf8(""), std::nullopt);
  EXPECT_EQ(Utf16AsUtf8("\xFF"), std::nullopt);
  EXPECT_EQ(Utf16AsUtf8("<p>"), std::nullopt);
  EXPECT_EQ(Utf16AsUtf8("\xEF\xBB\xBF<p>"), std::nullopt);
}

}  // namespace
}  // namespace scrivo
