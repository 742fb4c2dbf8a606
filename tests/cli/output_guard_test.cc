#include "cli/output_guard.h"

#include "tests/doubles/fake_services.h"
#include "tests/doubles/test_folder.h"

namespace scrivo {
namespace {

// The real disk: what is moved, put back and refused here is the system's business.
class OutputGuardTest : public WithFakeServices {
 protected:
  OutputGuardTest() { TheServices().files = CreateSystemServices().files; }

  static std::string HelpFile(std::size_t told_size = 0x78) {
    std::string bytes(0x78, '\0');
    bytes.replace(0, 4, "ITSF");
    bytes[0x38] = 0x60;
    bytes[0x68] = static_cast<char>(told_size);
    return bytes;
  }
  // The text of the error with which the file is refused.
  std::string Refusal(const std::string& path) {
    try {
      OutputGuard guard(path);
    } catch (const Error& error) {
      return error.description;
    }
    return "";
  }
  std::size_t FilesInFolder() const {
    return static_cast<std::size_t>(
        std::distance(std::filesystem::directory_iterator(folder.path()), {}));
  }

  TestFolder folder;
  std::string path = folder.PathOf("a.chm");
};

TEST_F(OutputGuardTest, SetsAnEarlierFileAsideAndPutsItBack) {
  folder.Write("a.chm", "old");
  {
    OutputGuard guard(path);
    EXPECT_TRUE(guard.HoldsEarlierFile());
    EXPECT_FALSE(folder.Has("a.chm"));
  }
  EXPECT_EQ(folder.Read("a.chm"), "old");
  EXPECT_EQ(FilesInFolder(), 1u);
}

TEST_F(OutputGuardTest, PutsTheEarlierFileBackInPlaceOfAHalfWrittenOne) {
  folder.Write("a.chm", "old");
  {
    OutputGuard guard(path);
    folder.Write("a.chm", "half");
  }
  EXPECT_EQ(folder.Read("a.chm"), "old");
  EXPECT_EQ(FilesInFolder(), 1u);
}

TEST_F(OutputGuardTest, RemovesAHalfWrittenFileWhereThereWasNone) {
  {
    OutputGuard guard(path);
    EXPECT_FALSE(guard.HoldsEarlierFile());
    folder.Write("a.chm", "half");
  }
  EXPECT_EQ(FilesInFolder(), 0u);
}

TEST_F(OutputGuardTest, KeepsTheNewFileOnceItIsAccepted) {
  folder.Write("a.chm", "old");
  {
    OutputGuard guard(path);
    folder.Write("a.chm", HelpFile());
    EXPECT_TRUE(guard.HasHelpFile());
    guard.Accept();
  }
  EXPECT_EQ(folder.Read("a.chm"), HelpFile());
  EXPECT_EQ(FilesInFolder(), 1u);
}

TEST_F(OutputGuardTest, TellsAWholeHelpFileFromAnythingElse) {
  OutputGuard guard(path);
  EXPECT_FALSE(guard.HasHelpFile()) << "there is no file";
  folder.Write("a.chm", "");
  EXPECT_FALSE(guard.HasHelpFile());
  folder.Write("a.chm", std::string(0x78, 'x'));
  EXPECT_FALSE(guard.HasHelpFile()) << "no signature";
  folder.Write("a.chm", HelpFile().substr(0, 0x77));
  EXPECT_FALSE(guard.HasHelpFile()) << "the header is cut";
  folder.Write("a.chm", HelpFile(0x79));
  EXPECT_FALSE(guard.HasHelpFile()) << "shorter than it says";
  std::string odd = HelpFile();
  odd[0x38] = 0x61;
  folder.Write("a.chm", odd);
  EXPECT_FALSE(guard.HasHelpFile()) << "its size lies outside the header";
  folder.Write("a.chm", HelpFile() + "more");
  EXPECT_TRUE(guard.HasHelpFile());
}

TEST_F(OutputGuardTest, RefusesAFolder) {
  EXPECT_EQ(Refusal(folder.path().string()),
            folder.path().string() +
                ": the help file cannot be made: this is a folder. Name a file in it.");
}

TEST_F(OutputGuardTest, RefusesAFileInAFolderThatDoesNotExist) {
  const std::string none = folder.PathOf("none");
  const std::string file = JoinPath(none, "a.chm");
  EXPECT_EQ(Refusal(file), file + ": the help file cannot be made: there is no folder " + none +
                               ". Make it first.");
}

TEST(OutputGuardInMemory, RefusesAFolderThatIsClosedToWriting) {
  class ClosedFiles : public MemoryFiles {
   public:
    std::string MakeUniqueFile(const std::string&, const std::string&) override { return ""; }
  };
  auto files = std::make_shared<ClosedFiles>();
  files->folders.insert("/out");
  TheServices().files = files;
  Globals() = GlobalState(PathStyle::kPosix);
  try {
    OutputGuard guard("/out/a.chm");
    ADD_FAILURE() << "it was not refused";
  } catch (const Error& error) {
    EXPECT_EQ(error.number, kPermissionDenied);
    EXPECT_EQ(
        error.description,
        "/out: no file can be written into this folder. Name another folder for the help file "
        "with -o.");
  }
  TheServices() = {};
  Globals() = GlobalState();
}

TEST(OutputGuardInMemory, RefusesAFileThatCannotBeMovedAside) {
  class FilesInUse : public MemoryFiles {
   public:
    void Replace(const std::string& from, const std::string&) override {
      throw Error(kPermissionDenied, "", "Permission denied: " + from);
    }
  };
  auto files = std::make_shared<FilesInUse>();
  files->folders.insert("/out");
  files->files["/out/a.chm"] = "old";
  TheServices().files = files;
  Globals() = GlobalState(PathStyle::kPosix);
  try {
    OutputGuard guard("/out/a.chm");
    ADD_FAILURE() << "it was not refused";
  } catch (const Error& error) {
    EXPECT_EQ(error.description,
              "/out/a.chm: the help file cannot be replaced: Permission denied: /out/a.chm. Close "
              "the program that shows it.");
  }
  EXPECT_EQ(files->files.size(), 1u) << "nothing is left behind";
  EXPECT_EQ(files->files["/out/a.chm"], "old");
  TheServices() = {};
  Globals() = GlobalState();
}

}  // namespace
}  // namespace scrivo
