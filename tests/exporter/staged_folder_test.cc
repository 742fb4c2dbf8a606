#include "exporter/staged_folder.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "tests/doubles/test_folder.h"

namespace scrivo {
namespace {

namespace fs = std::filesystem;

void Write(const fs::path& path) { std::ofstream(path) << "text"; }

// What lies in a folder, sorted.
std::vector<std::string> NamesIn(const fs::path& folder) {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(folder)) {
    names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

using Names = std::vector<std::string>;

TEST(StagedFolder, ShowsAllFilesAtOnce) {
  TestFolder folder;
  const fs::path web = folder.path() / "new" / "web";
  {
    StagedFolder staged(web);
    Write(staged.Stage() / "a.htm");
    fs::create_directory(staged.Stage() / "_vti_pvt");
    Write(staged.Stage() / "_vti_pvt" / "structure.cnf");
    EXPECT_FALSE(fs::exists(web / "a.htm"));
    staged.Show("_vti_pvt");
  }
  EXPECT_EQ(NamesIn(web), (Names{"_vti_pvt", "a.htm"}));
  EXPECT_TRUE(fs::exists(web / "_vti_pvt" / "structure.cnf"));
}

TEST(StagedFolder, LeavesNothingWithoutShow) {
  TestFolder folder;
  { Write(StagedFolder(folder.path() / "new" / "web").Stage() / "a.htm"); }
  EXPECT_EQ(NamesIn(folder.path()), Names{});
  fs::create_directory(folder.path() / "there");
  { Write(StagedFolder(folder.path() / "there").Stage() / "a.htm"); }
  EXPECT_EQ(NamesIn(folder.path()), Names{"there"});
  EXPECT_EQ(NamesIn(folder.path() / "there"), Names{});
}

TEST(StagedFolder, RefusesFoldersWithFilesAndFiles) {
  TestFolder folder;
  folder.Write("web/mine.htm", "mine");
  EXPECT_THROW(StagedFolder(folder.path() / "web"), std::runtime_error);
  EXPECT_THROW(StagedFolder(folder.path() / "web" / "mine.htm"), std::runtime_error);
  EXPECT_EQ(NamesIn(folder.path() / "web"), Names{"mine.htm"});
}

TEST(StagedFolder, ClearsWhatAKilledRunHasLeft) {
  TestFolder folder;
  folder.Write("web/web.scrivo-new/half.htm", "half");
  {
    StagedFolder staged(folder.path() / "web");
    Write(staged.Stage() / "a.htm");
    staged.Show("_vti_pvt");
  }
  EXPECT_EQ(NamesIn(folder.path() / "web"), Names{"a.htm"});
}

TEST(StagedFolder, TakesBackWhatWasMovedWhenTheRestCannotBe) {
  TestFolder folder;
  {
    StagedFolder staged(folder.path() / "web");
    Write(staged.Stage() / "a.htm");
    Write(staged.Stage() / "b.htm");
    folder.Write("web/b.htm/theirs", "came in between");
    EXPECT_THROW(staged.Show("_vti_pvt"), std::runtime_error);
  }
  EXPECT_EQ(NamesIn(folder.path() / "web"), Names{"b.htm"});
}

}  // namespace
}  // namespace scrivo
