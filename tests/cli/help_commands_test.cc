// hh, and the commands that show what is in a help file, over the help files of tests/data/chm.

#include "cli/help_commands.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "cli/hh_command.h"
#include "tests/doubles/temp_folder.h"

namespace scrivo {
namespace {

namespace fs = std::filesystem;

std::string ReadFileText(const fs::path& path) {
  std::ifstream stream(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

std::string Utf8(const fs::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

class HelpCommandsTest : public testing::Test {
 protected:
  int Hh(const std::vector<std::string>& arguments) { return RunHh(arguments, out_, err_); }

  // A copy of a help file in which `at` from the end on is cut off.
  fs::path CutCopy(const std::string& name, std::size_t size) {
    std::string bytes = ReadFileText(kData / name);
    bytes.resize(bytes.size() - size);
    std::ofstream(root_ / "cut.chm", std::ios::binary) << bytes;
    return root_ / "cut.chm";
  }

  const fs::path kData = fs::path(SCRIVO_SOURCE_DIR) / "tests/data/chm";
  const TempFolder temporary_;
  const fs::path root_ = temporary_.path();
  std::ostringstream out_, err_;
};

TEST_F(HelpCommandsTest, HhUnpacksInSilence) {
  EXPECT_EQ(Hh({"-decompile", Utf8(root_ / "a" / "b"), Utf8(kData / "tiny.chm")}), 0);
  EXPECT_EQ(out_.str(), "");
  EXPECT_EQ(err_.str(), "");
  for (const char* name : {"index.htm", "pages/first.htm", "style.css", "toc.hhc", "words.hhk"}) {
    EXPECT_EQ(ReadFileText(root_ / "a" / "b" / name), ReadFileText(kData / "tiny" / name)) << name;
  }
  EXPECT_FALSE(fs::exists(root_ / "a" / "b" / "#SYSTEM"));
}

TEST_F(HelpCommandsTest, HhTellsItsUsageAndItsVersionWhenAsked) {
  EXPECT_EQ(Hh({"--help"}), 0);
  EXPECT_TRUE(out_.str().starts_with("usage: hh -decompile ")) << out_.str();
  out_.str("");
  EXPECT_EQ(Hh({"--version"}), 0);
  EXPECT_EQ(out_.str(), std::string("Scrivo HTML Help Unpacker ") + SCRIVO_VERSION + "\n");
  EXPECT_EQ(err_.str(), "");
  EXPECT_EQ(Hh({"--versoin"}), 2);
  EXPECT_NE(err_.str().find("--help "), std::string::npos) << "where to look it up";
}

TEST_F(HelpCommandsTest, HhNamesFilesOnRequest) {
  EXPECT_EQ(Hh({"-decompile", "-v", Utf8(root_ / "out"), Utf8(kData / "tiny.chm")}), 0);
  // The order in which the file holds them; the first one is its compiler's own.
  EXPECT_EQ(out_.str(),
            "_#_README_#_\nindex.htm\npages/first.htm\nstyle.css\nwords.hhk\ntoc.hhc\n");
}

TEST_F(HelpCommandsTest, HhUnpacksStreamsOnRequest) {
  EXPECT_EQ(Hh({"-decompile", "--internal", Utf8(root_ / "out"), Utf8(kData / "tiny.chm")}), 0);
  EXPECT_TRUE(fs::exists(root_ / "out" / "#SYSTEM"));
  EXPECT_TRUE(fs::exists(root_ / "out" / "$WWKeywordLinks" / "BTree"));
}

TEST_F(HelpCommandsTest, HhReadsEveryListOfNames) {
  EXPECT_EQ(Hh({"-decompile", Utf8(root_ / "out"), Utf8(kData / "many.chm")}), 0);
  for (int i = 0; i < 150; ++i) {
    const std::string name = "page number " + std::to_string(i) + ".htm";
    EXPECT_EQ(ReadFileText(root_ / "out" / name),
              "<html><head><title>" + name + "</title></head><body>" + name + "</body></html>");
  }
}

TEST_F(HelpCommandsTest, HhPutsTornPathsTogether) {
  fs::copy_file(kData / "tiny.chm", root_ / "tiny.chm");
  const std::string command = Utf8(root_ / "out folder") + " " + Utf8(root_ / "tiny.chm");
  std::vector<std::string> words = {"-decompile"};
  std::istringstream stream(command);
  for (std::string word; stream >> word;) words.push_back(word);
  EXPECT_EQ(Hh(words), 0);
  EXPECT_TRUE(fs::exists(root_ / "out folder" / "index.htm"));
}

TEST_F(HelpCommandsTest, HhSavesWhatItCanAndSaysWhatItCannot) {
  const fs::path cut = CutCopy("tiny.chm", 400);
  EXPECT_EQ(Hh({"-decompile", Utf8(root_ / "out"), Utf8(cut)}), 1);
  EXPECT_NE(err_.str().find("hh: error: " + Utf8(cut) + ": the file is cut short"),
            std::string::npos)
      << err_.str();
}

TEST_F(HelpCommandsTest, HhSaysWhyItCannotStart) {
  EXPECT_EQ(Hh({"-decompile", Utf8(root_ / "out"), Utf8(root_ / "none.chm")}), 1);
  EXPECT_NE(err_.str().find("none.chm: "), std::string::npos);
  EXPECT_FALSE(fs::exists(root_ / "out"));
  err_.str("");
  std::ofstream(root_ / "text.chm") << "no help file";
  EXPECT_EQ(Hh({"-decompile", Utf8(root_ / "out"), Utf8(root_ / "text.chm")}), 1);
  EXPECT_EQ(err_.str(), "hh: error: " + Utf8(root_ / "text.chm") +
                            ": not a compiled help file: no ITSF signature\n");
  err_.str("");
  EXPECT_EQ(Hh({"-decompile", Utf8(root_ / "text.chm"), Utf8(kData / "tiny.chm")}), 1);
  EXPECT_NE(err_.str().find("text.chm: "), std::string::npos);
}

TEST_F(HelpCommandsTest, HhSaysWhatItCanDo) {
  EXPECT_EQ(Hh({}), 2);
  EXPECT_EQ(err_.str().rfind("usage: hh -decompile", 0), 0U);
  EXPECT_EQ(Hh({"help.chm"}), 2);
  EXPECT_EQ(Hh({"-decompile", Utf8(root_)}), 2);
  EXPECT_EQ(out_.str(), "");
}

TEST_F(HelpCommandsTest, ListShowsFilesAndSizes) {
  EXPECT_EQ(RunList(Utf8(kData / "tiny.chm"), false, out_, err_), 0);
  EXPECT_EQ(err_.str(), "");
  const auto line = [&](const std::string& name) {
    const std::string size = std::to_string(fs::file_size(kData / "tiny" / name));
    return std::string(12 - size.size(), ' ') + size + "  /" + name + "\n";
  };
  EXPECT_EQ(out_.str(), "         136  /_#_README_#_\n" + line("index.htm") +
                            line("pages/first.htm") + line("style.css") + line("toc.hhc") +
                            line("words.hhk") + "         932  in 6 files\n");
}

TEST_F(HelpCommandsTest, ListShowsStreamsOnRequest) {
  EXPECT_EQ(RunList(Utf8(kData / "tiny.chm"), true, out_, err_), 0);
  EXPECT_NE(out_.str().find("  /#SYSTEM\n"), std::string::npos);
  EXPECT_EQ(out_.str().find("  /$WWKeywordLinks/\n"), std::string::npos);
}

TEST_F(HelpCommandsTest, ListNamesEntriesThatCannotBeHad) {
  EXPECT_EQ(RunList(Utf8(root_ / "none.chm"), false, out_, err_), 1);
  EXPECT_EQ(RunList(Utf8(CutCopy("many.chm", 12000)), false, out_, err_), 1);
  EXPECT_NE(err_.str().find("cut short"), std::string::npos) << err_.str();
}

TEST_F(HelpCommandsTest, InfoTellsWhatTheFileSaysOfItself) {
  EXPECT_EQ(RunInfo(Utf8(kData / "tiny.chm"), out_, err_), 0);
  EXPECT_EQ(err_.str(), "");
  EXPECT_EQ(out_.str(),
            "Title:          A tiny help file\n"
            "Default topic:  index.htm\n"
            "Language:       0x409 English (United States), code page 1252\n"
            "Window:         main\n"
            "Window title:   Tiny window\n"
            "Compiler:       HHA Version 4.74.8702\n"
            "Files:          6\n"
            "Index:          /words.hhk\n"
            "Contents:       /toc.hhc\n"
            "  Welcome  [index.htm]\n"
            "    First page  [pages/first.htm]\n");
}

TEST_F(HelpCommandsTest, InfoShowsADashForWhatIsNotThere) {
  EXPECT_EQ(RunInfo(Utf8(kData / "many.chm"), out_, err_), 0);
  EXPECT_NE(out_.str().find("Contents:       -\n"), std::string::npos) << out_.str();
}

TEST_F(HelpCommandsTest, InfoFailsWithoutTheSystemStream) {
  std::string bytes = ReadFileText(kData / "tiny.chm");
  bytes[bytes.find("/#SYSTEM") + 2] = 'X';
  std::ofstream(root_ / "broken.chm", std::ios::binary) << bytes;
  EXPECT_EQ(RunInfo(Utf8(root_ / "broken.chm"), out_, err_), 1);
  EXPECT_NE(err_.str().find("/#SYSTEM is missing or damaged"), std::string::npos) << err_.str();
}

}  // namespace
}  // namespace scrivo
