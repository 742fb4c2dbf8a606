// The file services against the system's own files.

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

#include "platform/temp_files.h"
#include "system/error.h"
#include "tests/doubles/real_services.h"

namespace scrivo {
namespace {

using std::string_literals::operator""s;
namespace fs = std::filesystem;

class SystemFiles : public WithRealServices {
 protected:
  Files& files = *TheServices().files;

  void ExpectError(std::int32_t number, const std::string& named,
                   const std::function<void()>& call) {
    try {
      call();
      ADD_FAILURE() << "no error where there should be " << number;
    } catch (const Error& error) {
      EXPECT_EQ(error.number, number) << error.description;
      EXPECT_NE(error.description.find(named), std::string::npos) << error.description;
    }
  }

  void MakeReadOnly(const std::string& path) {
    fs::permissions(path, fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write,
                    fs::perm_options::remove);
  }
};

TEST_F(SystemFiles, WritesBytesAsTheyAreAndReadsThemBack) {
  const std::string bytes = "line\r\nline\nNUL \0 end of file \x1A high \xFF"s;
  files.Write(InFolder("a.txt"), bytes);
  EXPECT_EQ(ReadWholeFile(files, InFolder("a.txt")), bytes);
  EXPECT_EQ(files.Size(InFolder("a.txt")), bytes.size());
}

TEST_F(SystemFiles, WritingAgainTruncates) {
  files.Write(InFolder("a.txt"), "a long text");
  files.Write(InFolder("a.txt"), "short");
  EXPECT_EQ(ReadWholeFile(files, InFolder("a.txt")), "short");
  files.Write(InFolder("a.txt"), "");
  EXPECT_EQ(files.Size(InFolder("a.txt")), 0u);
}

TEST_F(SystemFiles, ALogOfARelativeNameLiesInTheCurrentFolder) {
  CErrorHandler handler;
  handler.ErrorHandlerActions(ehaLogFile);
  const fs::path start = fs::current_path();
  for (const char* name : {"one", "two"}) {
    files.MakeFolder(InFolder(name));
    fs::current_path(InFolder(name));
    handler.HandleError("Test");
    fs::current_path(start);
    EXPECT_EQ(files.List(InFolder(name)).at(0).name, "Error Log.txt");
  }
}

TEST_F(SystemFiles, AppendingCreatesAndThenExtends) {
  files.Append(InFolder("log.txt"), "one\r\n");
  files.Append(InFolder("log.txt"), "two\r\n");
  EXPECT_EQ(ReadWholeFile(files, InFolder("log.txt")), "one\r\ntwo\r\n");
}

TEST_F(SystemFiles, ALargeFileIsReadInSeveralPieces) {
  std::string bytes(200 * 1024 + 7, '\0');
  for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>(i * 31);
  files.Write(InFolder("large"), bytes);
  EXPECT_EQ(ReadWholeFile(files, InFolder("large")), bytes);
}

TEST_F(SystemFiles, TellsFilesFromFolders) {
  files.Write(InFolder("file"), "");
  EXPECT_TRUE(files.FileExists(InFolder("file")));
  EXPECT_FALSE(files.FolderExists(InFolder("file")));
  EXPECT_TRUE(files.FolderExists(folder));
  EXPECT_FALSE(files.FileExists(folder));
  EXPECT_FALSE(files.FileExists(InFolder("none")));
  EXPECT_FALSE(files.FolderExists(InFolder("none")));
  EXPECT_FALSE(files.FileExists(""));
  EXPECT_FALSE(files.FolderExists(""));
}

TEST_F(SystemFiles, AMissingFileIsNotFoundAndAMissingFolderIsAPath) {
  const std::string file = InFolder("none.txt");
  const std::string deep = InFolder("none") + Separator(SystemPathStyle()) + "deep.txt";
  ExpectError(kFileNotFound, file, [&] { files.OpenForReading(file); });
  ExpectError(kFileNotFound, file, [&] { files.Size(file); });
  ExpectError(kFileNotFound, file, [&] { files.Remove(file, false); });
  ExpectError(kFileNotFound, file, [&] { files.Remove(file, true); });
  ExpectError(kPathNotFound, deep, [&] { files.Write(deep, "x"); });
  ExpectError(kPathNotFound, deep, [&] { files.Append(deep, "x"); });
  ExpectError(kPathNotFound, deep, [&] { files.MakeFolder(deep); });
  ExpectError(kPathNotFound, InFolder("none"), [&] { files.List(InFolder("none")); });
}

TEST_F(SystemFiles, RemovesAFile) {
  files.Write(InFolder("a"), "");
  files.Remove(InFolder("a"), false);
  EXPECT_FALSE(files.FileExists(InFolder("a")));
}

TEST_F(SystemFiles, AReadOnlyFileIsRemovedOnlyByForce) {
  files.Write(InFolder("a"), "kept");
  MakeReadOnly(InFolder("a"));
  ExpectError(kPermissionDenied, InFolder("a"), [&] { files.Remove(InFolder("a"), false); });
  EXPECT_EQ(ReadWholeFile(files, InFolder("a")), "kept");
  files.Remove(InFolder("a"), true);
  EXPECT_FALSE(files.FileExists(InFolder("a")));
}

TEST_F(SystemFiles, AFolderIsNotRemovedAsAFile) {
  files.MakeFolder(InFolder("sub"));
  EXPECT_THROW(files.Remove(InFolder("sub"), true), Error);
  EXPECT_TRUE(files.FolderExists(InFolder("sub")));
}

TEST_F(SystemFiles, AFolderThatIsThereCannotBeMade) {
  files.MakeFolder(InFolder("sub"));
  ExpectError(kFileAlreadyExists, InFolder("sub"), [&] { files.MakeFolder(InFolder("sub")); });
}

TEST_F(SystemFiles, ListsFilesAndFoldersWithoutItself) {
  files.MakeFolder(InFolder("sub folder"));
  files.Write(InFolder("a.htm"), "");
  files.Write(InFolder(".hidden"), "");
  std::vector<FolderEntry> entries = files.List(folder);
  std::sort(entries.begin(), entries.end(),
            [](const FolderEntry& a, const FolderEntry& b) { return a.name < b.name; });
  ASSERT_EQ(entries.size(), 3u);
  EXPECT_EQ(entries[0].name, ".hidden");
  EXPECT_EQ(entries[1].name, "a.htm");
  EXPECT_FALSE(entries[1].is_folder);
  EXPECT_EQ(entries[2].name, "sub folder");
  EXPECT_TRUE(entries[2].is_folder);
  EXPECT_TRUE(files.List(InFolder("sub folder")).empty());
  EXPECT_EQ(files.List(folder + Separator(SystemPathStyle())).size(), 3u);
}

TEST_F(SystemFiles, AFileHasNoList) {
  files.Write(InFolder("a"), "");
  ExpectError(kPathNotFound, InFolder("a"), [&] { files.List(InFolder("a")); });
}

TEST_F(SystemFiles, UniqueFilesHaveThreeLettersOfThePrefixAndNeverTheSameName) {
  const std::string first = files.MakeUniqueFile(folder, "Scrivo");
  const std::string second = files.MakeUniqueFile(folder, "Scrivo");
  EXPECT_NE(first, second);
  for (const std::string& path : {first, second}) {
    EXPECT_TRUE(files.FileExists(path)) << path;
    EXPECT_EQ(files.Size(path), 0u);
    ASSERT_EQ(path.substr(0, InFolder("Scr").size()), InFolder("Scr"));
    const std::string number = path.substr(InFolder("Scr").size());
    ASSERT_GT(number.size(), 4u);
    EXPECT_EQ(number.substr(number.size() - 4), ".tmp");
    EXPECT_EQ(number.find_first_not_of("0123456789ABCDEFabcdef"), number.size() - 4) << path;
  }
}

TEST_F(SystemFiles, NoUniqueFileIsMadeInAFolderThatIsMissing) {
  EXPECT_EQ(files.MakeUniqueFile(InFolder("none"), "Scrivo"), "");
  EXPECT_EQ(files.MakeUniqueFile("http://example.org/web", "Scrivo"), "");
}

TEST_F(SystemFiles, TemporaryNamesAreFreeAgainAndDiffer) {
  const std::string first = GetTempFile(folder, "Scrivo");
  files.Write(first, "taken");
  const std::string second = GetTempFile(folder, "Scrivo");
  EXPECT_NE(first, second);
  EXPECT_NE(second, "");
  EXPECT_FALSE(files.FileExists(second));
}

TEST_F(SystemFiles, AMissingFileHasNoShortForm) {
  EXPECT_EQ(files.ShortForm(InFolder("none.chm")), "");
}

}  // namespace
}  // namespace scrivo
