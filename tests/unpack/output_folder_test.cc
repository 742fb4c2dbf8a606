// The output folder of the system that the tests run on.

#include "unpack/output_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <system_error>

#include "bytes/byte_source.h"
#include "tests/doubles/temp_folder.h"

namespace scrivo {
namespace {

namespace fs = std::filesystem;

std::span<const std::uint8_t> AsBytes(const std::string& text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

std::string ReadFileText(const fs::path& path) {
  std::ifstream stream(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

class OutputFolderTest : public testing::Test {
 protected:
  void SetUp() override {
    std::error_code error;
    folder_ = OpenOutputFolder(root_ / "new" / "folder", &error);
    ASSERT_NE(folder_, nullptr) << error.message();
  }
  WriteOutcome Create(const std::string& path, const std::string& content) {
    return folder_->Create(path, AsBytes(content)).outcome;
  }
  fs::path At(const std::string& path) const {
    return root_ / "new" / "folder" / fs::path(std::u8string(path.begin(), path.end()));
  }

  std::ptrdiff_t FilesIn(const std::string& folder) const {
    return std::distance(fs::directory_iterator(At(folder)), {});
  }

  const TempFolder temporary_;
  const fs::path root_ = temporary_.path();
  std::unique_ptr<OutputFolder> folder_;
};

TEST_F(OutputFolderTest, MakesFilesAndTheFoldersThatTheyNeed) {
  EXPECT_EQ(Create("a.htm", "top"), WriteOutcome::kDone);
  EXPECT_EQ(Create("b/c/d.htm", "below"), WriteOutcome::kDone);
  EXPECT_EQ(Create("b/e.htm", ""), WriteOutcome::kDone);
  EXPECT_EQ(ReadFileText(At("a.htm")), "top");
  EXPECT_EQ(ReadFileText(At("b/c/d.htm")), "below");
  EXPECT_TRUE(fs::exists(At("b/e.htm")));
}

TEST_F(OutputFolderTest, KeepsNamesBeyondAscii) {
  EXPECT_EQ(Create("\u0413\u043B/\u65E5.htm", "text"), WriteOutcome::kDone);
  EXPECT_EQ(ReadFileText(At("\u0413\u043B/\u65E5.htm")), "text");
}

TEST_F(OutputFolderTest, WritesPartsInAnyOrder) {
  EXPECT_EQ(folder_->Start("b/a.bin").outcome, WriteOutcome::kDone);
  EXPECT_EQ(folder_->WritePart("b/a.bin", 4, AsBytes("efgh")).outcome, WriteOutcome::kDone);
  EXPECT_EQ(folder_->WritePart("b/a.bin", 0, AsBytes("abcd")).outcome, WriteOutcome::kDone);
  EXPECT_FALSE(fs::exists(At("b/a.bin")));
  EXPECT_EQ(folder_->Finish("b/a.bin").outcome, WriteOutcome::kDone);
  EXPECT_EQ(ReadFileText(At("b/a.bin")), "abcdefgh");
  EXPECT_EQ(FilesIn("b"), 1);
}

TEST_F(OutputFolderTest, KeepsAnEarlierFileUntilTheNewOneIsWhole) {
  std::ofstream(At("a.bin")) << "earlier";
  EXPECT_EQ(folder_->Start("a.bin").outcome, WriteOutcome::kDone);
  EXPECT_EQ(folder_->WritePart("a.bin", 0, AsBytes("half")).outcome, WriteOutcome::kDone);
  EXPECT_EQ(ReadFileText(At("a.bin")), "earlier");
  folder_->GiveUp("a.bin");
  EXPECT_EQ(ReadFileText(At("a.bin")), "earlier");
  EXPECT_EQ(FilesIn("."), 1);
  EXPECT_NE(folder_->WritePart("a.bin", 0, AsBytes("late")).outcome, WriteOutcome::kDone);
  folder_->GiveUp("not/there");
}

TEST_F(OutputFolderTest, ReplacesWhatAnEndedProcessLeft) {
  std::ofstream(At("a.bin" + std::string(kGrowingEnding))) << "half of a long file";
  EXPECT_EQ(Create("a.bin", "new"), WriteOutcome::kDone);
  EXPECT_EQ(ReadFileText(At("a.bin")), "new");
  EXPECT_EQ(FilesIn("."), 1);
}

// More of them, and deeper ones, than can be open at once.
TEST_F(OutputFolderTest, ComesBackToFoldersByTurns) {
  const auto path = [](int folder, const std::string& file) {
    std::string deep = "folder" + std::to_string(folder);
    for (int level = 0; level < folder; ++level) deep += "/" + std::to_string(level);
    return deep + "/" + file;
  };
  for (const std::string file : {"a.htm", "b.htm", "c.htm"}) {
    for (int folder = 0; folder < 40; ++folder) {
      const std::string name = path(folder, file);
      ASSERT_EQ(Create(name, name), WriteOutcome::kDone) << name;
    }
  }
  for (int folder = 0; folder < 40; ++folder) {
    EXPECT_EQ(ReadFileText(At(path(folder, "a.htm"))), path(folder, "a.htm"));
    EXPECT_EQ(ReadFileText(At(path(folder, "c.htm"))), path(folder, "c.htm"));
    for (const std::string file : {"a.htm", "b.htm", "c.htm"}) fs::remove(At(path(folder, file)));
  }
  folder_->RemoveEmptyFolders();
  EXPECT_FALSE(fs::exists(root_ / "new"));
}

TEST_F(OutputFolderTest, RemovesTheEmptyFoldersThatItMade) {
  EXPECT_EQ(folder_->Start("b/c/d/a.bin").outcome, WriteOutcome::kDone);
  EXPECT_EQ(Create("b/e/a.bin", "text"), WriteOutcome::kDone);
  folder_->GiveUp("b/c/d/a.bin");
  folder_->RemoveEmptyFolders();
  EXPECT_FALSE(fs::exists(At("b/c")));
  EXPECT_TRUE(fs::exists(At("b/e/a.bin")));
}

TEST_F(OutputFolderTest, RemovesItselfAndThoseAboveWhenAllIsEmpty) {
  fs::create_directory(root_ / "earlier");
  folder_->RemoveEmptyFolders();
  EXPECT_FALSE(fs::exists(root_ / "new"));
  EXPECT_TRUE(fs::exists(root_ / "earlier"));

  std::error_code error;
  fs::create_directories(At("mine"));
  folder_ = OpenOutputFolder(root_ / "new" / "folder", &error);
  fs::remove(At("mine"));
  folder_->RemoveEmptyFolders();
  EXPECT_TRUE(fs::exists(root_ / "new" / "folder")) << "it was there before";
}

TEST_F(OutputFolderTest, LeavesNoFolderWhenTheLastOneCannotBeMade) {
  std::error_code error;
  EXPECT_EQ(OpenOutputFolder(root_ / "x" / "y" / std::string(300, 'z'), &error), nullptr);
  EXPECT_TRUE(static_cast<bool>(error));
  EXPECT_FALSE(fs::exists(root_ / "x"));
}

TEST_F(OutputFolderTest, ReplacesAFileAndLeavesItsOtherNamesAlone) {
  std::ofstream(root_ / "outside.txt") << "outside, and longer";
  fs::create_hard_link(root_ / "outside.txt", At("a.txt"));
  EXPECT_EQ(Create("a.txt", "new"), WriteOutcome::kDone);
  EXPECT_EQ(ReadFileText(At("a.txt")), "new");
  EXPECT_EQ(ReadFileText(root_ / "outside.txt"), "outside, and longer");
}

TEST_F(OutputFolderTest, SaysWhatIsInTheWay) {
  fs::create_directory(At("folder"));
  std::ofstream(At("file")) << "kept";
  EXPECT_EQ(Create("folder", "text"), WriteOutcome::kFolderInTheWay);
  EXPECT_EQ(Create("file/a.txt", "text"), WriteOutcome::kFileInTheWay);
  EXPECT_EQ(ReadFileText(At("file")), "kept");
}

TEST_F(OutputFolderTest, PartsOfFilesThatAreNotThereCannotBeWritten) {
  const WriteResult result = folder_->WritePart("none.bin", 0, AsBytes("text"));
  EXPECT_EQ(result.outcome, WriteOutcome::kFailed);
  EXPECT_TRUE(static_cast<bool>(result.error));
  EXPECT_FALSE(fs::exists(At("none.bin")));
}

TEST_F(OutputFolderTest, CannotBeOpenedWhereAFileLies) {
  std::ofstream(root_ / "file") << "text";
  std::error_code error;
  EXPECT_EQ(OpenOutputFolder(root_ / "file", &error), nullptr);
  EXPECT_TRUE(static_cast<bool>(error));
}

TEST_F(OutputFolderTest, FilesAreReadAtAnyPlace) {
  std::ofstream(root_ / "file", std::ios::binary) << "0123456789";
  std::error_code error;
  const auto source = OpenFileSource(root_ / "file", &error);
  ASSERT_NE(source, nullptr);
  EXPECT_EQ(source->Size(), 10U);
  std::string text(4, ' ');
  const std::span<std::uint8_t> out(reinterpret_cast<std::uint8_t*>(text.data()), text.size());
  EXPECT_TRUE(source->ReadAt(6, out));
  EXPECT_EQ(text, "6789");
  EXPECT_FALSE(source->ReadAt(7, out));
  EXPECT_FALSE(source->ReadAt(1000, out));
}

TEST_F(OutputFolderTest, FoldersAndMissingFilesAreNoSource) {
  std::error_code error;
  EXPECT_EQ(OpenFileSource(root_, &error), nullptr);
  EXPECT_TRUE(static_cast<bool>(error));
  error.clear();
  EXPECT_EQ(OpenFileSource(root_ / "none", &error), nullptr);
  EXPECT_TRUE(static_cast<bool>(error));
}

}  // namespace
}  // namespace scrivo
