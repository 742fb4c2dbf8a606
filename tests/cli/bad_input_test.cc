// Webs, structures and disks that are not as they should be: what is told, the exit status, and
// that nothing is lost.

#include "system/error.h"
#include "tests/cli/failing_disk.h"
#include "tests/cli/scrivo_run.h"

namespace scrivo {
namespace {

class BadInput : public ScrivoRun {
 protected:
  // Puts a disk between the program and the system's.
  std::shared_ptr<FailingDisk> UseFailingDisk() {
    auto disk = std::make_shared<FailingDisk>(TheServices().files);
    TheServices().files = disk;
    return disk;
  }
  void ExpectError(const std::string& line) {
    EXPECT_NE(Plain(err).find("scrivo: error: " + line + "\n"), std::string::npos) << err;
  }
};

TEST_F(BadInput, SaysWhatIsWrongWithAWebThatCannotBeOpened) {
  EXPECT_EQ(Run({"compile", web.PathOf("none"), "-o", Output()}), 1);
  ExpectError("WEB/none: the web does not exist. Check the spelling of the path.");
  EXPECT_EQ(Run({"compile", web.PathOf("index.htm"), "-o", Output()}), 1);
  ExpectError("WEB/index.htm: the web is a file. Name the folder that contains the web.");
}

TEST_F(BadInput, SaysThatAWebIsEmpty) {
  EXPECT_EQ(Run({"compile", output.path().string(), "-o", Output()}), 1);
  ExpectError("OUT: the web has no files. Name the folder that contains its pages.");
  EXPECT_EQ(Run({"tree", output.path().string()}), 1);
  ExpectError("OUT: the web has no files. Name the folder that contains its pages.");
}

TEST_F(BadInput, GivesOneAdviceForAWebThatCannotBeRead) {
  UseFailingDisk()->on_list = [](const std::string& folder) {
    throw Error(kPermissionDenied, "", "Permission denied: " + folder);
  };
  EXPECT_EQ(Run({"compile", WebPath(), "-o", Output()}), 1);
  ExpectError(
      "WEB: the web cannot be read: Permission denied: WEB. Ask for permission to read the "
      "folder.");
}

TEST_F(BadInput, WarnsOfADamagedStructureAndGoesOn) {
  web.Write("_vti_pvt/structure.cnf",
            "3.0.0.507\r\n1002\r\n1000,index.htm,0,Home,0,100,0\r\nno node\r\n");
  EXPECT_EQ(Compile(), 0);
  EXPECT_NE(Plain(err).find("scrivo: warning: WEB/_vti_pvt/structure.cnf:4: "), std::string::npos)
      << err;
}

TEST_F(BadInput, WarnsOfAStructureThatIsCutShortAndGoesOn) {
  web.Write("_vti_pvt/structure.cnf",
            "3.0.0.507\r\n1003\r\n1000,index.htm,0,Home,0,100,0\r\n"
            "1001,docs/a.htm,0,First,1000,100,0\r\n1002,docs/b.h");
  EXPECT_EQ(Compile(), 0);
  EXPECT_NE(Plain(err).find("scrivo: warning: WEB/_vti_pvt/structure.cnf:5: "), std::string::npos)
      << err;
  EXPECT_NE(out.find(", 2 contents entries, "), std::string::npos) << out;
}

TEST_F(BadInput, WarnsOfABinaryStructureAndTakesTheFolders) {
  web.Write("_vti_pvt/structure.cnf", std::string("\0\1\2\xFF\xFE\n\0\0,\0", 10));
  EXPECT_EQ(Compile(), 0);
  EXPECT_NE(Plain(err).find("scrivo: warning: WEB/_vti_pvt/structure.cnf:"), std::string::npos)
      << err;
  EXPECT_NE(err.find("Contents: the web's folders, because the navigation structure cannot be"),
            std::string::npos)
      << err;
  EXPECT_NE(out.find("2 pages, no other files, 3 contents entries, "), std::string::npos) << out;
}

TEST_F(BadInput, SaysThatTheProjectFilesCannotBeWritten) {
  UseFailingDisk()->on_write = [](const std::string& path) {
    throw Error(kPermissionDenied, "", "Permission denied: " + path);
  };
  const std::string line =
      "WEB: the project files cannot be written here: Permission denied: WEB/Scrivo.hhp. Check "
      "that you have permission to read and write there.";
  EXPECT_EQ(Run({"project", WebPath()}), 1);
  ExpectError(line);
  EXPECT_EQ(Compile({"--keep-project"}), 1);
  ExpectError(line);
  EXPECT_FALSE(output.Has("a.chm"));
  EXPECT_EQ(Compile(), 0) << "nothing is written there unless it is asked for: " << err;
}

TEST_F(BadInput, LeavesNoProjectFileWhenTheDiskFillsUpOnTheWay) {
  output.Write("a.chm", "ITSF old");
  std::vector<std::string> written;
  UseFailingDisk()->on_write = [&](const std::string& path) {
    if (path.ends_with(".tmp.htm")) throw Error(kDiskFull, "", "Disk full: " + path);
    written.push_back(path);
  };
  EXPECT_EQ(CompileWithFake("make"), 1);
  EXPECT_NE(err.find(". Free some space and try again.\n"), std::string::npos) << err;
  EXPECT_FALSE(written.empty()) << "nothing had to be removed";
  EXPECT_TRUE(ProjectFiles().empty());
  EXPECT_EQ(output.Read("a.chm"), "ITSF old");
  written.clear();
  EXPECT_EQ(Run({"project", WebPath()}), 1);
  EXPECT_FALSE(written.empty()) << "nothing had to be removed";
  EXPECT_TRUE(ProjectFiles().empty());
  EXPECT_EQ(out, "");
}

TEST_F(BadInput, RefusesAFolderAsTheOutput) {
  const std::string reason = ": the help file cannot be made: it is a folder. Name a file in it.";
  std::filesystem::create_directory(output.PathOf("folder"));
  for (const char* name : {"folder", "folder/", "folder/.", "none/", "none/."}) {
    EXPECT_EQ(Run({"compile", WebPath(), "-o", output.PathOf(name)}), 1) << name;
    EXPECT_NE(err.find(reason), std::string::npos) << name << err;
  }
  EXPECT_TRUE(std::filesystem::is_empty(output.PathOf("folder")));
  EXPECT_FALSE(output.Has("none"));
}

TEST_F(BadInput, RefusesAFileOfTheWebAsTheOutputUnderAnyName) {
  const std::string page = web.Read("docs/a.htm");
  std::filesystem::create_hard_link(web.PathOf("docs/a.htm"), output.PathOf("linked.chm"));
  web.Write("empty.htm", "");
  for (const std::string& path : {web.PathOf("docs/a.htm"), output.PathOf("linked.chm")}) {
    EXPECT_EQ(Run({"compile", WebPath(), "-o", path}), 1);
    EXPECT_NE(err.find("it is docs/a.htm, a file of the web. Name another file with -o."),
              std::string::npos)
        << err;
  }
  EXPECT_EQ(Run({"compile", WebPath(), "-o", web.PathOf("empty.htm")}), 1);
  EXPECT_EQ(web.Read("docs/a.htm"), page);
  EXPECT_EQ(output.Read("linked.chm"), page);
  EXPECT_EQ(web.Read("empty.htm"), "");
}

TEST_F(BadInput, ReplacesHelpFilesAndEmptyFilesOnly) {
  output.Write("letter.txt", "Dear Sir");
  EXPECT_EQ(Run({"compile", WebPath(), "-o", output.PathOf("letter.txt")}), 1);
  ExpectError(
      "OUT/letter.txt: the help file cannot be made: it exists and is not a help file. Remove it, "
      "or "
      "name another file with -o.");
  EXPECT_EQ(output.Read("letter.txt"), "Dear Sir");
  output.Write("a.chm", "");
  EXPECT_EQ(Compile(), 0) << err;
  EXPECT_TRUE(output.Read("a.chm").starts_with("ITSF"));
  EXPECT_EQ(Compile(), 0) << err;
  web.Write("web.chm", output.Read("a.chm").substr(0, 100));
  EXPECT_EQ(Run({"compile", WebPath(), "-o", web.PathOf("web.chm")}), 0) << err;
}

}  // namespace
}  // namespace scrivo
