#include "webs/vti_cnf.h"

#include <gtest/gtest.h>

namespace scrivo {
namespace {

TEST(VtiNotes, ReadsTitleCharsetAndKeywords) {
  const VtiNotes notes = ParseVtiNotes(
      "vti_encoding:SR|utf8-nl\r\n"
      "vti_title:SR|Glossary\r\n"
      "vti_charset:SR|windows-1252\r\n"
      "vti_metatags:VR|HTTP-EQUIV=Content-Language en-us GENERATOR Microsoft\\\\ FrontPage\\\\ 4.0 "
      "Keywords set\\\\ up,\\\\ first\\\\ steps ProgId FrontPage.Editor.Document\r\n");
  EXPECT_EQ(notes.title, "Glossary");
  EXPECT_EQ(notes.charset, "windows-1252");
  EXPECT_EQ(notes.keywords, "set up, first steps");
}

TEST(VtiNotes, ABackslashEscapesTheNextCharacter) {
  EXPECT_EQ(ParseVtiNotes("vti_title:SR|a\\:b \\\\ c\\|d\\").title, "a:b \\ c|d\\");
}

TEST(VtiNotes, KeywordsAreLookedForAmongNamesOnly) {
  EXPECT_EQ(ParseVtiNotes("vti_metatags:VR|description keywords author me").keywords, "");
  EXPECT_EQ(ParseVtiNotes("vti_metatags:VR|author  keywords a").keywords, "a");
  EXPECT_EQ(ParseVtiNotes("vti_metatags:VR|keywords").keywords, "");
}

TEST(VtiNotes, LinesOfAnotherFormArePassedOver) {
  const VtiNotes notes = ParseVtiNotes("\n:\nvti_title\nvti_title:SR\nvti_title|x\nvti_title:SR|T");
  EXPECT_EQ(notes.title, "T");
  EXPECT_EQ(ParseVtiNotes("").title, "");
}

}  // namespace
}  // namespace scrivo
