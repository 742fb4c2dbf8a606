#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <set>
#include <tuple>

#include "platform/command_line.h"
#include "platform/posix/services.h"
#include "platform/posix/system_error.h"
#include "tests/doubles/temp_folder.h"

namespace scrivo {
namespace {

class FilesOnDisk : public testing::Test {
 protected:
  void Expect(const std::function<void()>& work, std::int32_t number, const std::string& text) {
    try {
      work();
      ADD_FAILURE() << "no error; expected: " << text;
    } catch (const Error& error) {
      EXPECT_EQ(error.number, number);
      EXPECT_EQ(error.description, text);
    }
  }

  TempFolder folder;
  PosixFiles files;
};

TEST_F(FilesOnDisk, WriteAndReadBytesAsTheyAre) {
  std::string bytes;
  for (int i = 0; i < 300000; ++i) bytes += static_cast<char>(i * 7);
  files.Write(folder / "a", bytes);
  EXPECT_EQ(ReadWholeFile(files, folder / "a"), bytes);
  EXPECT_EQ(files.Size(folder / "a"), bytes.size());
  files.Write(folder / "a", "short");
  EXPECT_EQ(ReadWholeFile(files, folder / "a"), "short");
  files.Append(folder / "a", "er");
  files.Append(folder / "b", "new");
  EXPECT_EQ(ReadWholeFile(files, folder / "a"), "shorter");
  EXPECT_EQ(ReadWholeFile(files, folder / "b"), "new");
}

TEST_F(FilesOnDisk, TellWhatIsMissing) {
  const std::string file = folder / "missing";
  const std::string deep = folder / "missing/file";
  for (const auto& [path, number, text] : {std::tuple(file, kFileNotFound, "File not found: "),
                                           std::tuple(deep, kPathNotFound, "Path not found: ")}) {
    Expect([&, path = path] { files.OpenForReading(path); }, number, text + path);
    Expect([&, path = path] { files.Size(path); }, number, text + path);
    Expect([&, path = path] { files.Remove(path, true); }, number, text + path);
  }
  Expect([&] { files.Write(deep, "x"); }, kPathNotFound, "Path not found: " + deep);
  Expect([&] { files.Append(deep, "x"); }, kPathNotFound, "Path not found: " + deep);
  Expect([&] { files.MakeFolder(deep); }, kPathNotFound, "Path not found: " + deep);
  Expect([&] { files.List(file); }, kPathNotFound, "Path not found: " + file);
  EXPECT_FALSE(files.FileExists(file));
  EXPECT_FALSE(files.FolderExists(file));
}

TEST_F(FilesOnDisk, TellAFileInThePlaceOfAFolder) {
  files.Write(folder / "a", "x");
  const std::string below = folder / "a/b";
  Expect([&] { files.OpenForReading(below); }, kPathNotFound, "Path not found: " + below);
  Expect([&] { files.List(folder / "a"); }, kPathNotFound, "Path not found: " + (folder / "a"));
}

TEST_F(FilesOnDisk, DoNotTakeAFolderForAFile) {
  const std::string path = folder.path();
  const std::string text = "Path/File access error: " + path + " (Is a directory)";
  Expect([&] { files.OpenForReading(path); }, kPathFileAccessError, text);
  Expect([&] { files.Write(path, "x"); }, kPathFileAccessError, text);
  Expect([&] { files.Remove(path, true); }, kPathFileAccessError, text);
  EXPECT_FALSE(files.FileExists(path));
  EXPECT_TRUE(files.FolderExists(path));
}

TEST_F(FilesOnDisk, RemoveReadOnlyFilesOnlyByForce) {
  const std::string path = folder / "a";
  files.Write(path, "x");
  ASSERT_EQ(chmod(path.c_str(), 0444), 0);
  Expect([&] { files.Remove(path, false); }, kPermissionDenied, "Permission denied: " + path);
  EXPECT_TRUE(files.FileExists(path));
  files.Remove(path, true);
  EXPECT_FALSE(files.FileExists(path));
}

TEST_F(FilesOnDisk, RemoveALinkAndNotItsTarget) {
  files.Write(folder / "a", "x");
  ASSERT_EQ(symlink((folder / "a").c_str(), (folder / "link").c_str()), 0);
  files.Remove(folder / "link", false);
  EXPECT_TRUE(files.FileExists(folder / "a"));
  EXPECT_FALSE(files.FileExists(folder / "link"));
}

TEST_F(FilesOnDisk, RemoveALinkThatLeadsNowhere) {
  ASSERT_EQ(symlink("nowhere", (folder / "link").c_str()), 0);
  EXPECT_FALSE(files.FileExists(folder / "link"));
  files.Remove(folder / "link", false);
  EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

TEST_F(FilesOnDisk, TellAFullDisk) {
  Expect([&] { files.Write("/dev/full", "x"); }, kDiskFull, "Disk full: /dev/full");
  Expect([&] { files.Append("/dev/full", "x"); }, kDiskFull, "Disk full: /dev/full");
}

TEST_F(FilesOnDisk, MakeOneFolder) {
  files.MakeFolder(folder / "a");
  EXPECT_TRUE(files.FolderExists(folder / "a"));
  Expect([&] { files.MakeFolder(folder / "a"); }, kFileAlreadyExists,
         "File already exists: " + (folder / "a"));
}

TEST_F(FilesOnDisk, ListFilesFoldersAndLinks) {
  files.Write(folder / "a", "");
  files.Write(folder / ".hidden", "");
  files.MakeFolder(folder / "sub");
  files.Write(folder / "sub/below", "");
  ASSERT_EQ(symlink("sub", (folder / "to sub").c_str()), 0);
  ASSERT_EQ(symlink("nowhere", (folder / "to nowhere").c_str()), 0);
  std::set<std::string> names;
  for (const FolderEntry& entry : files.List(folder.path())) {
    names.insert(entry.name + (entry.is_folder ? "/" : ""));
  }
  EXPECT_EQ(names, (std::set<std::string>{".hidden", "a", "sub/", "to sub/", "to nowhere"}));
}

TEST_F(FilesOnDisk, MakeUniqueFilesOfThreeLetters) {
  std::set<std::string> made;
  for (int i = 0; i < 20; ++i) {
    const std::string path = files.MakeUniqueFile(folder.path(), "Scrivo");
    EXPECT_TRUE(files.FileExists(path));
    EXPECT_EQ(files.Size(path), 0u);
    made.insert(path);
    const std::string name = path.substr(folder.path().size() + 1);
    EXPECT_EQ(name.substr(0, 3), "Scr");
    EXPECT_EQ(name.substr(name.size() - 4), ".tmp");
    const std::string number = name.substr(3, name.size() - 7);
    EXPECT_FALSE(number.empty());
    EXPECT_LE(number.size(), 4u);
    EXPECT_EQ(number.find_first_not_of("0123456789ABCDEF"), std::string::npos) << name;
  }
  EXPECT_EQ(made.size(), 20u);
  EXPECT_EQ(files.MakeUniqueFile(folder / "missing", "Scrivo"), "");
}

TEST_F(FilesOnDisk, TakeNoNameThatIsThere) {
  const std::string first = files.MakeUniqueFile(folder.path(), "q");
  const std::size_t start = folder.path().size() + 2;
  const unsigned long number = std::stoul(first.substr(start), nullptr, 16);
  for (unsigned long taken = number + 1; taken < number + 40; ++taken) {
    char name[24];
    std::snprintf(name, sizeof name, "q%lX.tmp", taken > 0xFFFF ? taken - 0xFFFF : taken);
    ASSERT_EQ(symlink("nowhere", (folder / name).c_str()), 0);
  }
  const std::string next = files.MakeUniqueFile(folder.path(), "q");
  const unsigned long expected = number + 40 > 0xFFFF ? number + 40 - 0xFFFF : number + 40;
  EXPECT_EQ(std::stoul(next.substr(start), nullptr, 16), expected);
  EXPECT_FALSE(files.FileExists(folder / "nowhere"));
}

TEST_F(FilesOnDisk, HaveAShortFormThatACommandLineTakes) {
  const std::string name = "a \"b\" \\ c";
  files.Write(folder / name, "x");
  const std::string form = files.ShortForm(folder / name);
  EXPECT_EQ(SplitCommandLine("p " + form), (std::vector<std::string>{"p", folder / name}));
  EXPECT_EQ(files.ShortForm("/"), "/");
  EXPECT_EQ(files.ShortForm(folder / "missing"), "");
}

TEST_F(FilesOnDisk, LeakNoDescriptors) {
  files.Write(folder / "a", "x");
  const auto open_now = [] {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
  };
  const auto before = open_now();
  for (int i = 0; i < 100; ++i) {
    files.Write(folder / "a", "x");
    files.Append(folder / "a", "x");
    ReadWholeFile(files, folder / "a");
    files.List(folder.path());
    files.Remove(files.MakeUniqueFile(folder.path(), "x"), false);
    EXPECT_THROW(files.OpenForReading(folder.path()), Error);
    EXPECT_THROW(files.Write("/dev/full", "x"), Error);
  }
  EXPECT_EQ(open_now(), before);
}

TEST(SystemError, GivesEachCodeItsNumber) {
  const std::tuple<int, RunTimeError, const char*> codes[] = {
      {ENOENT, kFileNotFound, "File not found: /x"},
      {ENOTDIR, kPathNotFound, "Path not found: /x"},
      {EACCES, kPermissionDenied, "Permission denied: /x"},
      {EPERM, kPermissionDenied, "Permission denied: /x"},
      {EROFS, kPermissionDenied, "Permission denied: /x"},
      {EBUSY, kPermissionDenied, "Permission denied: /x"},
      {ETXTBSY, kPermissionDenied, "Permission denied: /x"},
      {EEXIST, kFileAlreadyExists, "File already exists: /x"},
      {ENOSPC, kDiskFull, "Disk full: /x"},
      {EDQUOT, kDiskFull, "Disk full: /x"},
      {EFBIG, kDiskFull, "Disk full: /x"},
      {ENOMEM, kOutOfMemory, "Out of memory: /x"},
      {ELOOP, kPathFileAccessError,
       "Path/File access error: /x (Too many levels of symbolic links)"},
      {ENAMETOOLONG, kPathFileAccessError, "Path/File access error: /x (File name too long)"},
      {EMFILE, kPathFileAccessError, "Path/File access error: /x (Too many open files)"},
      {EIO, kDeviceIoError, "Device I/O error: /x (Input/output error)"},
      {EPIPE, kDeviceIoError, "Device I/O error: /x (Broken pipe)"},
  };
  for (const auto& [code, number, text] : codes) {
    const Error error = SystemError(code, "/x");
    EXPECT_EQ(error.number, number) << code;
    EXPECT_EQ(error.description, text);
  }
}

TEST(SystemError, AsksForTheFolderOfWhatIsMissing) {
  EXPECT_EQ(SystemError(ENOENT, "here").number, kFileNotFound);
  EXPECT_EQ(SystemError(ENOENT, "no such folder/here").number, kPathNotFound);
  EXPECT_EQ(SystemError(ENOENT, "/no such folder/here/").number, kPathNotFound);
  EXPECT_EQ(SystemError(ENOENT, "/here/").number, kFileNotFound);
}

}  // namespace
}  // namespace scrivo
