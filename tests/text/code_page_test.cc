#include "text/code_page.h"

#include <gtest/gtest.h>

namespace scrivo {
namespace {

TEST(CodePageFromName, KnowsTheNamesThatPagesWrite) {
  EXPECT_EQ(CodePageFromName("utf-8"), 65001);
  EXPECT_EQ(CodePageFromName("UTF8"), 65001);
  EXPECT_EQ(CodePageFromName("cp65001"), 65001);
  EXPECT_EQ(CodePageFromName("windows-1251"), 1251);
  EXPECT_EQ(CodePageFromName("Windows-874"), 874);
  EXPECT_EQ(CodePageFromName("cp866"), 866);
  EXPECT_EQ(CodePageFromName("Shift_JIS"), 932);
  EXPECT_EQ(CodePageFromName("gb2312"), 936);
  EXPECT_EQ(CodePageFromName("ks_c_5601-1987"), 949);
  EXPECT_EQ(CodePageFromName("Big5"), 950);
  EXPECT_EQ(CodePageFromName("koi8-r"), 20866);
}

TEST(CodePageFromName, TakesTheLabelsThatBrowsersTake) {
  const std::pair<const char*, int> kLabels[] = {
      {"utf8", 65001},
      {"unicode-1-1-utf-8", 65001},
      {"x-gbk", 936},
      {"gb2312", 936},
      {"GB_2312-80", 936},
      {"chinese", 936},
      {"iso-ir-58", 936},
      {"big5", 950},
      {"x-x-big5", 950},
      {"cn-big5", 950},
      {"csbig5", 950},
      {"sjis", 932},
      {"x-sjis", 932},
      {"windows-31j", 932},
      {"ms932", 932},
      {"ks_c_5601-1987", 949},
      {"euc-kr", 949},
      {"windows-949", 949},
      {"latin1", 1252},
      {"cp819", 1252},
      {"ansi_x3.4-1968", 1252},
      {"x-cp1251", 1251},
      {"koi8", 20866},
      {"koi8-ru", 21866},
      {"cp866", 866},
      {"greek8", 28597},
      {"hebrew", 1255},
      {"dos-874", 874},
      {"tis-620", 874},
      {"latin5", 1254},
      {"windows-1258", 1258},
      {"cyrillic", 28595},
      {"iso_8859-2:1987", 28592},
      {"l9", 28605},
      {"x-mac-roman", 10000},
      {"iso-8859-13", 28603},
      {"iso-8859-6-i", 28596},
  };
  for (const auto& [label, code_page] : kLabels) {
    EXPECT_EQ(CodePageFromName(label), code_page) << label;
  }
}

TEST(CodePageFromName, TakesNoPartOfALabelAndNoTwoLabels) {
  EXPECT_FALSE(CodePageFromName("utf"));
  EXPECT_FALSE(CodePageFromName("koi8 koi8-r"));
}

TEST(ToUtf8, KnowsTheOtherPartsOfIso8859AndTheCodePagesOfTheMacintosh) {
  EXPECT_EQ(ToUtf8("\xC1", 28596), "\u0621");
  EXPECT_EQ(ToUtf8("\xA5", 28603), "\u201E");
  EXPECT_EQ(ToUtf8("\x80", 10000), "\u00C4");
  EXPECT_EQ(ToUtf8("\x80", 10007), "\u0410");
  EXPECT_EQ(FromUtf8("\u0410", 10007), "\x80");
}

TEST(CodePageFromName, TakesLatin1AsTheWindowsPageThatContainsIt) {
  EXPECT_EQ(CodePageFromName("iso-8859-1"), 1252);
  EXPECT_EQ(CodePageFromName("us-ascii"), 1252);
  EXPECT_EQ(CodePageFromName("iso-8859-9"), 1254);
}

TEST(CodePageFromName, IgnoresBlanksAndQuotesAround) {
  EXPECT_EQ(CodePageFromName(" \"utf-8\"\r\n"), 65001);
}

TEST(CodePageFromName, GivesNothingForAnUnknownName) {
  EXPECT_FALSE(CodePageFromName(""));
  EXPECT_FALSE(CodePageFromName("  "));
  EXPECT_FALSE(CodePageFromName("windows-1249"));
  EXPECT_FALSE(CodePageFromName("windows-"));
  EXPECT_FALSE(CodePageFromName("cp12500000000000"));
  EXPECT_FALSE(CodePageFromName("x-klingon"));
}

TEST(CodePageOfLanguage, FollowsTheLanguageAndItsScript) {
  EXPECT_EQ(CodePageOfLanguage(0x409), 1252);
  EXPECT_EQ(CodePageOfLanguage(0xC0A), 1252);
  EXPECT_EQ(CodePageOfLanguage(0x419), 1251);
  EXPECT_EQ(CodePageOfLanguage(0x405), 1250);
  EXPECT_EQ(CodePageOfLanguage(0x408), 1253);
  EXPECT_EQ(CodePageOfLanguage(0x41F), 1254);
  EXPECT_EQ(CodePageOfLanguage(0x40D), 1255);
  EXPECT_EQ(CodePageOfLanguage(0x401), 1256);
  EXPECT_EQ(CodePageOfLanguage(0x427), 1257);
  EXPECT_EQ(CodePageOfLanguage(0x42A), 1258);
  EXPECT_EQ(CodePageOfLanguage(0x41E), 874);
  EXPECT_EQ(CodePageOfLanguage(0x411), 932);
  EXPECT_EQ(CodePageOfLanguage(0x412), 949);
  EXPECT_EQ(CodePageOfLanguage(0x804), 936);
  EXPECT_EQ(CodePageOfLanguage(0x404), 950);
  EXPECT_EQ(CodePageOfLanguage(0xC04), 950);
  EXPECT_EQ(CodePageOfLanguage(0x81A), 1250);
  EXPECT_EQ(CodePageOfLanguage(0xC1A), 1251);
  EXPECT_EQ(CodePageOfLanguage(0), 1252);
}

TEST(ToUtf8, ReadsEachSingleBytePage) {
  EXPECT_EQ(ToUtf8("a\x93\xE4\x80", 1252), "a\u201C\u00E4\u20AC");
  EXPECT_EQ(ToUtf8("\xB9", 1250), "\u0105");
  EXPECT_EQ(ToUtf8("\xD0", 1251), "\u0420");
  EXPECT_EQ(ToUtf8("\xE1", 1253), "\u03B1");
  EXPECT_EQ(ToUtf8("\xFD", 1254), "\u0131");
  EXPECT_EQ(ToUtf8("\xE0", 1255), "\u05D0");
  EXPECT_EQ(ToUtf8("\xC7", 1256), "\u0627");
  EXPECT_EQ(ToUtf8("\xE0", 1257), "\u0105");
  EXPECT_EQ(ToUtf8("\xD5", 1258), "\u01A0");
  EXPECT_EQ(ToUtf8("\xA1", 874), "\u0E01");
  EXPECT_EQ(ToUtf8("\x80", 866), "\u0410");
  EXPECT_EQ(ToUtf8("\xC1", 20866), "\u0430");
  EXPECT_EQ(ToUtf8("\xA4", 28605), "\u20AC");
}

TEST(ToUtf8, ReadsEachDoubleBytePage) {
  EXPECT_EQ(ToUtf8("a\x82\xA0z", 932), "a\u3042z");
  EXPECT_EQ(ToUtf8("\xB1", 932), "\uFF71");
  EXPECT_EQ(ToUtf8("\xD6\xD0", 936), "\u4E2D");
  EXPECT_EQ(ToUtf8("\xB0\xA1", 949), "\uAC00");
  EXPECT_EQ(ToUtf8("\xA4\xA4", 950), "\u4E2D");
}

TEST(ToUtf8, PutsTheReplacementWhereAByteHasNoMeaning) {
  EXPECT_EQ(ToUtf8("a\xD2z", 1253), "a\uFFFDz");
  EXPECT_EQ(ToUtf8("a\x82", 932), "a\uFFFD");
  EXPECT_EQ(ToUtf8("\xFF\xD6\xD0", 936), "\uFFFD\u4E2D");
}

TEST(ToUtf8, PassesAnUnassignedControlByteThrough) { EXPECT_EQ(ToUtf8("\x81", 1252), "\u0081"); }

TEST(ToUtf8, TreatsAnUnknownNumberAsWestern) { EXPECT_EQ(ToUtf8("\xE4", 12345), "\u00E4"); }

TEST(ToUtf8, KeepsGoodUtf8AndRepairsBad) {
  EXPECT_EQ(ToUtf8("\u00E4\u20AC\U0001F600", 65001), "\u00E4\u20AC\U0001F600");
  EXPECT_EQ(ToUtf8("a\xE4z", 65001), "a\uFFFDz");
  EXPECT_EQ(ToUtf8("\xE2\x82", 65001), "\uFFFD");
  EXPECT_EQ(ToUtf8("\xC0\xAF", 65001), "\uFFFD\uFFFD");                      // overlong
  EXPECT_EQ(ToUtf8("\xED\xA0\x80", 65001), "\uFFFD\uFFFD\uFFFD");            // surrogate
  EXPECT_EQ(ToUtf8("\xF4\x90\x80\x80", 65001), "\uFFFD\uFFFD\uFFFD\uFFFD");  // past the end
}

TEST(ToUtf8, CanKeepTheBytesThatHaveNoMeaning) {
  struct {
    std::string bytes;
    int code_page;
  } const texts[] = {{"a\xD2z\xE1", 1253},       {"\xDB\xDC", 874}, {"a\x82", 932},
                     {"\xFF\xD6\xD0\x80z", 936}, {"\x81 ", 950},    {"\xFF", 949}};
  for (const auto& [bytes, code_page] : texts) {
    const std::string utf8 = ToUtf8(bytes, code_page, Undefined::kKept);
    EXPECT_TRUE(IsUtf8(utf8));
    std::size_t lost = 0;
    EXPECT_EQ(FromUtf8(utf8, code_page, &lost, Undefined::kKept), bytes) << code_page;
    EXPECT_EQ(lost, 0u) << code_page;
    FromUtf8(utf8, code_page, &lost);
    EXPECT_GT(lost, 0u) << "not asked to keep any: " << code_page;
    EXPECT_EQ(WithoutKeptBytes(utf8), ToUtf8(bytes, code_page));
  }
  EXPECT_EQ(WithoutKeptBytes("\xE4 \xF4\x8F\x9E\x80 \U0010F77F"), "\xE4 \uFFFD \U0010F77F")
      << "what is no UTF-8 stays";
  EXPECT_EQ(ToUtf16(ToUtf8("\xD2", 1253, Undefined::kKept)), u"\u00D2");
}

TEST(FromUtf8, ComesBackFromEachPage) {
  for (const int page : {866, 874, 1250, 1251, 1252, 1253, 1254, 1255, 1256, 1257, 1258, 20866,
                         21866, 28592, 28595, 28597, 28605}) {
    std::string bytes;
    for (int b = 1; b < 256; ++b) {
      const std::string one(1, static_cast<char>(b));
      if (ToUtf8(one, page) != "\uFFFD") bytes += one;
    }
    std::size_t lost = 0;
    EXPECT_EQ(FromUtf8(ToUtf8(bytes, page), page, &lost), bytes) << page;
    EXPECT_EQ(lost, 0u) << page;
  }
}

TEST(FromUtf8, WritesEachDoubleBytePage) {
  EXPECT_EQ(FromUtf8("\u4E2Dy", 936), "\xD6\xD0y");
  EXPECT_EQ(FromUtf8("x\u3042", 932), "x\x82\xA0");
  EXPECT_EQ(FromUtf8("\uAC00y", 949), "\xB0\xA1y");
  EXPECT_EQ(FromUtf8("\u4E2D", 950), "\xA4\xA4");
}

TEST(FromUtf8, CountsWhatThePageLacks) {
  std::size_t lost = 0;
  EXPECT_EQ(FromUtf8("\u0420a\u20AC\u4E2D", 1252, &lost), "?a\x80?");
  EXPECT_EQ(lost, 2u);
  EXPECT_EQ(FromUtf8("\u00E4z", 932, &lost), "?z");
  EXPECT_EQ(lost, 3u);
  EXPECT_EQ(FromUtf8("a\xFFz", 1252, &lost), "a?z");
  EXPECT_EQ(lost, 4u);
}

TEST(FromUtf8, WorksWithoutACounter) {
  EXPECT_EQ(FromUtf8("\u4E2D", 1252), "?");
  EXPECT_EQ(FromUtf8("\u0E01", 950), "?");
}

TEST(NextUtf8, TakesOneCharacterAtATime) {
  std::string_view text = "a\u00E4\U0001F600\x80";
  EXPECT_EQ(NextUtf8(&text), U'a');
  EXPECT_EQ(NextUtf8(&text), U'\u00E4');
  EXPECT_EQ(NextUtf8(&text), U'\U0001F600');
  EXPECT_EQ(NextUtf8(&text), U'\uFFFD');
  EXPECT_TRUE(text.empty());
}

TEST(AppendUtf8, RefusesWhatIsNoCharacter) {
  std::string out;
  AppendUtf8(0xD800, &out);
  AppendUtf8(0x110000, &out);
  EXPECT_EQ(out, "\uFFFD\uFFFD");
}

TEST(IsUtf8, TellsGoodFromBad) {
  EXPECT_TRUE(IsUtf8(""));
  EXPECT_TRUE(IsUtf8("plain"));
  EXPECT_TRUE(IsUtf8("\u00E4\uFFFD\U0001F600"));
  EXPECT_FALSE(IsUtf8("caf\xE9"));
  EXPECT_FALSE(IsUtf8("\xE2\x82"));
}

TEST(AsciiPrefix, EndsAtTheFirstByteBeyond) {
  const std::string ascii = "0123456789abcdefghij";
  EXPECT_EQ(AsciiPrefix(ascii), ascii.size());
  EXPECT_EQ(AsciiPrefix(""), 0u);
  for (std::size_t i = 0; i < ascii.size(); ++i) {
    std::string text = ascii;
    text[i] = '\x80';
    EXPECT_EQ(AsciiPrefix(text), i);
  }
}

TEST(ToUtf16, MakesSurrogatePairsPastTheBasicPlane) {
  EXPECT_EQ(ToUtf16("a\u20AC\U0001F600"), std::u16string(u"a\u20AC\U0001F600"));
}

}  // namespace
}  // namespace scrivo
