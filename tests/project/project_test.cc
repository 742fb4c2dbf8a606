#include "project/project.h"

#include <gtest/gtest.h>

#include "project/project_lines.h"
#include "tests/hhc/utf16_text.h"

namespace scrivo {
namespace {

TEST(Project, ReadsWhatTheGeneratorWrites) {
  const Project project = ReadProject(
      "[OPTIONS]\r\nAuto Index = Yes\r\nBinary Index = Yes\r\nBinary TOC = Yes\r\n"
      "Compatibility = 1.1 Or later\r\nCompiled file=/web/out.chm\r\n"
      "Contents file=/web/ScrA.hhc\r\nDefault window=default\r\nDefault topic=index.htm\r\n"
      "Display compile progress=Yes\r\nFull-text search=Yes\r\n"
      "Language=0x409 English (United States)\r\nTitle=My help\r\nIndex File = /web/ScrB.hhk\r\n"
      "\r\n[WINDOWS]\r\n\r\ndefault=,\"ScrA.hhc\",\r\n"
      "default=,\"ScrA.hhc\",\"ScrB.hhk\",,,,,,,0x23520,,0x3006,,,,,,,,0\r\n"
      "\r\n[FILES]\r\nindex.htm\r\nsub/page.htm\r\n/web/ScrC.tmp.htm\r\n");
  EXPECT_TRUE(project.auto_index);
  EXPECT_TRUE(project.binary_index);
  EXPECT_TRUE(project.binary_toc);
  EXPECT_TRUE(project.full_text_search);
  EXPECT_TRUE(project.display_progress);
  EXPECT_FALSE(project.compatibility_1_0);
  EXPECT_EQ(project.compiled_file, "/web/out.chm");
  EXPECT_EQ(project.contents_file, "/web/ScrA.hhc");
  EXPECT_EQ(project.index_file, "/web/ScrB.hhk");
  EXPECT_EQ(project.default_window, "default");
  EXPECT_EQ(project.default_topic, "index.htm");
  EXPECT_EQ(project.title, "My help");
  EXPECT_EQ(project.language, 0x409u);
  ASSERT_EQ(project.windows.size(), 1u);
  EXPECT_EQ(project.windows[0].name, "default");
  EXPECT_EQ(project.windows[0].arguments,
            (std::vector<std::string>{"", "ScrA.hhc", "ScrB.hhk", "", "", "", "", "", "", "0x23520",
                                      "", "0x3006",   "",         "", "", "", "", "", "", "0"}));
  ASSERT_EQ(project.files.size(), 3u);
  EXPECT_EQ(project.files[2].text, "/web/ScrC.tmp.htm");
  EXPECT_TRUE(project.unknown_options.empty());
  EXPECT_TRUE(project.lines_without_equals.empty());
}

TEST(Project, HasTheDefaultsOfTheOriginal) {
  const Project project = ReadProject("");
  EXPECT_TRUE(project.binary_index);
  EXPECT_FALSE(project.binary_toc);
  EXPECT_FALSE(project.full_text_search);
  EXPECT_FALSE(project.auto_index);
  EXPECT_FALSE(project.flat);
}

TEST(Project, ReadsTheOtherSections) {
  const Project project = ReadProject(
      "[alias]\nIDH_A=a.htm ; comment\n#include alias.h\n[MAP]\n#define IDH_A 0x10 // x\n"
      "#define IDH_B 7\n#define IDH_C\n#include \"map.h\"\n[TEXT POPUPS]\npop.txt\n"
      "[MERGE FILES]\nother.chm\n[INFOTYPES]\nwhatever\n");
  ASSERT_EQ(project.aliases.size(), 1u);
  EXPECT_EQ(project.aliases[0].symbol, "IDH_A");
  EXPECT_EQ(project.aliases[0].target, "a.htm");
  EXPECT_EQ(project.alias_includes.at(0).text, "alias.h");
  ASSERT_EQ(project.map.size(), 2u);
  EXPECT_EQ(project.map[0].number, 16u);
  EXPECT_EQ(project.map[1].number, 7u);
  EXPECT_EQ(project.map_includes.at(0).text, "map.h");
  EXPECT_EQ(project.text_popups.at(0).text, "pop.txt");
  EXPECT_EQ(project.merge_files.at(0).text, "other.chm");
  EXPECT_TRUE(project.unknown_sections.empty());
}

TEST(Project, NotesWhatItDoesNotKnowOnce) {
  const Project project =
      ReadProject("[OPTIONS]\nno equals here\nNonsense=1\nnonsense=2\nDBCS=Yes\n[ODD]\nx\n[odd]\n");
  ASSERT_EQ(project.lines_without_equals.size(), 1u);
  EXPECT_EQ(project.lines_without_equals[0].line, 2u);
  ASSERT_EQ(project.unknown_options.size(), 1u);
  EXPECT_EQ(project.unknown_options[0].text, "Nonsense");
  ASSERT_EQ(project.unknown_sections.size(), 1u);
  EXPECT_EQ(project.unknown_sections[0].text, "ODD");
}

TEST(Project, NotesWhatIsAskedForAndNotSupportedOnce) {
  const Project project = ReadProject(
      "[OPTIONS]\nCreate CHI file=No\nEnhanced decompilation=Yes\nenhanced decompilation=yes\n"
      "Copyright=\nCitation=from me\n[INFOTYPES]\n[SUBSETS]\na\nb\n");
  ASSERT_EQ(project.unsupported.size(), 2u);
  EXPECT_EQ(project.unsupported[0].text, "Enhanced decompilation");
  EXPECT_EQ(project.unsupported[0].line, 3u);
  EXPECT_EQ(project.unsupported[1].text, "Citation");
  ASSERT_EQ(project.unsupported_sections.size(), 1u);
  EXPECT_EQ(project.unsupported_sections[0].text, "SUBSETS");
  EXPECT_EQ(project.unsupported_sections[0].line, 9u);
  EXPECT_TRUE(project.unknown_options.empty());
}

TEST(Project, PassesOverCommentsBlankLinesAndAByteOrderMark) {
  const Project project = ReadProject("\xEF\xBB\xBF[OPTIONS]\n; Title=no\n\n  Title = yes  \n");
  EXPECT_EQ(project.title, "yes");
  EXPECT_TRUE(project.lines_without_equals.empty());
}

TEST(Project, ReadsUtf16AndEveryLineEnd) {
  const std::string text =
      "[OPTIONS]\nTitle=\u65E5\u672C\nIndex file=a.hhk\n\n[FILES]\na.htm\nno\n";
  const auto with_ends = [&](const std::string& end) {
    std::string other;
    for (const char c : text) other += c == '\n' ? end : std::string(1, c);
    return other;
  };
  for (const std::string& given :
       {text, with_ends("\r"), with_ends("\r\n"), Utf16Text(text, true), Utf16Text(text, false),
        Utf16Text(with_ends("\r"), true), "\xEF\xBB\xBF" + with_ends("\r\n")}) {
    const Project project = ReadProject(given);
    EXPECT_EQ(project.title, "\u65E5\u672C");
    EXPECT_EQ(project.index_file, "a.hhk");
    ASSERT_EQ(project.files.size(), 2u);
    EXPECT_EQ(project.files[0].text, "a.htm");
    EXPECT_EQ(project.files[1].line, 7u);
    EXPECT_TRUE(project.lines_without_equals.empty());
  }
}

TEST(Project, ReadsIncludedFilesInEveryEncodingToo) {
  for (const bool little : {true, false}) {
    EXPECT_EQ(ReadMapHeader(Utf16Text("#define A 3\r#define B 4", little)).at(1).number, 4u);
    EXPECT_EQ(ReadAliasFile(Utf16Text("A=caf\u00E9.htm\n", little)).at(0).target, "caf\u00E9.htm");
  }
  EXPECT_EQ(ReadMapHeader("\xEF\xBB\xBF#define A 3\n").at(0).symbol, "A");
}

TEST(Project, TakesTheQuotesOffNames) {
  const Project project = ReadProject(
      "[OPTIONS]\nCompiled file=\"out dir\\a.chm\"\nContents file = \"a.hhc\" \nDefault "
      "topic=\"a b.htm\"\nDefault window=\"main\"\nTitle=\"Quoted\"\n[WINDOWS]\n\"main\"=\"t\"\n"
      "[FILES]\n\"a b.htm\"\n\"half.htm\n[TEXT POPUPS]\n\"p.txt\"\n[MERGE FILES]\n\"m.chm\"\n");
  EXPECT_EQ(project.compiled_file, "out dir\\a.chm");
  EXPECT_EQ(project.contents_file, "a.hhc");
  EXPECT_EQ(project.default_topic, "a b.htm");
  EXPECT_EQ(project.default_window, "main");
  EXPECT_EQ(project.title, "\"Quoted\"");  // a text, not a name
  EXPECT_EQ(project.windows.at(0).name, "main");
  EXPECT_EQ(project.files.at(0).text, "a b.htm");
  EXPECT_EQ(project.files.at(1).text, "\"half.htm");
  EXPECT_EQ(project.text_popups.at(0).text, "p.txt");
  EXPECT_EQ(project.merge_files.at(0).text, "m.chm");
}

TEST(Project, KeepsCommasInFileNames) {
  EXPECT_EQ(ReadProject("[FILES]\na, b.htm\n").files.at(0).text, "a, b.htm");
}

TEST(Project, ReadsLanguageTocDepthTabsAndCompatibility) {
  const Project project = ReadProject(
      "[OPTIONS]\nLanguage=1041\nAuto TOC=3\nCustom tab=\"Tab, one\",\"Prog.Id\"\n"
      "Compatibility=1.0\n");
  EXPECT_EQ(project.language, 1041u);
  EXPECT_EQ(project.auto_toc, 3);
  ASSERT_EQ(project.custom_tabs.size(), 1u);
  EXPECT_EQ(project.custom_tabs[0].title, "Tab, one");
  EXPECT_EQ(project.custom_tabs[0].program, "Prog.Id");
  EXPECT_TRUE(project.compatibility_1_0);
}

TEST(SplitQuoted, KeepsQuotedCommasAndBrackets) {
  EXPECT_EQ(SplitQuoted("\"a,b\",,[1,2,3,4], 5"),
            (std::vector<std::string>{"a,b", "", "[1,2,3,4]", "5"}));
  EXPECT_EQ(SplitQuoted("\"open,1"), (std::vector<std::string>{"\"open,1"}));
}

TEST(ProjectNumber, ReadsDecimalAndHexadecimal) {
  EXPECT_EQ(ProjectNumber("0x3006"), 0x3006u);
  EXPECT_EQ(ProjectNumber(" 12abc"), 12u);
  EXPECT_EQ(ProjectNumber("x"), 0u);
}

TEST(FitsFileLine, IsTrueForNamesThatALineMeans) {
  for (const char* path : {"a.htm", "docs/a b.htm", "C#.htm", "50%.htm", "a;b.htm", "a[1].htm",
                           "#includes.htm", "[open.htm"}) {
    EXPECT_TRUE(FitsFileLine(path)) << path;
    const Project project = ReadProject(std::string("[FILES]\n") + path);
    ASSERT_EQ(project.files.size(), 1u) << path;
    EXPECT_EQ(project.files[0].text, path);
  }
}

TEST(FitsFileLine, IsFalseForNamesThatMeanSomethingElse) {
  for (const char* path :
       {"", ";a.htm", "[OPTIONS].htm", " a.htm", "a.htm ", "*.htm", "a?.htm", "#include a.htm",
        "a\\b.htm", "mailto:a.htm", "\"a\".htm", "a\nb.htm", "/a.htm"}) {
    EXPECT_FALSE(FitsFileLine(path)) << path;
  }
}

}  // namespace
}  // namespace scrivo
