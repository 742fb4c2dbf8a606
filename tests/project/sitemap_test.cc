#include "project/sitemap.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/hhc/utf16_text.h"
#include "text/code_page.h"

namespace scrivo {
namespace {

std::string Item(const std::string& params) {
  return "<LI><OBJECT type=\"text/sitemap\">" + params + "</OBJECT>\r\n";
}

std::string Pair(const std::string& name, const std::string& value) {
  return "<param name=\"" + name + "\" value=\"" + value + "\">";
}

TEST(Sitemap, ReadsNestedLists) {
  const Sitemap map =
      ReadSitemap("<UL>" + Item(Pair("Name", "a") + Pair("Local", "a.htm")) + "<UL>" +
                      Item(Pair("Name", "b")) + "</UL>" + Item(Pair("Name", "c")) + "</UL>",
                  1252);
  ASSERT_EQ(map.items.size(), 3u);
  EXPECT_EQ(map.items[0].name, "a");
  EXPECT_EQ(map.items[0].level, 0);
  ASSERT_EQ(map.items[0].targets.size(), 1u);
  EXPECT_EQ(map.items[0].targets[0].local, "a.htm");
  EXPECT_EQ(map.items[1].level, 1);
  EXPECT_EQ(map.items[2].level, 0);
}

TEST(Sitemap, ReadsWhatTheGeneratorWritesUnescaped) {
  const Sitemap map = ReadSitemap(
      "<UL>\r\n<LI><OBJECT TYPE=\"text/sitemap\">\r\n"
      "<PARAM NAME=\"Name\" VALUE=\"label with \"quotes\"\"><PARAM NAME=\"Local\" "
      "VALUE=\"x.htm\">\r\n"
      "</OBJECT>\r\n<LI><OBJECT TYPE=\"text/sitemap\">\r\n"
      "<PARAM NAME=\"Name\" VALUE=\"a > b & <c> \"d\">e\"><PARAM NAME=\"Local\" VALUE=\"y "
      "z.htm\">\r\n"
      "</OBJECT>\r\n</UL>\r\n",
      1252);
  ASSERT_EQ(map.items.size(), 2u);
  EXPECT_EQ(map.items[0].name, "label with \"quotes\"");
  EXPECT_EQ(map.items[0].targets.at(0).local, "x.htm");
  EXPECT_EQ(map.items[1].name, "a > b & <c> \"d\">e");
  EXPECT_EQ(map.items[1].targets.at(0).local, "y z.htm");
}

TEST(Sitemap, TakesAttributesInAnyOrderAndQuoting) {
  const Sitemap map = ReadSitemap(
      "<ul><li><object type=text/sitemap>"
      "<param value=\"a title\" name=\"Name\"><param name=Local value=a.htm>"
      "<PARAM NAME='URL' VALUE='http://x/'/></object></ul>",
      1252);
  ASSERT_EQ(map.items.size(), 1u);
  EXPECT_EQ(map.items[0].name, "a title");
  EXPECT_EQ(map.items[0].targets.at(0).local, "a.htm");
  EXPECT_EQ(map.items[0].targets.at(0).url, "http://x/");
}

TEST(Sitemap, SurvivesMissingEndTagsAndSwappedLists) {
  const Sitemap map =
      ReadSitemap("<LI><OBJECT type=\"text/sitemap\">" + Pair("Name", "a") +
                      "<LI><OBJECT type=\"text/sitemap\">" + Pair("Name", "b") + "<UL></OBJECT>" +
                      Item(Pair("Name", "c")) + "</UL></UL></UL>" + Item(Pair("Name", "d")),
                  1252);
  ASSERT_EQ(map.items.size(), 4u);
  EXPECT_EQ(map.items[1].level, 0);
  EXPECT_EQ(map.items[2].name, "c");
  EXPECT_EQ(map.items[3].level, 0);
}

TEST(Sitemap, NeverSkipsALevel) {
  const Sitemap map =
      ReadSitemap("<UL><UL><UL><UL>" + Item(Pair("Name", "a")) + "<UL>" + Item(Pair("Name", "b")) +
                      "<UL><UL>" + Item(Pair("Name", "c")),
                  1252);
  ASSERT_EQ(map.items.size(), 3u);
  EXPECT_EQ(map.items[0].level, 0);
  EXPECT_EQ(map.items[1].level, 1);
  EXPECT_EQ(map.items[2].level, 2);
}

TEST(Sitemap, GivesEachLocalTheNameBeforeIt) {
  const Sitemap map =
      ReadSitemap(Item(Pair("Name", "key") + Pair("Name", "first") + Pair("Local", "1.htm") +
                       Pair("Name", "second") + Pair("Local", "2.htm") + Pair("Local", "3.htm")),
                  1252);
  ASSERT_EQ(map.items.size(), 1u);
  EXPECT_EQ(map.items[0].name, "key");
  ASSERT_EQ(map.items[0].targets.size(), 3u);
  EXPECT_EQ(map.items[0].targets[0].title, "first");
  EXPECT_EQ(map.items[0].targets[1].title, "second");
  EXPECT_EQ(map.items[0].targets[2].title, "");
}

TEST(Sitemap, KeepsReferencesMergesAndMarks) {
  const Sitemap map = ReadSitemap(
      Item(Pair("Keyword", "k") + Pair("See Also", "other")) + Item(Pair("Merge", "b./b.hhc")) +
          Item(Pair("Name", "n") + Pair("New", "1") + Pair("Local", "a") + Pair("FrameName", "f")),
      1252);
  ASSERT_EQ(map.items.size(), 3u);
  EXPECT_EQ(map.items[0].see_also, "other");
  EXPECT_EQ(map.items[1].merge, "b./b.hhc");
  EXPECT_TRUE(map.items[2].is_new);
  EXPECT_EQ(map.items[2].targets.at(0).frame, "f");
}

TEST(Sitemap, ReadsTheProperties) {
  const Sitemap map =
      ReadSitemap("<OBJECT type=\"text/site properties\">" + Pair("ImageType", "Folder") +
                      Pair("Window Styles", "0x800025") + Pair("Font", "Arial,8,0") + "</OBJECT>",
                  1252);
  EXPECT_TRUE(map.properties.present);
  EXPECT_TRUE(map.properties.folder_images);
  EXPECT_EQ(map.properties.window_styles, "0x800025");
  EXPECT_EQ(map.properties.font, "Arial,8,0");
  EXPECT_TRUE(map.items.empty());
}

TEST(Sitemap, DecodesTheProjectsCodePage) {
  const Sitemap map = ReadSitemap(Item(Pair("Name", "\xC3\xEB \xE0")), 1251);
  EXPECT_EQ(map.items.at(0).name, "\u0413\u043B \u0430");
}

TEST(Sitemap, TakesReferencesAsBytesOfASingleByteCodePage) {
  const Sitemap map = ReadSitemap(Item(Pair("Name", "&Atilde;&euml;&Dstrok; &amp; &#8364;")), 1251);
  EXPECT_EQ(map.items.at(0).name, "\u0413\u043B\u0420 & \u20AC");
}

TEST(Sitemap, RecognisesUtf8ByMarkMetaOrForm) {
  EXPECT_EQ(ReadSitemap("\xEF\xBB\xBF" + Item(Pair("Name", "\u0413")), 1252).items.at(0).name,
            "\u0413");
  EXPECT_EQ(ReadSitemap("<meta http-equiv=Content-Type content=\"text/html; charset=utf-8\">" +
                            Item(Pair("Name", "\u00E4 &eacute;")),
                        1251)
                .items.at(0)
                .name,
            "\u00E4 \u00E9");
  EXPECT_EQ(ReadSitemap(Item(Pair("Name", "\u00E4")), 1252).items.at(0).name, "\u00E4");
}

TEST(Sitemap, EndsAnUnclosedValueAtTheEndOfItsTag) {
  const Sitemap map =
      ReadSitemap("<OBJECT type=\"text/sitemap\">\n<param name=\"Name\" value=\"a>\n" +
                      Pair("Local", "b.htm") + "\n</OBJECT>",
                  1252);
  ASSERT_EQ(map.items.size(), 1u);
  EXPECT_EQ(map.items[0].name, "a");
  EXPECT_EQ(map.items[0].targets.at(0).local, "b.htm");
}

TEST(Sitemap, ReadsUtf16) {
  const std::string text = "<UL>\n" + Item(Pair("Name", "\u65E5") + Pair("Local", "\u672C.htm"));
  for (const bool little : {true, false}) {
    const Sitemap map = ReadSitemap(Utf16Text(text, little), 1252);
    EXPECT_EQ(map.code_page, kUtf8CodePage);
    ASSERT_EQ(map.items.size(), 1u);
    EXPECT_EQ(map.items[0].name, "\u65E5");
    EXPECT_EQ(map.items[0].targets.at(0).local, "\u672C.htm");
    EXPECT_EQ(map.items[0].line, 2u);
  }
}

TEST(Sitemap, TakesALoneCarriageReturnAsALineEnd) {
  const Sitemap map = ReadSitemap(
      "<UL>\r" + Item("<param name=\"Name\" value=\"open>\r" + Pair("Local", "a.htm")) + "\r</UL>",
      1252);
  ASSERT_EQ(map.items.size(), 1u);
  EXPECT_EQ(map.items[0].name, "open");
  EXPECT_EQ(map.items[0].targets.at(0).local, "a.htm");
  EXPECT_EQ(map.items[0].line, 2u);
}

TEST(Sitemap, LosesNoCharacterThatAReferenceNames) {
  const Sitemap map = ReadSitemap(
      "<UL>" + Item(Pair("Name", "\xF1 &#26085;&#xE9;") + Pair("Local", "&#26085;.htm")), 1251);
  ASSERT_EQ(map.items.size(), 1u);
  EXPECT_EQ(map.items[0].name, "\u0441 \u65E5\u0439");
  EXPECT_EQ(map.items[0].targets.at(0).local, "\u65E5.htm");
}

TEST(Sitemap, AcceptsAnEmptyOne) {
  EXPECT_TRUE(ReadSitemap("", 1252).items.empty());
  EXPECT_TRUE(ReadSitemap("<UL>\r\n</UL>\r\n", 1252).items.empty());
}

TEST(Sitemap, TellsTheLineOfAnItem) {
  EXPECT_EQ(ReadSitemap("\n\n" + Item(Pair("Name", "a")), 1252).items.at(0).line, 3u);
}

TEST(Sitemap, TakesTimeInProportionForHostileInput) {
  std::string bytes;
  for (int i = 0; i < 100000; ++i) bytes += "<param name=\"a\" value=\"x ";
  EXPECT_TRUE(ReadSitemap("<OBJECT type=\"text/sitemap\">" + bytes, 1252).items.size() <= 1);
  std::string lists;
  for (int i = 0; i < 300000; ++i) lists += "<UL>";
  EXPECT_EQ(ReadSitemap(lists + Item(Pair("Name", "a")), 1252).items.size(), 1u);
}

}  // namespace
}  // namespace scrivo
