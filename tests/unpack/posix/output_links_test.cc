// Links that lie in the output folder already.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <system_error>

#include "bytes/byte_source.h"
#include "tests/doubles/temp_folder.h"
#include "unpack/output_folder.h"

namespace scrivo {
namespace {

namespace fs = std::filesystem;

class OutputLinksTest : public testing::Test {
 protected:
  void SetUp() override {
    fs::create_directories(root_ / "outside");
    std::error_code error;
    folder_ = OpenOutputFolder(root_ / "folder", &error);
    ASSERT_NE(folder_, nullptr) << error.message();
  }
  WriteOutcome Create(const std::string& path) {
    const std::uint8_t content[] = {'n', 'e', 'w'};
    return folder_->Create(path, content).outcome;
  }

  const TempFolder temporary_;
  const fs::path root_ = temporary_.path();
  std::unique_ptr<OutputFolder> folder_;
};

TEST_F(OutputLinksTest, AreNotFollowedToAFolder) {
  fs::create_directory_symlink(root_ / "outside", root_ / "folder" / "link");
  EXPECT_EQ(Create("link/a.htm"), WriteOutcome::kLinkInTheWay);
  EXPECT_EQ(Create("link/b/a.htm"), WriteOutcome::kLinkInTheWay);
  EXPECT_TRUE(fs::is_empty(root_ / "outside"));
}

TEST_F(OutputLinksTest, AreNotFollowedInPlaceOfAFolderInUse) {
  ASSERT_EQ(Create("a/b/1.htm"), WriteOutcome::kDone);
  fs::rename(root_ / "folder" / "a", root_ / "folder" / "moved");
  fs::create_directory_symlink(root_ / "outside", root_ / "folder" / "a");
  // They may end up in the folder that was moved, but not behind the link.
  Create("a/b/2.htm");
  Create("a/3.htm");
  Create("a/c/4.htm");
  EXPECT_TRUE(fs::is_empty(root_ / "outside"));
}

TEST_F(OutputLinksTest, AreNotFollowedToAFile) {
  std::ofstream(root_ / "outside" / "a.htm") << "kept";
  fs::create_symlink(root_ / "outside" / "a.htm", root_ / "folder" / "a.htm");
  fs::create_symlink(root_ / "outside" / "none.htm", root_ / "folder" / "b.htm");
  EXPECT_EQ(Create("a.htm"), WriteOutcome::kLinkInTheWay);
  EXPECT_EQ(Create("b.htm"), WriteOutcome::kLinkInTheWay);
  std::ifstream stream(root_ / "outside" / "a.htm");
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(stream), {}), "kept");
  EXPECT_FALSE(fs::exists(root_ / "outside" / "none.htm"));
}

TEST_F(OutputLinksTest, AreNotFollowedByLaterParts) {
  ASSERT_EQ(folder_->Start("a.htm").outcome, WriteOutcome::kDone);
  const fs::path growing = root_ / "folder" / ("a.htm" + std::string(kGrowingEnding));
  ASSERT_TRUE(fs::remove(growing));
  fs::create_symlink(root_ / "outside" / "a.htm", growing);
  const std::uint8_t content[] = {'x'};
  EXPECT_NE(folder_->WritePart("a.htm", 0, content).outcome, WriteOutcome::kDone);
  EXPECT_FALSE(fs::exists(root_ / "outside" / "a.htm"));
}

TEST_F(OutputLinksTest, MayLeadToTheFolderItself) {
  fs::create_directory_symlink(root_ / "outside", root_ / "link");
  std::error_code error;
  folder_ = OpenOutputFolder(root_ / "link", &error);
  ASSERT_NE(folder_, nullptr) << error.message();
  EXPECT_EQ(Create("a.htm"), WriteOutcome::kDone);
  EXPECT_TRUE(fs::exists(root_ / "outside" / "a.htm"));
}

TEST_F(OutputLinksTest, PipesHoldNobodyUp) {
  ASSERT_EQ(mkfifo((root_ / "folder" / "pipe").c_str(), 0600), 0);
  EXPECT_EQ(Create("pipe"), WriteOutcome::kFolderInTheWay);
  std::error_code error;
  EXPECT_EQ(OpenFileSource(root_ / "folder" / "pipe", &error), nullptr);
  EXPECT_TRUE(static_cast<bool>(error));
}

}  // namespace
}  // namespace scrivo
