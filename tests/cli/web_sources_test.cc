#include "cli/web_sources.h"

#include <gtest/gtest.h>

#include "tests/doubles/test_folder.h"

namespace scrivo {
namespace {

class OverlayFilesTest : public testing::Test {
 protected:
  OverlayFilesTest() {
    folder.Write("page.htm", "page");
    folder.Write("SCRIVO.hhc", "on disk");
    folder.Write("docs/Scrivo.hhc", "below");
  }

  std::vector<std::string> NamesIn(const std::string& path) const {
    std::vector<std::string> names;
    for (const SourceEntry& entry : files.List(path)) names.push_back(entry.name);
    std::sort(names.begin(), names.end());
    return names;
  }
  std::string Read(const std::string& path) const {
    std::error_code error;
    const auto source = files.Open(path, &error);
    std::string text;
    return source && ReadText(*source, &text) ? text : "error: " + error.message();
  }

  TestFolder folder;
  const std::string path = PortablePath(folder.path());
  const DiskFiles disk;
  const OverlayFiles files{disk, path, {{"Scrivo.hhc", "in memory"}, {"Scrivo.hhp", "project"}}};
};

TEST_F(OverlayFilesTest, ShowsBothAndHidesWhatHasTheNameInAnyCase) {
  EXPECT_EQ(NamesIn(path),
            (std::vector<std::string>{"Scrivo.hhc", "Scrivo.hhp", "docs", "page.htm"}));
  EXPECT_EQ(Read(path + "/Scrivo.hhc"), "in memory");
  EXPECT_EQ(Read(path + "/Scrivo.hhp"), "project");
  EXPECT_EQ(Read(path + "/page.htm"), "page");
}

TEST_F(OverlayFilesTest, LeavesOtherFoldersAlone) {
  EXPECT_EQ(NamesIn(path + "/docs"), (std::vector<std::string>{"Scrivo.hhc"}));
  EXPECT_EQ(Read(path + "/docs/Scrivo.hhc"), "below");
  EXPECT_TRUE(Read(path + "/docs/Scrivo.hhp").starts_with("error: "));
}

}  // namespace
}  // namespace scrivo
