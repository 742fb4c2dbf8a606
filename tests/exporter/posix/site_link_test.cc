// Links in the folder of a site, which may lead anywhere.

#include <gtest/gtest.h>

#include <stdexcept>

#include "exporter/site_output.h"
#include "tests/doubles/test_folder.h"

namespace scrivo {
namespace {

namespace fs = std::filesystem;

class SiteLinks : public testing::Test {
 protected:
  SiteLinks() {
    {
      SiteOutput site(folder.path() / "site", false);
      site.Create("pages/a.htm", "earlier");
      site.Finish();
    }
    folder.Write("elsewhere/a.htm", "mine");
    fs::remove_all(folder.path() / "site/pages");
    fs::create_directory_symlink(folder.path() / "elsewhere", folder.path() / "site/pages");
  }
  TestFolder folder;
};

TEST_F(SiteLinks, AreNotFollowedToRemoveFilesOfAnEarlierExport) {
  SiteOutput site(folder.path() / "site", true);
  site.Create("index.html", "new");
  site.Finish();
  EXPECT_EQ(folder.Read("elsewhere/a.htm"), "mine");
}

TEST_F(SiteLinks, AreNotFollowedToWriteFiles) {
  SiteOutput site(folder.path() / "site", true);
  EXPECT_THROW(site.Create("pages/a.htm", "new"), std::runtime_error);
  EXPECT_THROW(site.Create("pages/b.htm", "new"), std::runtime_error);
  EXPECT_EQ(folder.Read("elsewhere/a.htm"), "mine");
  EXPECT_FALSE(folder.Has("elsewhere/b.htm"));
}

}  // namespace
}  // namespace scrivo
