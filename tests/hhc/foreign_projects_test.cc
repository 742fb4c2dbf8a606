// Projects as other programs and other countries write them, compiled and held against what came
// out.

#include <gtest/gtest.h>

#include "hhc/compiler.h"
#include "project/project_tree.h"
#include "tests/hhc/internal_streams.h"
#include "tests/hhc/project_check.h"
#include "tests/hhc/project_folder.h"
#include "text/code_page.h"

namespace scrivo {
namespace {

class ForeignProjectsTest : public testing::Test {
 protected:
  // Compiles "help.hhp" or what it is called to "help.chm", and gives what the check counted.
  ProjectCheck Check(const std::string& project = "help.hhp",
                     const std::string& output = "help.chm") {
    EXPECT_TRUE(folder_.Compile(&recorder_, project).made);
    ProjectCheck check = CheckAgainstProject(folder_.Path(project), folder_.Path(output));
    for (const std::string& fault : check.faults) ADD_FAILURE() << fault;
    return check;
  }

  ProjectFolder folder_;
  CompileRecorder recorder_;
};

TEST_F(ForeignProjectsTest, CompilesWhatTheDocBookStylesheetsMake) {
  std::filesystem::copy(SystemPath(CHM_TEST_DATA "/docbook"), SystemPath(folder_.Path()),
                        std::filesystem::copy_options::recursive);
  const ProjectCheck check = Check("htmlhelp.hhp", "kettle.chm");
  EXPECT_TRUE(recorder_.messages.empty()) << recorder_.messages[0];
  EXPECT_EQ(check.files, 6u);
  EXPECT_EQ(check.contents_entries, 6u);
  EXPECT_EQ(check.keywords, 7u);
  EXPECT_GT(check.words, 100u);
}

TEST_F(ForeignProjectsTest, CompilesXhtmlWithXmlDeclarationsEverywhere) {
  const std::string declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
  folder_.Write("help.hhp", declaration +
                                "[OPTIONS]\nBinary TOC=Yes\nCompiled file=help.chm\nContents "
                                "file=help.hhc\nFull-text search=Yes\nIndex file=help.hhk\n"
                                "[FILES]\nconcepts\\one.html\ntasks/two.html\n");
  const std::string head = declaration +
                           "<!DOCTYPE html PUBLIC \"-//W3C//DTD XHTML 1.0 Transitional//EN\" "
                           "\"http://www.w3.org/TR/xhtml1/DTD/xhtml1-transitional.dtd\">\n"
                           "<html xml:lang=\"en-us\" lang=\"en-us\"><head><meta "
                           "http-equiv=\"Content-Type\" content=\"text/html; charset=UTF-8\"/>"
                           "<link rel=\"stylesheet\" href=\"../commonltr.css\"/>";
  folder_.Write("concepts/one.html", head +
                                         "<title>One</title></head><body id=\"one\"><h1>One</h1>"
                                         "<div><p>Caf\xC3\xA9, see <a href=\"../tasks/two.html"
                                         "\">two</a>.</p></div></body></html>");
  folder_.Write("tasks/two.html",
                head + "<title>Two</title></head><body><p>Second</p></body></html>");
  folder_.Write("commonltr.css", "p { color: black }");
  const std::string item = "<li><object type=\"text/sitemap\"><param name=\"Name\" value=\"";
  folder_.Write("help.hhc", declaration + "<html><body><ul>" + item +
                                "One\"/><param name=\"Local\" value=\"concepts/one.html\"/>"
                                "</object><ul>" +
                                item +
                                "Two\"/><param name=\"Local\" value=\"tasks\\two.html\"/></object>"
                                "</li></ul></li></ul></body></html>");
  folder_.Write("help.hhk", declaration + "<html><body><ul>" + item +
                                "first\"/><param name=\"Local\" value=\"concepts/one.html\"/>"
                                "</object></li></ul></body></html>");
  const ProjectCheck check = Check();
  EXPECT_EQ(check.files, 2u);
  EXPECT_EQ(check.contents_entries, 2u);
  EXPECT_EQ(check.keywords, 1u);
  // One for each declaration of a page or a sitemap; that of the project stands before any section.
  EXPECT_EQ(recorder_.messages.size(), 4u);
  EXPECT_EQ(
      recorder_.messages.at(0),
      "HHC3004: Warning: " + SystemSlashes("concepts/one.html") +
          "(1) : The HTML tag \"?xml version=\"1.0\" "
          "encoding=\"UTF-8\"?\" is not a valid HTML tag (it does not begin with an alphanumeric "
          "character).");
}

// Language, code page, and a text that has characters of two bytes.
struct DoubleByte {
  const char* language;
  int code_page;
  const char* text;                     // UTF-8
  std::vector<std::string> characters;  // those that are words
};

class DoubleByteTest : public ForeignProjectsTest,
                       public testing::WithParamInterface<DoubleByte> {};

TEST_P(DoubleByteTest, FindsTheWordsOfItsPagesThroughTheIndex) {
  const DoubleByte& given = GetParam();
  const std::string bytes = FromUtf8(given.text, given.code_page);
  folder_.Write("help.hhp", std::string("[OPTIONS]\nFull-text search=Yes\nBinary TOC=Yes\nContents "
                                        "file=a.hhc\nIndex file=a.hhk\nLanguage=") +
                                given.language + "\n[FILES]\na.htm\nb.htm\n");
  // One page in the code page of the language, one in UTF-8: both are found alike.
  folder_.Write("a.htm", "<title>" + bytes + "</title><p>help" + bytes + "2 end");
  folder_.Write("b.htm", std::string("<meta charset=utf-8><title>b</title><p>") + given.text);
  const std::string item = "<ul><li><object type=\"text/sitemap\"><param name=\"Name\" value=\"" +
                           bytes + "\"><param name=\"Local\" value=\"a.htm\"></object></ul>";
  folder_.Write("a.hhc", item);
  folder_.Write("a.hhk", item);
  const ProjectCheck check = Check();
  EXPECT_EQ(check.files, 2u);
  EXPECT_EQ(check.contents_entries, 1u);
  EXPECT_EQ(check.keywords, 1u);
  const auto index = InternalStreams::Open(folder_.Path("help.chm"))->Search();
  ASSERT_TRUE(index);
  for (const std::string& character : given.characters) {
    const std::string word = FromUtf8(character, given.code_page);
    ASSERT_EQ(word.size(), 2u);
    EXPECT_TRUE(index->contains({word, true})) << character;
    ASSERT_TRUE(index->contains({word, false})) << character;
    EXPECT_TRUE(index->at({word, false}).contains(0)) << character;
    EXPECT_TRUE(index->at({word, false}).contains(1)) << character;
  }
  EXPECT_TRUE(index->contains({"help", false}));
  EXPECT_TRUE(index->contains({"end", false}));
}

INSTANTIATE_TEST_SUITE_P(
    CodePages, DoubleByteTest,
    testing::Values(
        DoubleByte{
            "0x411 Japanese", 932, "\u65E5\u672C\u8A9E\u8868", {"\u65E5", "\u8A9E", "\u8868"}},
        DoubleByte{
            "0x804 Chinese", 936, "\u4E2D\u6587\u5E2E\u52A9", {"\u4E2D", "\u6587", "\u52A9"}},
        DoubleByte{"0x412 Korean", 949, "\uB3C4\uC6C0\uB9D0", {"\uB3C4", "\uC6C0", "\uB9D0"}},
        DoubleByte{
            "0x404 Chinese", 950, "\u4E2D\u6587\u529F\u80FD", {"\u4E2D", "\u529F", "\u80FD"}}),
    [](const testing::TestParamInfo<DoubleByte>& info) {
      return std::to_string(info.param.code_page);
    });

}  // namespace
}  // namespace scrivo
