#include "project/sitemap_encoding.h"

#include <gtest/gtest.h>

#include "html/charset.h"
#include "project/sitemap.h"
#include "tests/hhc/utf16_text.h"
#include "text/code_page.h"

namespace scrivo {
namespace {

std::string Named(const std::string& name) {
  return "<ul><li><object type=\"text/sitemap\"><param name=\"Name\" value=\"" + name +
         "\"></object></ul>\r\n";
}

std::optional<std::string> ForViewers(const std::string& bytes, int code_page) {
  std::size_t lost = 0;
  return SitemapForViewers(bytes, code_page, &lost);
}

TEST(SitemapForViewers, TurnsUtf8IntoTheProjectsCodePage) {
  const std::string name = "\u0421\u043F\u0440\u0430\u0432\u043A\u0430";
  const std::string expected = Named(FromUtf8(name, 1251));
  EXPECT_EQ(ForViewers(Named(name), 1251), expected);
  EXPECT_EQ(ForViewers(std::string(kUtf8Mark) + Named(name), 1251), expected);
  EXPECT_EQ(ForViewers(Utf16Text(Named(name), true), 1251), expected);
  EXPECT_EQ(ForViewers(Utf16Text(Named(name), false), 1251), expected);
}

TEST(SitemapForViewers, LeavesAloneWhatViewersReadAlready) {
  EXPECT_EQ(ForViewers(Named("plain &amp; simple"), 1251), std::nullopt);
  EXPECT_EQ(ForViewers(Named("\xD1\xEF\xF0"), 1251), std::nullopt);
  // Another code page, as it is said to be in, is the author's choice.
  EXPECT_EQ(ForViewers("<meta charset=windows-1251>" + Named("\xD1\xEF\xF0"), 1252), std::nullopt);
}

TEST(SitemapForViewers, WritesReferencesForWhatTheCodePageLacks) {
  const std::string text = Named("\u65E5 &#26412; caf\u00E9 &eacute; &lt;b&gt; R&D");
  EXPECT_EQ(ForViewers(text, 1252), Named("&#26085; &#26412; caf\xE9 \xE9 &lt;b&gt; R&D"));
  // There a reference to one of the first characters would be read as a byte of the code page.
  EXPECT_EQ(ForViewers(text, 1251), Named("&#26085; &#26412; caf? ? &lt;b&gt; R&D"));
  std::size_t lost = 1;
  SitemapForViewers(text, 1251, &lost);
  EXPECT_EQ(lost, 5u);
}

TEST(SitemapForViewers, CorrectsTheCharsetThatIsDeclared) {
  const std::string name = "\u0421\u043F";
  const auto of = [&](const std::string& head) {
    const std::string text = ForViewers(head + Named(name), 1251).value_or("-");
    return text.substr(0, text.find("<ul>"));
  };
  EXPECT_EQ(of("<meta charset=\"utf-8\">"), "<meta charset=\"windows-1251\">");
  EXPECT_EQ(of("<META http-equiv=Content-Type content=\"text/html; charset=UTF-8\"/>"),
            "<META http-equiv=Content-Type content=\"text/html; charset=windows-1251\"/>");
  EXPECT_EQ(of("<?xml version=\"1.0\" encoding='utf-8'?>"),
            "<?xml version=\"1.0\" encoding='windows-1251'?>");
  EXPECT_EQ(of("<meta name=generator content=\"utf-8\">"),
            "<meta name=generator content=\"utf-8\">");
}

TEST(SitemapForViewers, IsReadBackTheSameInEveryLanguage) {
  const struct {
    int code_page;
    std::string name;
  } kCases[] = {{874, "\u0E0A\u0E48\u0E27\u0E22"},
                {932, "\u65E5\u672C\u8A9E\u8868"},
                {936, "\u4E2D\u6587\u5E2E\u52A9"},
                {949, "\uB3C4\uC6C0\uB9D0"},
                {950, "\u4E2D\u6587\u529F\u80FD"},
                {1250, "P\u0159\u00EDru\u010Dka"},
                {1251, "\u0421\u043F\u0440\u0430\u0432\u043A\u0430"},
                {1253, "\u0392\u03BF\u03AE\u03B8\u03B5\u03B9\u03B1"},
                {1254, "Yard\u0131m \u0130\u011F"},
                {1255, "\u05E2\u05D6\u05E8\u05D4"},
                {1256, "\u0645\u0633\u0627\u0639\u062F\u0629"},
                {1257, "\u017Dinynas \u0105"},
                {1258, "Tr\u1EE3 gi\u00FAp \u0111\u01B0"},
                {1252, "\u65E5\u672C and caf\u00E9"}};
  for (const auto& given : kCases) {
    const auto stored = ForViewers("<meta charset=utf-8>" + Named(given.name), given.code_page);
    ASSERT_TRUE(stored) << given.code_page;
    const Sitemap map = ReadSitemap(*stored, given.code_page);
    EXPECT_EQ(map.code_page, given.code_page);
    ASSERT_EQ(map.items.size(), 1u);
    EXPECT_EQ(map.items[0].name, given.name);
  }
}

}  // namespace
}  // namespace scrivo
