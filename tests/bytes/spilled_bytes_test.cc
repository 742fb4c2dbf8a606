#include "bytes/spilled_bytes.h"

#include <gtest/gtest.h>

#include <vector>

#include "project/source_files.h"
#include "tests/hhc/project_folder.h"

namespace scrivo {
namespace {

TEST(TemporaryFile, KeepsBytesAndIsGoneAfterwards) {
  ProjectFolder folder;
  {
    TemporaryFile file(SystemPath(folder.Path("words")));
    EXPECT_FALSE(folder.Has("words"));
    EXPECT_TRUE(file.WriteAt(0, std::vector<std::uint8_t>{1, 2, 3, 4}));
    EXPECT_TRUE(file.WriteAt(2, std::vector<std::uint8_t>{9}));
    std::vector<std::uint8_t> read(3);
    EXPECT_TRUE(file.ReadAt(1, read));
    EXPECT_EQ(read, (std::vector<std::uint8_t>{2, 9, 4}));
    EXPECT_TRUE(file.WriteAt(4, read));
  }
  EXPECT_FALSE(folder.Has("words"));
}

TEST(TemporaryFile, TellsWhyItCannotBeMadeOrRead) {
  ProjectFolder folder;
  TemporaryFile file(SystemPath(folder.Path("no/such/folder")));
  EXPECT_FALSE(file.WriteAt(0, std::vector<std::uint8_t>{1}));
  EXPECT_EQ(file.Reason(), std::errc::no_such_file_or_directory);
  TemporaryFile other(SystemPath(folder.Path("words")));
  EXPECT_TRUE(other.WriteAt(0, std::vector<std::uint8_t>{1}));
  std::vector<std::uint8_t> read(2);
  EXPECT_FALSE(other.ReadAt(0, read));
  EXPECT_TRUE(other.Reason());
}

}  // namespace
}  // namespace scrivo
