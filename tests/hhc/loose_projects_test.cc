// Projects that were written loosely: names in any case, files in any encoding, parts left out.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "hhc/compiler.h"
#include "project/project_tree.h"
#include "tests/hhc/internal_streams.h"
#include "tests/hhc/project_folder.h"
#include "tests/hhc/utf16_text.h"

namespace scrivo {
namespace {

class LooseProjectsTest : public testing::Test {
 protected:
  CompileResult Compile(const std::string& project = "help.hhp") {
    return folder_.Compile(&recorder_, project);
  }
  std::unique_ptr<InternalStreams> Opened(const std::string& name = "help.chm") {
    return InternalStreams::Open(folder_.Path(name));
  }
  std::vector<std::string> NamesIn(const std::string& folder) {
    std::vector<std::string> names;
    for (const SourceEntry& entry : DiskFiles().List(folder_.Path(folder))) {
      names.push_back(entry.name);
    }
    std::sort(names.begin(), names.end());
    return names;
  }
  std::string DefaultTopic() {
    const std::string text = (*Opened()->System())[kDefaultTopicRecord];
    return text.substr(0, text.find('\0'));
  }

  ProjectFolder folder_;
  CompileRecorder recorder_;
};

TEST_F(LooseProjectsTest, FindsTheProjectInAnyCase) {
  folder_.Write("Help.hhp", "[FILES]\na.htm\n");
  folder_.Write("a.htm", "x");
  const CompileResult result = Compile("HELP.HHP");
  EXPECT_TRUE(result.made);
  // A system that ignores case opens the project as it was typed.
  const std::string made = folder_.Has("HELP.HHP") ? "HELP.chm" : "Help.chm";
  EXPECT_EQ(result.file_name, made);
  EXPECT_TRUE(Compile("HELP").made);
  EXPECT_EQ(NamesIn(""), (std::vector<std::string>{made, "Help.hhp", "a.htm"}));
}

TEST_F(LooseProjectsTest, PutsOutputAndLogIntoFoldersOfAnyCase) {
  folder_.Write(
      "help.hhp",
      "[OPTIONS]\nCompiled file=OUT\\HELP.CHM\nError log file=LOGS\\a.log\n[FILES]\na.htm\n");
  folder_.Write("a.htm", "x");
  folder_.Write("Out/help.chm", "ITSF earlier");
  folder_.Write("Logs/x", "x");
  const CompileResult result = Compile();
  EXPECT_TRUE(result.made);
  EXPECT_EQ(NamesIn("Out"), std::vector<std::string>{"help.chm"});
  EXPECT_NE(folder_.Read("Out/help.chm"), "ITSF earlier");
  // A system that ignores case finds the folders as the project spells them.
  const bool ignores_case = folder_.Has("OUT");
  EXPECT_TRUE(result.output.ends_with(ignores_case ? "/OUT/help.chm" : "/Out/help.chm"))
      << result.output;
  EXPECT_TRUE(result.error_log.ends_with(ignores_case ? "/LOGS/a.log" : "/Logs/a.log"))
      << result.error_log;
  EXPECT_EQ(NamesIn("").size(), 4u);
}

TEST_F(LooseProjectsTest, ExpandsPatternsInFoldersOfAnyCaseAndTellsOfThoseThatMatchNothing) {
  folder_.Write("help.hhp", "[FILES]\ndocs\\*.htm\ndocs\\*.png\nnone/*.htm\n");
  folder_.Write("Docs/a.htm", "x");
  const CompileResult result = Compile();
  EXPECT_TRUE(result.made);
  EXPECT_TRUE(Opened()->Bytes("/Docs/a.htm"));
  const std::string pictures = SystemSlashes("docs/*.png"), none = SystemSlashes("none/*.htm");
  EXPECT_EQ(recorder_.messages,
            (std::vector<std::string>{
                "HHC5003: Error: Compilation failed while compiling " + pictures + ".",
                "HHC5003: Error: Compilation failed while compiling " + none + "."}));
  EXPECT_EQ(result.not_compiled, (std::vector<std::string>{pictures, none}));
}

TEST_F(LooseProjectsTest, MakesTheFolderOfItsOutput) {
  folder_.Write("help.hhp", "[OPTIONS]\nCompiled file=new\\deep\\a.chm\n[FILES]\na.htm\n");
  folder_.Write("a.htm", "x");
  EXPECT_TRUE(Compile().made);
  EXPECT_EQ(NamesIn("new/deep"), std::vector<std::string>{"a.chm"});
}

TEST_F(LooseProjectsTest, RemovesTheFolderAgainWhenNothingWasMade) {
  folder_.Write("help.hhp", "[OPTIONS]\nCompiled file=old\\new\\deep\\a.chm\n[FILES]\nnone.htm\n");
  std::filesystem::create_directory(SystemPath(folder_.Path("old")));
  EXPECT_FALSE(Compile().made);
  EXPECT_TRUE(folder_.Has("old"));
  EXPECT_FALSE(folder_.Has("old/new"));
}

TEST_F(LooseProjectsTest, TellsWhyAFolderCannotBeMade) {
  folder_.Write("help.hhp", "[OPTIONS]\nCompiled file=a.htm\\new\\a.chm\n[FILES]\na.htm\n");
  folder_.Write("a.htm", "x");
  EXPECT_FALSE(Compile().made);
  ASSERT_EQ(recorder_.messages.size(), 1u);
  EXPECT_TRUE(recorder_.messages[0].starts_with("HHC5010: Error: Cannot open \""));
  EXPECT_EQ(NamesIn(""), (std::vector<std::string>{"a.htm", "help.hhp"}));
}

TEST_F(LooseProjectsTest, WritesPathsInMessagesOneWay) {
  folder_.Write("help.hhp",
                "[OPTIONS]\nContents file=a.hhc\nDefault topic=no\\d.htm\n[FILES]\ns\\a.htm\n"
                "s/b.htm\nS\\A.htm\nno\\a.htm\nno/b.htm\n[ALIAS]\nX=no\\x.htm\n");
  folder_.Write("s/a.htm", "<a href=\"..\\no\\l.htm\">");
  folder_.Write("s/b.htm", "<b");
  folder_.Write("a.hhc", "<UL>" + ItemText("x", "no\\c.htm") + "</UL>");
  const CompileResult result = Compile();
  EXPECT_EQ(recorder_.messages.size(), 8u);
  const char other = SystemSlashes("/") == "/" ? '\\' : '/';
  for (const std::string& message : recorder_.messages) {
    EXPECT_EQ(message.find(other), std::string::npos) << message;
  }
  EXPECT_EQ(result.not_compiled,
            (std::vector<std::string>{SystemSlashes("no/a.htm"), SystemSlashes("no/b.htm")}));
}

TEST_F(LooseProjectsTest, CompilesWithoutOptions) {
  folder_.Write("help.hhp", "[FILES]\na.htm\n");
  folder_.Write("a.htm", "x");
  EXPECT_TRUE(Compile().made);
  EXPECT_EQ(DefaultTopic(), "a.htm");
}

TEST_F(LooseProjectsTest, CompilesThePagesOfTheContentsWhenItListsNone) {
  folder_.Write("help.hhp", "[OPTIONS]\nContents file=a.hhc\n");
  folder_.Write("a.hhc", "<UL>" + ItemText("web", "http://x/") + ItemText("a", "S\\a.htm") +
                             ItemText("b", "b.htm"));
  folder_.Write("s/a.htm", "x");
  folder_.Write("b.htm", "x");
  EXPECT_TRUE(Compile().made);
  EXPECT_TRUE(Opened()->Bytes("/s/a.htm"));
  EXPECT_TRUE(Opened()->Bytes("/b.htm"));
  EXPECT_EQ(DefaultTopic(), "");
}

TEST_F(LooseProjectsTest, OpensAPageAndNoPictureByDefault) {
  folder_.Write("help.hhp", "[OPTIONS]\nContents file=a.hhc\n[FILES]\na.css\ni.gif\nb.htm\n");
  folder_.Write("a.hhc", "<UL>" + ItemText("a", "a.htm"));
  for (const char* name : {"a.css", "i.gif", "a.htm", "b.htm"}) folder_.Write(name, "x");
  EXPECT_TRUE(Compile().made);
  EXPECT_EQ(DefaultTopic(), "b.htm");
}

TEST_F(LooseProjectsTest, ReadsListsOfFilesThatItIncludes) {
  folder_.Write("help.hhp",
                "[FILES]\nfirst.htm\n#include lists\\more.txt\n#include none.txt\nlast.htm\n");
  folder_.Write("lists/more.txt",
                Utf16Text("; pages\r\n\"s\\a b.htm\"\r#include lists\\more.txt\ns\\*.gif\n", true));
  for (const char* name : {"first.htm", "last.htm", "s/a b.htm", "s/i.gif"}) {
    folder_.Write(name, "x");
  }
  EXPECT_TRUE(Compile().made);
  EXPECT_EQ(
      recorder_.messages,
      std::vector<std::string>{"HHC3017: Warning: The list of files \"none.txt\" cannot be read."});
  std::vector<std::string> addresses;
  const auto topics = Opened()->Topics();
  for (const ReadTopic& topic : *topics) addresses.push_back(topic.address);
  EXPECT_EQ(addresses, (std::vector<std::string>{"first.htm", "s/a b.htm", "last.htm"}));
  EXPECT_TRUE(Opened()->Bytes("/s/i.gif"));
}

TEST_F(LooseProjectsTest, KeepsASourceThatAnIncludedListNames) {
  folder_.Write("help.hhp",
                "[OPTIONS]\nCompiled file=old.chm\n[FILES]\na.htm\n#include list.txt\n");
  folder_.Write("list.txt", "old.chm\n");
  folder_.Write("a.htm", "x");
  folder_.Write("old.chm", "ITSF earlier");
  EXPECT_FALSE(Compile().made);
  EXPECT_EQ(folder_.Read("old.chm"), "ITSF earlier");
}

TEST_F(LooseProjectsTest, GivesTheSameFileForEveryLineEnd) {
  const std::string project =
      "[OPTIONS]\nContents file=a.hhc\nIndex file=a.hhk\nTitle=t\nFull-text search=Yes\nFull text "
      "search stop list file=stop.txt\n[FILES]\na.htm\n#include more.txt\n[ALIAS]\n#include "
      "ids.txt\n[MAP]\n#include ids.h\n";
  const std::string sitemap = "<UL>\n" + ItemText("one", "a.htm") + "\n" + ItemText("two", "b.htm");
  const auto write = [this](const std::string& name, const std::string& text,
                            const std::string& end) {
    std::string other;
    for (const char c : text) other += c == '\n' ? end : std::string(1, c);
    folder_.Write(name, other);
  };
  std::string first;
  for (const char* end : {"\n", "\r", "\r\n"}) {
    write("help.hhp", project, end);
    write("more.txt", "b.htm\n", end);
    write("ids.txt", "A=a.htm\nB=b.htm\n", end);
    write("ids.h", "#define A 1\n#define B 2\n", end);
    write("stop.txt", "the\nand\n", end);
    // What is stored as it is must not differ.
    folder_.Write("a.hhc", sitemap);
    folder_.Write("a.hhk", sitemap);
    folder_.Write("a.htm", "the first and best");
    folder_.Write("b.htm", "the second");
    EXPECT_TRUE(Compile().made);
    const std::string made = folder_.Read("help.chm");
    if (first.empty()) first = made;
    EXPECT_TRUE(made == first) << int{end[0]};
    EXPECT_EQ(Opened()->ContextIds()->size(), 2u);
    const auto words = Opened()->Search();
    EXPECT_FALSE(words->contains({"the", false}));
    EXPECT_TRUE(words->contains({"second", false}));
  }
}

TEST_F(LooseProjectsTest, CountsLinesOfPagesWithEveryLineEnd) {
  folder_.Write("help.hhp", "[FILES]\na.htm\nb.htm\n");
  folder_.Write("a.htm", "x\ry\r<img src=a.gif>");
  folder_.Write("b.htm", "x\r\ny\r\n<img src=b.gif>");
  EXPECT_TRUE(Compile().made);
  EXPECT_EQ(recorder_.messages,
            (std::vector<std::string>{
                "HHC3010: Warning: a.htm(3) : The linked file \"a.gif\" does not exist.",
                "HHC3010: Warning: b.htm(3) : The linked file \"b.gif\" does not exist."}));
}

TEST_F(LooseProjectsTest, TellsOfBadTagsInAVeryLargeContentsFile) {
  folder_.Write("help.hhp", "[OPTIONS]\nContents file=a.hhc\n[FILES]\na.htm\n");
  folder_.Write("a.htm", "x");
  folder_.Write("a.hhc", std::string(std::size_t{9} << 20, '\n') + "<?a>\n<?b>\n<UL>" +
                             ItemText("x", "a.htm"));
  EXPECT_TRUE(Compile().made);
  ASSERT_EQ(recorder_.messages.size(), 2u);
  EXPECT_TRUE(recorder_.messages[1].starts_with("HHC3004: Warning: a.hhc(9437186) : "))
      << recorder_.messages[1];
}

}  // namespace
}  // namespace scrivo
