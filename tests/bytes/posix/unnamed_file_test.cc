// Growing files without a name, the way that takes their place where the file system has none, and
// disks that fail at the end. Calls of the system fail by a filter, in a child process of each
// test, since a filter cannot be taken back.

#include <fcntl.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/file.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <thread>
#include <vector>

#include "tests/bytes/output_file_test.h"

namespace scrivo {
namespace {

namespace fs = std::filesystem;

constexpr unsigned kWithoutName = O_TMPFILE & ~O_DIRECTORY;

// Makes calls of one number fail from here on, with `error`: all of them, or those whose third
// argument has one of `flags`. False when the system takes no filter.
bool FailCalls(unsigned number, unsigned error, unsigned flags = 0) {
  const auto third_argument =
      static_cast<unsigned>(offsetof(seccomp_data, args) + 2 * sizeof(std::uint64_t));
  std::array<sock_filter, 6> filter = {{
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, number, 0, 3),
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, third_argument),
      BPF_JUMP(BPF_JMP | BPF_JSET | BPF_K, flags, 0, 1),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | error),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
  }};
  if (flags == 0) filter[3] = BPF_JUMP(BPF_JMP | BPF_JGE | BPF_K, 0, 0, 1);
  sock_fprog program = {static_cast<unsigned short>(filter.size()), filter.data()};
  return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
         prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

class UnnamedFileTest : public OutputFileTest {
 protected:
  static constexpr int kNoFilter = 77;

  // Runs `work` in a child process, for which the calls fail; holds that it finds no fault.
  template <typename Work>
  static void WithFailingCalls(unsigned number, unsigned error, unsigned flags, const Work& work) {
    const auto run = [&] {
      if (!FailCalls(number, error, flags)) _exit(kNoFilter);
      work();
      _exit(HasFailure() ? 1 : 0);
    };
    EXPECT_EXIT(
        run(),
        [](int status) {
          return WIFEXITED(status) &&
                 (WEXITSTATUS(status) == 0 || WEXITSTATUS(status) == kNoFilter);
        },
        "");
  }
  template <typename Work>
  static void WhereFilesNeedNames(const Work& work) {
    WithFailingCalls(SYS_openat, EOPNOTSUPP, kWithoutName, work);
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
  WithFailingCalls(SYS_fsync, EIO, 0, [&] {
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
