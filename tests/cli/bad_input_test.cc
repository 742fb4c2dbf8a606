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
  EXPECT_NE(err.find("so the contents follow the web's folders"), std::string::npos) << err;
  EXPECT_NE(out.find("2 pages, 3 contents entries, "), std::string::npos) << out;
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
  output.Write("a.chm", "old");
  std::vector<std::string> written;
  UseFailingDisk()->on_write = [&](const std::string& path) {
    if (path.ends_with(".tmp.htm")) throw Error(kDiskFull, "", "Disk full: " + path);
    written.push_back(path);
  };
  EXPECT_EQ(CompileWithFake("make"), 1);
  EXPECT_NE(err.find(". Free some space and try again.\n"), std::string::npos) << err;
  EXPECT_FALSE(written.empty()) << "nothing had to be removed";
  EXPECT_TRUE(ProjectFiles().empty());
  EXPECT_EQ(output.Read("a.chm"), "old");
  written.clear();
  EXPECT_EQ(Run({"project", WebPath()}), 1);
  EXPECT_FALSE(written.empty()) << "nothing had to be removed";
  EXPECT_TRUE(ProjectFiles().empty());
  EXPECT_EQ(out, "");
}

}  // namespace
}  // namespace scrivo
