#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "tests/doubles/fake_services.h"
#include "tests/webs/reported.h"
#include "webs/disk_web.h"

namespace scrivo {
namespace {

namespace fs = std::filesystem;

// Webs on a real disk of Windows, in a folder of the test's own.
class RealWebTest : public WithFakeServices {
 protected:
  RealWebTest() {
    TheServices().files = CreateSystemServices().files;
    folder = TheServices().files->MakeUniqueFile(fs::temp_directory_path().string(), "web") + ".d";
  }
  ~RealWebTest() override {
    fs::remove_all(folder);
    fs::remove(folder.substr(0, folder.size() - 2));
  }

  void Put(const std::string& location, const std::string& content) {
    const fs::path path = fs::path(folder) / location;
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << content;
  }

  std::string folder;
  WebProblemList report;
};

TEST_F(RealWebTest, ReadsAWebAsTheHostLeavesIt) {
  Put("index.htm", "<title>Home page</title>");
  Put("docs/deep/A b.htm", "<title>A</title><meta name=keywords content=\"x, y\">");
  Put("_derived/x.gif", "GIF89a");
  Put("_vti_pvt/structure.cnf",
      "3.0.0.507\r\n1002\r\n1000,index.htm,0,Home,0,1,0\r\n"
      "1001,Docs/deep/a b.HTM,0,First,1000,1,0");
  const auto web = OpenDiskWeb(folder, {}, report, PathStyle::kWindows);
  EXPECT_EQ(AllFiles(*web).size(), 2u);
  const SiteNodes nodes = AllNodes(*web);
  ASSERT_EQ(nodes.size(), 2u);
  EXPECT_EQ(nodes[1]->File()->Property("keywords"), "x, y");
  EXPECT_TRUE(nodes[1]->File()->Url().ends_with("/docs/deep/A b.htm"));
  EXPECT_EQ(web->HomeNode()->File()->Title(), "Home page");
  EXPECT_EQ(Reported(report), "");
}

TEST_F(RealWebTest, TheRealPathOfASubfolderIsBelowThatOfItsParent) {
  Put("docs/a.htm", "");
  Files& files = *TheServices().files;
  const std::string real = files.RealPath(folder);
  EXPECT_FALSE(real.starts_with("\\\\?\\"));
  EXPECT_EQ(files.RealPath(folder + "\\docs"), real + "\\docs");
  EXPECT_EQ(files.RealPath(folder + "\\nowhere"), folder + "\\nowhere");
}

}  // namespace
}  // namespace scrivo
