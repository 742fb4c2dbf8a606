#include "text/wtf8.h"

#include <gtest/gtest.h>

namespace scrivo {
namespace {

TEST(Wtf8, IsUtf8ForAnyOrdinaryText) {
  const std::u16string wide = u"a\x00E9\x76EE\xD83D\xDE00";  // é, 目, an emoji
  const std::string text = "a\xC3\xA9\xE7\x9B\xAE\xF0\x9F\x98\x80";
  EXPECT_EQ(FromWindowsText(wide), text);
  EXPECT_EQ(ToWindowsText(text), wide);
}

TEST(Wtf8, KeepsASurrogateThatStandsAlone) {
  for (const std::u16string wide :
       {u"\xD800", u"a\xDBFF.htm", u"\xDC00", u"\xDFFF\xD800", u"\xD83D"}) {
    EXPECT_EQ(ToWindowsText(FromWindowsText(wide)), wide);
  }
  EXPECT_EQ(FromWindowsText(u"\xD834.htm"), "\xED\xA0\xB4.htm");
}

TEST(Wtf8, KeepsEveryUnit) {
  for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
    const std::u16string wide{u'<', static_cast<char16_t>(unit), u'>'};
    ASSERT_EQ(ToWindowsText(FromWindowsText(wide)), wide) << unit;
  }
}

TEST(Wtf8, TakesAReplacementForOtherBytes) {
  EXPECT_EQ(ToWindowsText("caf\xE9.htm"), u"caf\xFFFD.htm");
  EXPECT_EQ(ToWindowsText("\xED\xA0"), u"\xFFFD\xFFFD");
}

}  // namespace
}  // namespace scrivo
