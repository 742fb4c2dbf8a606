#include "webs/host_notes.h"

#include <gtest/gtest.h>

#include "tests/webs/memory_web.h"

namespace scrivo {
namespace {

constexpr char kFile[] = "/web/_vti_pvt/service.cnf";

TEST(ServiceNotes, TellCharsetAndLanguage) {
  const ServiceNotes notes = ParseServiceNotes(
      "vti_encoding:SR|utf8-nl\r\nvti_defaultlanguage:SR|zh-tw\r\nno line of this kind\n"
      "vti_defaultcharset:SR|big5\r\n");
  EXPECT_EQ(notes.charset, "big5");
  EXPECT_EQ(notes.language, "zh-tw");
}

TEST(ServiceNotes, ListWelcomePages) {
  const auto names = [](const std::string& value) {
    return ParseServiceNotes("vti_welcomenames:VX|" + value + "\r\n").welcome_names;
  };
  EXPECT_EQ(names("start.htm  Default.htm "),
            (std::vector<std::string>{"start.htm", "Default.htm"}));
  EXPECT_EQ(names("my\\ start.htm a\\\\b.htm"),
            (std::vector<std::string>{"my start.htm", "a\\b.htm"}));
  EXPECT_EQ(names(""), std::vector<std::string>{});
  EXPECT_EQ(names("a\\"), std::vector<std::string>{"a\\"});
}

TEST(ServiceNotes, MaySayNothing) {
  const ServiceNotes notes = ParseServiceNotes("vti_defaultcharset\nvti_defaultcharset:SR\n:|");
  EXPECT_EQ(notes.charset + notes.language, "");
}

class ServiceNotesOnDisk : public WithMemoryWeb {
 protected:
  std::string Charset() {
    return ReadServiceNotes(*disk, "/web", PathStyle::kPosix, report).charset;
  }
};

TEST_F(ServiceNotesOnDisk, AreNoneWhereTheFileIsMissing) {
  EXPECT_EQ(Charset(), "");
  EXPECT_EQ(Reported(), "");
}

TEST_F(ServiceNotesOnDisk, AreReportedWhereTheyCannotBeRead) {
  Put("_vti_pvt/service.cnf", "vti_defaultcharset:SR|gb2312\n");
  EXPECT_EQ(Charset(), "gb2312");
  EXPECT_EQ(Reported(), "");
  disk->failures.insert({std::string("open ") + kFile, Error(kPermissionDenied, "", "no")});
  EXPECT_EQ(Charset(), "");
  EXPECT_EQ(Reported(), std::string(kFile) +
                            ":0: the web's charset, language and welcome pages cannot be read: "
                            "no\n");
  report.problems.clear();
  PutPage("index.htm", "Home");
  Open()->BaseFolder();
  EXPECT_NE(Reported(), "") << "also of the web that is opened";
}

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
