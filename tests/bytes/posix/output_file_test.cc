#include "tests/bytes/output_file_test.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace scrivo {
namespace {

namespace fs = std::filesystem;

TEST_F(OutputFileTest, LeavesTheFileOfALivingWriterAlone) {
  const fs::path held = NameBesideTarget(target_, 1);
  Put(held, "growing");
  const int holder = open(held.c_str(), O_RDONLY);
  ASSERT_EQ(flock(holder, LOCK_EX), 0);
  Put(target_, "earlier");
  {
    const auto file = Create();
    EXPECT_TRUE(file->WriteAt(0, ToBytes("new")));
    EXPECT_TRUE(file->Commit());
  }
  EXPECT_EQ(Content(held), "growing");
  EXPECT_EQ(Content(target_), "new");
  close(holder);
  { EXPECT_NE(Create(), nullptr); }
  EXPECT_FALSE(fs::exists(held));
}

TEST_F(OutputFileTest, WritesThroughALink) {
  fs::create_directories(folder_ / "place");
  Put(folder_ / "place" / "real.chm", "earlier");
  fs::create_symlink("place/real.chm", target_);
  {
    const auto file = Create();
    EXPECT_TRUE(file->WriteAt(0, ToBytes("new")));
    EXPECT_TRUE(file->Commit());
  }
  EXPECT_TRUE(fs::is_symlink(target_));
  EXPECT_EQ(Content(folder_ / "place" / "real.chm"), "new");
}

TEST_F(OutputFileTest, WritesThroughALinkToNothingYet) {
  fs::create_symlink(folder_ / "later.chm", target_);
  {
    const auto file = Create();
    EXPECT_TRUE(file->WriteAt(0, ToBytes("new")));
    EXPECT_TRUE(file->Commit());
  }
  EXPECT_TRUE(fs::is_symlink(target_));
  EXPECT_EQ(Content(folder_ / "later.chm"), "new");
}

TEST_F(OutputFileTest, RefusesALinkThatLeadsToItself) {
  fs::create_symlink(target_.filename(), target_);
  EXPECT_EQ(Refusal(target_), std::errc::too_many_symbolic_link_levels);
}

TEST_F(OutputFileTest, DoesNotFollowALinkOfARecognisableName) {
  Put(folder_ / "precious", "precious");
  fs::create_symlink("precious", NameBesideTarget(target_, 1));
  Put(target_, "earlier");
  {
    const auto file = Create();
    EXPECT_TRUE(file->WriteAt(0, ToBytes("new")));
    EXPECT_TRUE(file->Commit());
  }
  EXPECT_EQ(Content(folder_ / "precious"), "precious");
  EXPECT_EQ(Content(target_), "new");
}

TEST_F(OutputFileTest, RefusesDevicesAndPipes) {
  EXPECT_EQ(Refusal("/dev/null"), std::errc::invalid_argument);
  ASSERT_EQ(mkfifo(target_.c_str(), 0600), 0);
  EXPECT_EQ(Refusal(target_), std::errc::invalid_argument);
  EXPECT_TRUE(fs::is_fifo(target_));
}

TEST_F(OutputFileTest, RefusesAWriteProtectedFile) {
  if (geteuid() == 0) GTEST_SKIP() << "the superuser may write to everything";
  Put(target_, "earlier");
  ASSERT_EQ(chmod(target_.c_str(), 0444), 0);
  EXPECT_EQ(Refusal(target_), std::errc::permission_denied);
  EXPECT_EQ(Content(target_), "earlier");
}

TEST_F(OutputFileTest, KeepsTheModeOfTheFileItReplaces) {
  Put(target_, "earlier");
  ASSERT_EQ(chmod(target_.c_str(), 0604), 0);
  {
    const auto file = Create();
    EXPECT_TRUE(file->WriteAt(0, ToBytes("new")));
    EXPECT_TRUE(file->Commit());
  }
  struct stat status;
  ASSERT_EQ(stat(target_.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777, 0604u);
}

TEST_F(OutputFileTest, GivesANewFileTheModeThatTheUsersMaskLeaves) {
  const mode_t earlier = umask(027);
  {
    const auto file = Create();
    EXPECT_TRUE(file->Commit());
  }
  umask(earlier);
  struct stat status;
  ASSERT_EQ(stat(target_.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777, 0640u);
}

TEST_F(OutputFileTest, KeepsTheOwnerWhereItMay) {
  if (geteuid() != 0) GTEST_SKIP() << "only the superuser may give files away";
  Put(target_, "earlier");
  ASSERT_EQ(chown(target_.c_str(), 1234, 2345), 0);
  {
    const auto file = Create();
    EXPECT_TRUE(file->Commit());
  }
  struct stat status;
  ASSERT_EQ(stat(target_.c_str(), &status), 0);
  EXPECT_EQ(status.st_uid, 1234u);
  EXPECT_EQ(status.st_gid, 2345u);
}

TEST_F(OutputFileTest, MakesAFileInTheCurrentFolder) {
  const fs::path earlier = fs::current_path();
  fs::current_path(folder_);
  {
    const auto file = Create("here.chm");
    EXPECT_TRUE(file->WriteAt(0, ToBytes("help")));
    EXPECT_TRUE(file->Commit());
  }
  fs::current_path(earlier);
  EXPECT_EQ(Content(folder_ / "here.chm"), "help");
}

}  // namespace
}  // namespace scrivo
