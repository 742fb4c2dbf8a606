// Growing files without a name, the way that takes their place where the file system has none, and
// disks that fail at the end. Calls of the system fail by a filter, in a child process of each
// test, since a filter cannot be taken back.

#include <fcntl.h>
#include <sys/file.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <thread>
#include <vector>

#include "tests/bytes/output_file_test.h"
#include "tests/bytes/posix/failing_calls.h"

namespace scrivo {
namespace {

namespace fs = std::filesystem;

constexpr unsigned kWithoutName = O_TMPFILE & ~O_DIRECTORY;

class UnnamedFileTest : public OutputFileTest {
 protected:
  template <typename Work>
  static void WhereFilesNeedNames(const Work& work) {
    WithFailingCalls({SYS_openat, EOPNOTSUPP, kWithoutName}, work);
  }
};

TEST_F(UnnamedFileTest, HasNoNameUntilItIsWhole) {
  const int probe = open(folder_.c_str(), O_TMPFILE | O_RDWR, 0600);
  if (probe == -1) GTEST_SKIP() << "this file system has no files without names";
  close(probe);
  Put(target_, "earlier");
  const auto file = Create();
  EXPECT_TRUE(file->WriteAt(0, ToBytes("new")));
  EXPECT_EQ(FilesInFolder(), 1u);
  EXPECT_TRUE(file->Commit());
  EXPECT_EQ(FilesInFolder(), 1u);
}

TEST_F(UnnamedFileTest, GrowsUnderARecognisableNameWhereItNeedsOne) {
  Put(target_, "earlier");
  WhereFilesNeedNames([&] {
    const fs::path beside = NameBesideTarget(target_, 1);
    {
      const auto file = Create();
      EXPECT_TRUE(file->WriteAt(0, ToBytes("new")));
      EXPECT_EQ(Content(beside), "new");
      EXPECT_EQ(Content(target_), "earlier");
      const int other = open(beside.c_str(), O_RDONLY);
      EXPECT_NE(flock(other, LOCK_EX | LOCK_NB), 0) << "nobody holds it";
      close(other);
    }
    EXPECT_FALSE(fs::exists(beside)) << "it was given up";
    const auto file = Create();
    EXPECT_TRUE(file->WriteAt(0, ToBytes("newer")));
    EXPECT_TRUE(file->Commit());
    EXPECT_EQ(Content(target_), "newer");
    EXPECT_EQ(FilesInFolder(), 1u);
  });
}

TEST_F(UnnamedFileTest, LeavesTheLastOfTwoWritersWhereTheyNeedNames) {
  WhereFilesNeedNames([&] {
    const auto first = Create(), second = Create();
    EXPECT_TRUE(first->WriteAt(0, ToBytes("first")));
    EXPECT_TRUE(second->WriteAt(0, ToBytes("second")));
    EXPECT_EQ(FilesInFolder(), 2u);
    EXPECT_TRUE(second->Commit());
    EXPECT_EQ(Content(target_), "second");
    EXPECT_TRUE(first->Commit());
    EXPECT_EQ(Content(target_), "first");
    EXPECT_EQ(FilesInFolder(), 1u);
  });
}

TEST_F(UnnamedFileTest, OpensNothingThatWasThereWhereItNeedsAName) {
  Put(folder_ / "precious", "precious");
  fs::create_symlink("precious", NameBesideTarget(target_, 1));
  WhereFilesNeedNames([&] {
    const auto file = Create();
    EXPECT_TRUE(file->WriteAt(0, ToBytes("new")));
    EXPECT_TRUE(file->Commit());
  });
  EXPECT_EQ(Content(folder_ / "precious"), "precious");
}

TEST_F(UnnamedFileTest, StaysWholeUnderManyWritersWhereTheyNeedNames) {
  WhereFilesNeedNames([&] {
    constexpr int kWriters = 4, kRounds = 25;
    const std::string page(20000, 'x');
    std::vector<std::thread> writers;
    std::vector<int> made(kWriters, 0);
    for (int& times : made) {
      writers.emplace_back([&] {
        for (int round = 0; round < kRounds; ++round) {
          std::error_code error;
          const auto file = OutputFile::Create(target_, &error);
          if (file && file->WriteAt(0, ToBytes(page)) && file->Commit()) ++times;
        }
      });
    }
    for (std::thread& writer : writers) writer.join();
    for (const int times : made) EXPECT_EQ(times, kRounds);
    EXPECT_EQ(Content(target_), page);
    EXPECT_EQ(FilesInFolder(), 1u);
  });
}

TEST_F(UnnamedFileTest, DoesNotTakeTheTargetsPlaceBeforeItsBytesAreOnTheDisk) {
  Put(target_, "earlier");
  WithFailingCalls({SYS_fsync, EIO}, [&] {
    const auto file = Create();
    EXPECT_TRUE(file->WriteAt(0, ToBytes("new")));
    EXPECT_FALSE(file->Commit());
    EXPECT_EQ(file->Reason(), std::errc::io_error);
  });
  EXPECT_EQ(Content(target_), "earlier");
  EXPECT_EQ(FilesInFolder(), 1u);
}

}  // namespace
}  // namespace scrivo
