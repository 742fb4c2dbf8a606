#include "text/languages.h"

#include <gtest/gtest.h>

#include "text/code_page.h"

namespace scrivo {
namespace {

TEST(Languages, AreKnownByTheirTagsInAnyForm) {
  EXPECT_EQ(LanguageFromTag("zh-tw"), 0x404u);
  EXPECT_EQ(LanguageFromTag("zh-TW"), 0x404u);
  EXPECT_EQ(LanguageFromTag("zh_CN"), 0x804u);
  EXPECT_EQ(LanguageFromTag("zh-Hant"), 0x404u);
  EXPECT_EQ(LanguageFromTag("zh"), 0x804u);
  EXPECT_EQ(LanguageFromTag("en"), 0x409u);
  EXPECT_EQ(LanguageFromTag(" de-AT "), 0xC07u);
  EXPECT_EQ(LanguageFromTag("de-LU"), 0x407u) << "a country that is not known";
  EXPECT_EQ(LanguageFromTag("no"), 0x414u);
  EXPECT_EQ(LanguageFromTag(""), 0u);
  EXPECT_EQ(LanguageFromTag("xx"), 0u);
  EXPECT_EQ(TagOfLanguage(0x404), "zh-tw");
  EXPECT_EQ(TagOfLanguage(0x7F), "");
}

TEST(Languages, StandInAProjectByNumberAndName) {
  EXPECT_EQ(LanguageOption(0x409), "0x409 English (United States)");
  EXPECT_EQ(LanguageOption(0xC07), "0xc07 German (Austria)");
  EXPECT_EQ(LanguageOption(0x1407), "0x1407 German") << "of a country that is not known";
  EXPECT_EQ(LanguageOption(0x7F), "0x7f");
}

TEST(Languages, EachAnsiCodePageHasOneThatIsReadInIt) {
  for (const int code_page :
       {874, 932, 936, 949, 950, 1250, 1251, 1252, 1253, 1254, 1255, 1256, 1257, 1258}) {
    EXPECT_EQ(CodePageOfLanguage(LanguageOfCodePage(code_page)), code_page);
    EXPECT_EQ(AnsiCodePageFor(code_page), code_page);
  }
}

TEST(Languages, OtherCodePagesHaveTheAnsiOneOfTheirScript) {
  EXPECT_EQ(AnsiCodePageFor(20866), 1251);
  EXPECT_EQ(AnsiCodePageFor(28592), 1250);
  EXPECT_EQ(AnsiCodePageFor(28597), 1253);
  EXPECT_EQ(AnsiCodePageFor(28605), 1252);
  EXPECT_EQ(AnsiCodePageFor(kUtf8CodePage), kUtf8CodePage);
}

}  // namespace
}  // namespace scrivo
