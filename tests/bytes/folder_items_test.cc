#include "bytes/folder_items.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/doubles/test_folder.h"

namespace scrivo {
namespace {

TEST(ItemsOfFolder, TellsFilesAndFolders) {
  const TestFolder folder;
  folder.Write("a.htm", "x");
  folder.Write("sub/b.htm", "x");
  std::error_code error;
  std::vector<FolderItem> items = ItemsOfFolder(folder.path(), &error);
  EXPECT_FALSE(error);
  std::sort(items.begin(), items.end(),
            [](const FolderItem& a, const FolderItem& b) { return a.name < b.name; });
  ASSERT_EQ(items.size(), 2u);
  EXPECT_EQ(items[0].name, "a.htm");
  EXPECT_FALSE(items[0].is_folder);
  EXPECT_EQ(items[1].name, "sub");
  EXPECT_TRUE(items[1].is_folder);
}

TEST(ItemsOfFolder, TellsWhyThereAreNone) {
  const TestFolder folder;
  std::error_code error;
  EXPECT_TRUE(ItemsOfFolder(folder.path() / "none", &error).empty());
  EXPECT_EQ(error, std::errc::no_such_file_or_directory);
  std::filesystem::create_directory(folder.path() / "empty");
  EXPECT_TRUE(ItemsOfFolder(folder.path() / "empty", &error).empty());
  EXPECT_FALSE(error);
}

TEST(RemoveFolder, RemovesAllThatIsInIt) {
  const TestFolder folder;
  folder.Write("gone/a/b/c.htm", "x");
  folder.Write("gone/d.htm", "x");
  folder.Write("kept.htm", "x");
  RemoveFolder(folder.path() / "gone");
  EXPECT_FALSE(folder.Has("gone"));
  EXPECT_TRUE(folder.Has("kept.htm"));
  RemoveFolder(folder.path() / "none");
}

}  // namespace
}  // namespace scrivo
