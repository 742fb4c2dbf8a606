#include "bytes/atomic_file.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "tests/lzx/sample_data.h"

namespace scrivo {
namespace {

namespace fs = std::filesystem;

class AtomicFileTest : public testing::Test {
 protected:
  AtomicFileTest()
      : folder_(fs::path(testing::TempDir()) /
                ("atomic_file_" +
                 std::string(testing::UnitTest::GetInstance()->current_test_info()->name()))) {
    fs::remove_all(folder_);
    fs::create_directories(folder_);
    target_ = folder_ / fs::path(u8"h\u00e9lp.chm");
  }
  ~AtomicFileTest() override { fs::remove_all(folder_); }

  std::unique_ptr<AtomicFile> Create() {
    std::error_code error;
    std::unique_ptr<AtomicFile> file = AtomicFile::Create(target_, &error);
    EXPECT_NE(file, nullptr) << error.message();
    return file;
  }

  static std::string Content(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }

  std::size_t FilesInFolder() const {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(folder_), fs::directory_iterator()));
  }

  fs::path folder_;
  fs::path target_;
};

TEST_F(AtomicFileTest, AppearsUnderItsNameWhenCommitted) {
  const auto file = Create();
  EXPECT_TRUE(file->WriteAt(0, ToBytes("help")));
  EXPECT_FALSE(fs::exists(target_));
  EXPECT_TRUE(file->Commit());
  EXPECT_EQ(Content(target_), "help");
  EXPECT_EQ(FilesInFolder(), 1u);
}

TEST_F(AtomicFileTest, ReplacesAnOlderFileOnlyWhenCommitted) {
  std::ofstream(target_) << "older and longer";
  const auto file = Create();
  EXPECT_TRUE(file->WriteAt(0, ToBytes("new")));
  EXPECT_EQ(Content(target_), "older and longer");
  EXPECT_TRUE(file->Commit());
  EXPECT_EQ(Content(target_), "new");
}

TEST_F(AtomicFileTest, LeavesTheOlderFileWhenGivenUp) {
  std::ofstream(target_) << "older";
  { EXPECT_TRUE(Create()->WriteAt(0, ToBytes("new"))); }
  EXPECT_EQ(Content(target_), "older");
  EXPECT_EQ(FilesInFolder(), 1u);
}

TEST_F(AtomicFileTest, StartsEmptyOverAFileThatAKilledProcessLeft) {
  std::ofstream(target_.string() + ".tmp") << "half of a help file";
  const auto file = Create();
  EXPECT_TRUE(file->WriteAt(0, ToBytes("all")));
  EXPECT_TRUE(file->Commit());
  EXPECT_EQ(Content(target_), "all");
}

TEST_F(AtomicFileTest, ReadsBackAndWritesAnywhere) {
  const auto file = Create();
  EXPECT_TRUE(file->WriteAt(0, ToBytes("0123456789")));
  std::vector<std::uint8_t> part(4);
  EXPECT_TRUE(file->ReadAt(3, part));
  EXPECT_EQ(part, ToBytes("3456"));
  EXPECT_TRUE(file->WriteAt(12, part));
  EXPECT_TRUE(file->WriteAt(1, ToBytes("ab")));
  EXPECT_TRUE(file->Commit());
  EXPECT_EQ(Content(target_), std::string("0ab3456789\0\0003456", 16));
}

TEST_F(AtomicFileTest, TellsWhyItCannotBeMade) {
  std::error_code error;
  EXPECT_EQ(AtomicFile::Create(folder_ / "missing" / "help.chm", &error), nullptr);
  EXPECT_EQ(error, std::errc::no_such_file_or_directory);
}

TEST_F(AtomicFileTest, KeepsTheFirstFailure) {
  const auto file = Create();
  EXPECT_TRUE(file->WriteAt(0, ToBytes("help")));
  std::vector<std::uint8_t> too_much(10);
  EXPECT_FALSE(file->ReadAt(0, too_much));
  EXPECT_TRUE(file->error());
  EXPECT_FALSE(file->WriteAt(0, ToBytes("x")));
  EXPECT_FALSE(file->Commit());
  EXPECT_FALSE(fs::exists(target_));
}

TEST_F(AtomicFileTest, FailsWhenTheTargetIsAFolder) {
  fs::create_directories(target_ / "inside");
  const auto file = Create();
  EXPECT_TRUE(file->WriteAt(0, ToBytes("help")));
  EXPECT_FALSE(file->Commit());
  EXPECT_TRUE(file->error());
  EXPECT_TRUE(fs::is_directory(target_));
  EXPECT_EQ(FilesInFolder(), 1u);
}

}  // namespace
}  // namespace scrivo
