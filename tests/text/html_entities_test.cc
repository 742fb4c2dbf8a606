#include "text/html_entities.h"

#include <gtest/gtest.h>

namespace scrivo {
namespace {

TEST(DecodeEntities, LeavesTextWithoutReferencesAlone) {
  EXPECT_EQ(DecodeEntities(""), "");
  EXPECT_EQ(DecodeEntities("R & D \u00E4"), "R & D \u00E4");
}

TEST(DecodeEntities, ReadsNames) {
  EXPECT_EQ(DecodeEntities("&lt;a&gt; &amp;amp; &quot;&apos;"), "<a> &amp; \"'");
  EXPECT_EQ(DecodeEntities("&nbsp;&euro;&thetasym;&Ouml;&ouml;"), "\u00A0\u20AC\u03D1\u00D6\u00F6");
}

TEST(DecodeEntities, KeepsUnknownNames) {
  EXPECT_EQ(DecodeEntities("&nosuch; &; & &Amp;"), "&nosuch; &; & &Amp;");
}

TEST(DecodeEntities, ReadsNumbers) {
  EXPECT_EQ(DecodeEntities("&#65;&#x42;&#X43;&#8364;&#x1F600;"), "ABC\u20AC\U0001F600");
  EXPECT_EQ(DecodeEntities("&#65 &#65x"), "A Ax");
}

TEST(DecodeEntities, TakesTheControlRangeAsWindowsCharacters) {
  EXPECT_EQ(DecodeEntities("&#128;&#150;&#x99;"), "\u20AC\u2013\u2122");
}

TEST(DecodeEntities, ReplacesNumbersThatAreNoCharacter) {
  EXPECT_EQ(DecodeEntities("&#0;&#xD800;&#1114112;&#9999999999;"), "\uFFFD\uFFFD\uFFFD\uFFFD");
}

TEST(DecodeEntities, KeepsAHashWithoutDigits) {
  EXPECT_EQ(DecodeEntities("&#; &#x; &#"), "&#; &#x; &#");
}

TEST(DecodeEntities, AcceptsTheOldNamesWithoutSemicolon) {
  EXPECT_EQ(DecodeEntities("&copy 2010 &ampx &notit"), "\u00A9 2010 &x \u00ACit");
  EXPECT_EQ(DecodeEntities("&Alpha "), "&Alpha ");
}

TEST(DecodeEntities, LeavesTheQueriesOfAddressesAlone) {
  EXPECT_EQ(DecodeEntities("a?b=1&copy=2&lt3&amp;d", EntityPlace::kAttribute),
            "a?b=1&copy=2&lt3&d");
  EXPECT_EQ(DecodeEntities("&copy", EntityPlace::kAttribute), "\u00A9");
}

TEST(DecodeEntities, PassesBytesThatAreNoUtf8) {
  EXPECT_EQ(DecodeEntities("\xFF&lt;\x80"), "\xFF<\x80");
}

TEST(ReadEntity, TellsHowManyBytesItTook) {
  std::size_t length = 99;
  EXPECT_EQ(ReadEntity("&lt;b", EntityPlace::kText, &length), U'<');
  EXPECT_EQ(length, 4u);
  EXPECT_EQ(ReadEntity("& b", EntityPlace::kText, &length), 0u);
  EXPECT_EQ(length, 0u);
}

}  // namespace
}  // namespace scrivo
