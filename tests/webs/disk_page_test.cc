#include <gtest/gtest.h>

#include "tests/webs/memory_web.h"

namespace scrivo {
namespace {

// Titles and properties of the pages of a web.
class DiskPageTest : public WithMemoryWeb {
 protected:
  std::shared_ptr<SiteFile> File(const std::string& content, const DiskWebOptions& options = {},
                                 const std::string& name = "a.htm") {
    Put(name, content);
    Put("zz.txt", "");
    return Open(options)->BaseFolder()->Files()[0];
  }
  std::string Title(const std::string& content) { return File(content)->Title(); }
  std::string Keywords(const std::string& content, std::vector<IndexSource> index) {
    return File(content, {ContentsChoice::kAuto, std::move(index)})->Property("keywords");
  }
  std::string Keywords(const std::string& content) {
    return Keywords(content, {IndexSource::kKeywords});
  }
};

TEST_F(DiskPageTest, ATitleIsOneLineWithItsReferencesReplaced) {
  EXPECT_EQ(Title("<title>\r\n  Tom &amp;\r\n\tJerry&nbsp;&#8212; \"&lt;x&gt;\" </title>"),
            "Tom & Jerry \xE2\x80\x94 \"<x>\"");
}

TEST_F(DiskPageTest, APageWithoutATitleIsCalledByItsFile) {
  EXPECT_EQ(Title("<html><body>Text"), "a.htm");
  EXPECT_EQ(Title("<title>&nbsp;</title>"), "a.htm");
}

TEST_F(DiskPageTest, AFileThatIsNoPageIsNotReadAndCalledByItsName) {
  Put("page.htm", "");
  const auto file = File("<title>Not HTML</title>", {}, "a.gif");
  EXPECT_EQ(file->Title(), "a.gif");
  EXPECT_THROW(file->Property("keywords"), Error);
  EXPECT_EQ(TimesOpened("/web/a.gif"), 0);
}

TEST_F(DiskPageTest, EveryKindOfPageHasATitle) {
  Put("page.htm", "");
  for (const char* name : {"a.HTM", "a.html", "a.shtml", "a.stm", "a.asp"}) {
    EXPECT_EQ(File("<title>T</title>", {}, name)->Title(), "T") << name;
    disk->files.erase(std::string("/web/") + name);
  }
}

TEST_F(DiskPageTest, APageIsReadOnceAndOnlyWhenAskedFor) {
  Put("a.htm", "<title>T</title><meta name=keywords content=k>");
  PutStructure("1000,a.htm,0,A,0,1,0\n");
  const auto web = Open();
  const auto file = web->BaseFolder()->Files()[0];
  AllNodes(*web);
  file->Url();
  file->NavigationEntry();
  EXPECT_EQ(TimesOpened("/web/a.htm"), 0);
  EXPECT_EQ(file->Title(), "T");
  EXPECT_EQ(file->Property("keywords"), "k");
  EXPECT_EQ(web->BaseFolder()->Files()[0]->Title(), "T");
  EXPECT_EQ(TimesOpened("/web/a.htm"), 1);
}

TEST_F(DiskPageTest, APageThatCannotBeReadIsReportedOnceAndCalledByItsFile) {
  disk->failures.insert({"open /web/a.htm", Error(kPermissionDenied, "", "Permission denied: x")});
  const auto file = File("<title>T</title>");
  EXPECT_EQ(file->Title(), "a.htm");
  EXPECT_THROW(file->Property("keywords"), Error);
  EXPECT_EQ(Reported(), "/web/a.htm:0: the page cannot be read: Permission denied: x\n");
}

TEST_F(DiskPageTest, KeywordsAreWhatTheAuthorWrote) {
  EXPECT_EQ(Keywords("<meta name=\"keywords\" content=\"a;b, c,,&quot;d&quot; &amp; e;\">"),
            "a;b, c,,\"d\" & e;");
}

TEST_F(DiskPageTest, ALineEndInsideKeywordsIsABlank) {
  EXPECT_EQ(Keywords("<meta name=keywords content=\"a,  b,\r\n\t  c\">"), "a,  b, c");
}

TEST_F(DiskPageTest, KeywordsOfSeveralMetaTagsAreJoined) {
  EXPECT_EQ(Keywords("<meta name=keywords content=\"a, b\"><meta name=keywords content=\"\">"
                     "<meta name=Keywords content=c>"),
            "a, b;c");
}

TEST_F(DiskPageTest, APageWithoutKeywordsFails) {
  EXPECT_THROW(Keywords("<title>T</title>"), Error);
  EXPECT_THROW(Keywords("<meta name=keywords content=\"\">"), Error);
}

TEST_F(DiskPageTest, OtherMetaTagsArePropertiesToo) {
  const auto file = File("<meta name=\"Description\" content=\"Caf&eacute;\">");
  EXPECT_EQ(file->Property("DESCRIPTION"), "Caf\xC3\xA9");
  EXPECT_THROW(file->Property("author"), Error);
}

TEST_F(DiskPageTest, TitlesMayBeTheIndex) {
  EXPECT_EQ(
      Keywords("<title>T &amp; U</title><meta name=keywords content=k>", {IndexSource::kTitles}),
      "T & U");
}

TEST_F(DiskPageTest, APageWithoutATitleGivesNoEntry) {
  EXPECT_THROW(Keywords("<html>", {IndexSource::kTitles}), Error);
}

TEST_F(DiskPageTest, HeadingsMayBeTheIndex) {
  EXPECT_EQ(
      Keywords("<body><h1>One <b>&amp;</b> two</h1><p>x<h3>Three</h3>", {IndexSource::kHeadings}),
      "One & two;Three");
}

TEST_F(DiskPageTest, SourcesAreJoinedInTheOrderNamedEachEntryOnce) {
  const std::string page =
      "<title>Setup</title><meta name=keywords content=\"install, "
      "Setup\"><h1>Setup</h1><h2>New</h2>"
      "<h2>install</h2>";
  EXPECT_EQ(Keywords(page, {IndexSource::kKeywords, IndexSource::kTitles, IndexSource::kHeadings}),
            "install, Setup;New");
  EXPECT_EQ(Keywords(page, {IndexSource::kHeadings, IndexSource::kTitles}), "Setup;New;install");
}

TEST_F(DiskPageTest, CommasAndSemicolonsInsideATitleOrHeadingDoNotPartIt) {
  EXPECT_EQ(Keywords("<title>Hello, World; and all</title><h1>a,b;c</h1>",
                     {IndexSource::kTitles, IndexSource::kHeadings}),
            "Hello World and all;a b c");
}

TEST_F(DiskPageTest, TheNotesOfTheHostAreTheSecondSource) {
  Put("_vti_cnf/a.htm",
      "vti_encoding:SR|utf8-nl\r\nvti_title:SR|Noted Caf\xC3\xA9\r\n"
      "vti_metatags:VR|keywords set\\\\ up,\\\\ more\r\n");
  EXPECT_EQ(Title("<html>"), "Noted Caf\xC3\xA9");
  EXPECT_EQ(Keywords("<html>"), "set up, more");
}

TEST_F(DiskPageTest, ThePageGoesBeforeItsNotes) {
  Put("_vti_cnf/a.htm", "vti_title:SR|Stale\r\nvti_metatags:VR|keywords stale\r\n");
  const auto file = File("<title>Fresh</title><meta name=keywords content=fresh>");
  EXPECT_EQ(file->Title(), "Fresh");
  EXPECT_EQ(file->Property("keywords"), "fresh");
  EXPECT_EQ(TimesOpened("/web/_vti_cnf/a.htm"), 0);
}

TEST_F(DiskPageTest, NotesThatCannotBeReadAreNone) {
  Put("_vti_cnf/a.htm", "vti_title:SR|Noted\r\n");
  disk->failures.insert({"open /web/_vti_cnf/a.htm", Error(kPermissionDenied, "", "x")});
  EXPECT_EQ(Title("<html>"), "a.htm");
  EXPECT_EQ(Reported(), "");
}

TEST_F(DiskPageTest, TheCharsetThatThePageDeclaresIsConverted) {
  system->code_page = 1251;
  EXPECT_EQ(Title("<meta charset=koi8-r><title>\xE4\xCF\xCD</title>"), "\xD0\x94\xD0\xBE\xD0\xBC");
  EXPECT_EQ(Title("<meta charset=utf-8><title>\xD0\x94\xD0\xBE\xD0\xBC</title>"),
            "\xD0\x94\xD0\xBE\xD0\xBC");
}

TEST_F(DiskPageTest, ADeclarationBehindTheTitleCountsForItToo) {
  EXPECT_EQ(Title("<title>Caf\xC3\xA9</title><meta charset=utf-8>"), "Caf\xC3\xA9");
}

TEST_F(DiskPageTest, APageThatDeclaresNothingIsUtf8IfItCanBe) {
  EXPECT_EQ(Title("<title>Caf\xC3\xA9</title>"), "Caf\xC3\xA9");
  EXPECT_EQ(Title("<title>Caf\xE9</title>"), "Caf\xC3\xA9");
  EXPECT_EQ(Title("<meta charset=nonsense><title>Caf\xC3\xA9</title>"), "Caf\xC3\xA9");
}

TEST_F(DiskPageTest, APageThatIsNotTheUtf8ItDeclaresIsAnsiText) {
  EXPECT_EQ(Title("<meta charset=utf-8><title>Caf\xE9</title>"), "Caf\xC3\xA9");
}

TEST_F(DiskPageTest, TheCharsetOfTheNotesGoesBeforeTheAnsiCodePage) {
  Put("_vti_cnf/a.htm", "vti_charset:SR|koi8-r\r\n");
  system->code_page = 1251;
  EXPECT_EQ(Title("<title>\xE4\xCF\xCD</title>"), "\xD0\x94\xD0\xBE\xD0\xBC");
  Put("_vti_cnf/a.htm", "vti_charset:SR|utf-8\r\n");
  EXPECT_EQ(Title("<title>\xC4\xEE\xEC</title>"), "\xD0\x94\xD0\xBE\xD0\xBC");
}

TEST_F(DiskPageTest, WhatTheCodePageLacksIsWholeInTitlesAndKeywords) {
  const auto file = File(
      "<meta charset=utf-8><title>\xD0\x94</title><meta name=keywords "
      "content=\"&#1071;\">");
  EXPECT_EQ(file->Title(), "\xD0\x94");
  EXPECT_EQ(file->Property("keywords"), "\xD0\xAF");
}

}  // namespace
}  // namespace scrivo
