#include "cli/hhc_command.h"

#include <gtest/gtest.h>

#include <cctype>
#include <sstream>

#include "cli/hhc_output.h"
#include "project/project_tree.h"
#include "tests/hhc/project_folder.h"

namespace scrivo {
namespace {

class HhcCommandTest : public testing::Test {
 protected:
  int Run(const std::vector<std::string>& arguments) {
    surroundings_.working_folder = folder_.Path();
    out_.str("");
    err_.str("");
    return RunHhc(arguments, surroundings_, out_, err_);
  }

  void WriteSample(const std::string& options = "") {
    folder_.Write("my project.hhp", "[OPTIONS]\n" + options + "[FILES]\na.htm\nb.htm\n");
    folder_.Write("a.htm", "<title>a</title><a href=b.htm>b</a><img src=i.gif>");
    folder_.Write("b.htm", "<title>b</title>");
    folder_.Write("i.gif", "GIF");
  }

  // As the vendor's compiler prints it: a drive is a small letter.
  std::string Output() const {
    std::string path =
        std::filesystem::path(SystemPath(folder_.Path("my project.chm"))).make_preferred().string();
    if (path.size() > 1 && path[1] == ':') path[0] = static_cast<char>(std::tolower(path[0]));
    return path;
  }

  ProjectFolder folder_;
  HhcSurroundings surroundings_;
  std::ostringstream out_, err_;
};

TEST_F(HhcCommandTest, PrintsWhatCallersExpect) {
  WriteSample("Display compile progress=Yes\n");
  EXPECT_EQ(Run({"my project.hhp"}), 1);
  const std::string text = out_.str();
  const std::string size = WithThousands(folder_.Read("my project.chm").size());
  const std::size_t after = text.find("Compression ");
  ASSERT_NE(after, std::string::npos) << text;
  EXPECT_EQ(
      text.substr(0, after),
      "Scrivo HTML Help Compiler " SCRIVO_VERSION "\n\nCompiling " + Output() +
          "\n\na.htm\nb.htm\ni.gif\n\nCompile time: 0 minutes, 0 seconds\n2\tTopics\n1\tLocal "
          "link\n0\tInternet links\n1\tGraphic\n\n\nCreated " +
          Output() + ", " + size + " bytes\n");
  EXPECT_EQ(err_.str(), "");
}

TEST_F(HhcCommandTest, TakesNamesInTheSystemsCodePageFromProjectsInEnglish) {
  const std::string house = "\xD0\x94\xD0\xBE\xD0\xBC", house_1251 = "\xC4\xEE\xEC";
  surroundings_.name_code_page = 1251;
  folder_.Write("my project.hhp", "[OPTIONS]\nCompiled file=" + house_1251 +
                                      ".chm\nError log file=" + house_1251 +
                                      ".log\nLanguage=0x409\n[FILES]\n" + house_1251 + ".htm\n");
  folder_.Write(house + ".htm", "<title>House</title>");
  EXPECT_EQ(Run({"my project.hhp"}), 1) << out_.str();
  EXPECT_TRUE(std::filesystem::exists(SystemPath(folder_.Path(house + ".chm"))));
  EXPECT_TRUE(std::filesystem::exists(SystemPath(folder_.Path(house + ".log"))));
  EXPECT_NE(out_.str().find("1\tTopic\n"), std::string::npos) << out_.str();
}

TEST_F(HhcCommandTest, ListsWhatWasNotCompiled) {
  folder_.Write("my project.hhp", "[FILES]\na.htm\nsub/no.htm\n");
  folder_.Write("a.htm", "x");
  EXPECT_EQ(Run({"\"my project.hhp\""}), 1);
  const std::string path = SystemSlashes("sub/no.htm");
  EXPECT_NE(out_.str().find("HHC5003: Error: Compilation failed while compiling " + path + ".\n"),
            std::string::npos);
  EXPECT_NE(out_.str().find("\n\n\nThe following files were not compiled:\n" + path + "\n"),
            std::string::npos)
      << out_.str();
}

TEST_F(HhcCommandTest, ReturnsOneForMadeAndZeroForNot) {
  EXPECT_EQ(Run({"none.hhp"}), 0);
  EXPECT_EQ(out_.str(),
            "Scrivo HTML Help Compiler " SCRIVO_VERSION "\n\nUnable to open none.hhp.\n");
  EXPECT_EQ(Run({}), 0);
  EXPECT_NE(err_.str().find("no project named"), std::string::npos);
  EXPECT_EQ(Run({"--nonsense", "a.hhp"}), 0);
}

TEST_F(HhcCommandTest, ReturnsTheUsualStatusWhenAsked) {
  WriteSample();
  EXPECT_EQ(Run({"--gnu", "my project.hhp"}), 0);
  EXPECT_EQ(Run({"--gnu", "none.hhp"}), 1);
  EXPECT_EQ(Run({"--gnu"}), 2);
  surroundings_.gnu = true;
  EXPECT_EQ(Run({"my project.hhp"}), 0);
}

TEST_F(HhcCommandTest, TellsNameAndUsage) {
  EXPECT_EQ(Run({"--version"}), 0);
  EXPECT_EQ(out_.str(), "Scrivo HTML Help Compiler " SCRIVO_VERSION "\n");
  EXPECT_EQ(Run({"--help"}), 0);
  EXPECT_EQ(out_.str().substr(0, 6), "usage:");
}

TEST_F(HhcCommandTest, MakesTheSameFileTwiceAndRecordsAGivenTime) {
  WriteSample();
  Run({"my project.hhp"});
  const std::string first = folder_.Read("my project.chm");
  Run({"--jobs", "1", "my project.hhp"});
  EXPECT_TRUE(folder_.Read("my project.chm") == first);
  surroundings_.source_date_epoch = "1000000000";
  Run({"my project.hhp"});
  const std::string dated = folder_.Read("my project.chm");
  EXPECT_FALSE(dated == first);
  EXPECT_NE(dated.find(std::string("\x0a\x00\x04\x00\x00\xca\x9a\x3b", 8)), std::string::npos);
  surroundings_.source_date_epoch = "yesterday";
  EXPECT_EQ(Run({"my project.hhp"}), 0);
  EXPECT_NE(err_.str().find("SOURCE_DATE_EPOCH"), std::string::npos);
}

TEST_F(HhcCommandTest, WritesNoLogOverWhatItWorksWith) {
  WriteSample("Error log file=my project.chm\n");
  EXPECT_EQ(Run({"my project.hhp"}), 1);
  EXPECT_TRUE(folder_.Read("my project.chm").starts_with("ITSF"));
  EXPECT_TRUE(
      err_.str().ends_with("my project.chm: the log file cannot be written: it is the help file\n"))
      << err_.str();
  WriteSample("Error log file=my project.hhp\n");
  EXPECT_EQ(Run({"my project.hhp"}), 1);
  EXPECT_TRUE(folder_.Read("my project.hhp").starts_with("[OPTIONS]"));
  EXPECT_TRUE(err_.str().ends_with(": it is the project\n")) << err_.str();
}

TEST_F(HhcCommandTest, KnowsFilesOfTheCompileByAnyNameBeforeItWritesALog) {
  folder_.Write("help.hhp", "[OPTIONS]\nError log file=help.hhp\n[FILES]\na.htm\n");
  folder_.Write("a.htm", "<title>a</title><img src=i.gif>");
  folder_.Write("i.gif", "GIF");
  for (const char* const name : {"HELP", "help", "HELP.HHP"}) {
    EXPECT_EQ(Run({name}), 1) << name;
    EXPECT_TRUE(folder_.Read("help.hhp").starts_with("[OPTIONS]")) << name;
    EXPECT_TRUE(err_.str().ends_with(": it is the project\n")) << name << ": " << err_.str();
  }
  for (const std::string source : {"a.htm", "I.GIF"}) {
    folder_.Write("help.hhp", "[OPTIONS]\nError log file=" + source + "\n[FILES]\na.htm\n");
    EXPECT_EQ(Run({"help.hhp"}), 1);
    EXPECT_TRUE(folder_.Read("a.htm").starts_with("<title>"));
    EXPECT_EQ(folder_.Read("i.gif"), "GIF");
    EXPECT_TRUE(err_.str().ends_with(": it is a source of the help file\n")) << err_.str();
  }
  // Where the help file cannot be begun, nothing but the project's own lines tells the sources.
  folder_.Write("help.hhp",
                "[OPTIONS]\nCompiled file=i.gif/x.chm\nError log file=a.htm\n[FILES]\na.htm\n");
  EXPECT_EQ(Run({"help.hhp"}), 0);
  EXPECT_TRUE(folder_.Read("a.htm").starts_with("<title>"));
}

TEST_F(HhcCommandTest, MakesTheFolderOfALogAndLeavesNoneBehindWithoutOne) {
  WriteSample("Error log file=new/logs/log.txt\n");
  EXPECT_EQ(Run({"my project.hhp"}), 1);
  EXPECT_NE(folder_.Read("new/logs/log.txt").find("Created"), std::string::npos);
  EXPECT_EQ(err_.str(), "");
  WriteSample("Error log file=a.htm/logs/log.txt\n");
  EXPECT_EQ(Run({"my project.hhp"}), 1);
  EXPECT_NE(err_.str().find("log.txt: the log file cannot be written: "), std::string::npos);
  // No system takes so long a name: the folder that was made on the way there goes again.
  WriteSample("Error log file=other/" + std::string(300, 'n') + ".txt\n");
  EXPECT_EQ(Run({"my project.hhp"}), 1);
  EXPECT_NE(err_.str().find("the log file cannot be written: "), std::string::npos) << err_.str();
  EXPECT_FALSE(std::filesystem::exists(SystemPath(folder_.Path("other"))));
}

TEST_F(HhcCommandTest, WritesTheLogFileOfTheProject) {
  WriteSample("Error log file=log.txt\n");
  Run({"my project.hhp"});
  std::string expected = out_.str();
  for (std::size_t at = 0; (at = expected.find('\n', at)) != std::string::npos; at += 2) {
    expected.insert(at, 1, '\r');
  }
  EXPECT_EQ(folder_.Read("log.txt"), expected);
}

TEST(WithThousands, PutsCommas) {
  EXPECT_EQ(WithThousands(0), "0");
  EXPECT_EQ(WithThousands(999), "999");
  EXPECT_EQ(WithThousands(1000), "1,000");
  EXPECT_EQ(WithThousands(1234567), "1,234,567");
}

}  // namespace
}  // namespace scrivo
