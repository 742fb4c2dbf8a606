#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "tests/doubles/fake_services.h"
#include "tests/webs/reported.h"
#include "webs/disk_host.h"
#include "webs/disk_web.h"

namespace scrivo {
namespace {

namespace fs = std::filesystem;

// Webs on a real disk, in a folder of the test's own.
class RealWebTest : public WithFakeServices {
 protected:
  RealWebTest() {
    TheServices().files = CreateSystemServices().files;
    std::string name = (fs::temp_directory_path() / "scrivo-web-XXXXXX").string();
    if (mkdtemp(name.data()) != nullptr) folder = name;
  }
  ~RealWebTest() override {
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
      if (!entry.is_symlink() && entry.is_directory()) {
        fs::permissions(entry.path(), fs::perms::owner_all, fs::perm_options::add);
      }
    }
    fs::remove_all(folder);
  }

  void Put(const std::string& location, const std::string& content) {
    const fs::path path = fs::path(folder) / location;
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << content;
  }
  std::shared_ptr<DiskWeb> Open() { return OpenDiskWeb(folder, {}, report, PathStyle::kPosix); }
  std::string Locations(const SiteFiles& files, SiteWeb& web) {
    std::string text;
    for (const auto& file : files) {
      text += DiskHost(nullptr, PathStyle::kPosix).RelativeLocation(web, file->Url()) + "\n";
    }
    return text;
  }

  std::string folder;
  WebProblemList report;
};

TEST_F(RealWebTest, ReadsAWebAsTheHostLeavesIt) {
  Put("index.htm", "<title>Home page</title>");
  Put("docs/A b.htm", "<title>A</title><meta name=keywords content=\"x, y\">");
  Put("docs/_vti_cnf/A b.htm", "vti_title:SR|A\r\n");
  Put("_derived/x.gif", "GIF89a");
  Put("_vti_pvt/structure.cnf",
      "3.0.0.507\r\n1002\r\n1000,index.htm,0,Home,0,1,1\r\nvti_globalpage:BW|true\r\n"
      "1001,Docs/a b.HTM,0,First,1000,1,0");
  const auto web = Open();
  EXPECT_EQ(Locations(AllFiles(*web), *web), "index.htm\ndocs/A b.htm\n");
  const SiteNodes nodes = AllNodes(*web);
  ASSERT_EQ(nodes.size(), 2u);
  EXPECT_EQ(nodes[1]->Label(), "First");
  EXPECT_EQ(nodes[1]->File()->Property("keywords"), "x, y");
  EXPECT_EQ(nodes[1]->File()->Url(), "file://" + folder + "/docs/A b.htm");
  EXPECT_EQ(web->HomeNode()->File()->Title(), "Home page");
  EXPECT_EQ(Reported(report), "");
}

TEST_F(RealWebTest, FolderLinksThatLeadInCirclesAreLeftOut) {
  Put("a.htm", "");
  Put("docs/b.htm", "");
  fs::create_directory_symlink(folder, folder + "/docs/up");
  fs::create_directory_symlink(".", folder + "/here");
  fs::create_directory_symlink("loop", folder + "/loop");
  const auto web = Open();
  // A link to itself is not a folder to the system; it stays a name.
  EXPECT_EQ(Locations(AllFiles(*web), *web), "a.htm\nloop\ndocs/b.htm\n");
  EXPECT_EQ(report.problems.size(), 2u);
}

TEST_F(RealWebTest, FoldersFullOfLinksToEachOtherAreReadInReasonableTime) {
  for (int i = 0; i < 12; ++i) {
    const std::string name = "folder" + std::to_string(i);
    Put(name + "/a.htm", "");
    for (int other = 0; other < 12; ++other) {
      fs::create_directory_symlink("../folder" + std::to_string(other),
                                   folder + "/" + name + "/to" + std::to_string(other));
    }
  }
  EXPECT_LE(AllFiles(*Open()).size(), 24u);
}

TEST_F(RealWebTest, LinkedFilesAndFoldersElsewhereAreRead) {
  Put("web/a.htm", "");
  Put("elsewhere/b.htm", "<title>B</title>");
  fs::create_symlink("../elsewhere/b.htm", folder + "/web/linked.htm");
  fs::create_directory_symlink("../elsewhere", folder + "/web/shared");
  const auto web = OpenDiskWeb(folder + "/web", {}, report, PathStyle::kPosix);
  EXPECT_EQ(Locations(AllFiles(*web), *web), "a.htm\nlinked.htm\nshared/b.htm\n");
  EXPECT_EQ(AllFiles(*web)[1]->Title(), "B");
  EXPECT_EQ(Reported(report), "");
}

TEST_F(RealWebTest, APageThatIsAPipeIsReportedAndNotWaitedFor) {
  Put("b.htm", "");
  ASSERT_EQ(mkfifo((folder + "/a.htm").c_str(), 0600), 0);
  const auto web = Open();
  EXPECT_EQ(web->BaseFolder()->Files()[0]->Title(), "a.htm");
  EXPECT_EQ(report.problems.size(), 1u);
}

TEST_F(RealWebTest, ALinkToNothingIsReportedWhenItsTitleIsAskedFor) {
  fs::create_symlink("gone.htm", folder + "/a.htm");
  const auto web = Open();
  EXPECT_EQ(web->BaseFolder()->Files()[0]->Title(), "a.htm");
  ASSERT_EQ(report.problems.size(), 1u);
  EXPECT_EQ(report.problems[0].file, folder + "/a.htm");
}

TEST_F(RealWebTest, AFolderWithoutTheRightToReadItIsReportedAndAWebWithoutItFails) {
  if (geteuid() == 0) GTEST_SKIP() << "the superuser may read everything";
  Put("a.htm", "");
  Put("docs/b.htm", "");
  fs::permissions(folder + "/docs", fs::perms::none);
  EXPECT_EQ(AllFiles(*Open()).size(), 1u);
  EXPECT_EQ(report.problems.size(), 1u);
  EXPECT_THROW(OpenDiskWeb(folder + "/docs", {}, report, PathStyle::kPosix), Error);
}

TEST_F(RealWebTest, NamesOfAnyBytesAreKept) {
  Put("\xFC\x01 \"#%.htm", "<title>T</title>");
  const auto web = Open();
  EXPECT_EQ(AllFiles(*web)[0]->Url(), "file://" + folder + "/\xFC\x01 \"#%.htm");
  EXPECT_EQ(AllFiles(*web)[0]->Title(), "T");
}

}  // namespace
}  // namespace scrivo
