#include "webs/disk_host.h"

#include <gtest/gtest.h>

#include "tests/webs/memory_web.h"

namespace scrivo {
namespace {

class DiskHostTest : public WithMemoryWeb {
 protected:
  DiskHostTest() { Put("a.htm", ""); }
  DiskHost Host(PathStyle style = PathStyle::kPosix) { return DiskHost(web, style); }

  std::shared_ptr<SiteWeb> web;
};

TEST_F(DiskHostTest, HasTheWebItWasGivenOpen) {
  web = Open();
  EXPECT_EQ(Host().CurrentWeb(), web);
  EXPECT_EQ(DiskHost(nullptr, PathStyle::kPosix).CurrentWeb(), nullptr);
}

TEST_F(DiskHostTest, ALocationIsWhatFollowsTheWebsAddress) {
  web = Open();
  EXPECT_EQ(Host().RelativeLocation(*web, "file:///web/docs/a.htm"), "docs/a.htm");
  EXPECT_EQ(Host().RelativeLocation(*web, "file:///web"), "");
}

TEST_F(DiskHostTest, AnAddressOutsideTheWebStaysAsItIs) {
  web = Open();
  for (const char* address : {"file:///website/a.htm", "file:///we", "http://example.com/a.htm",
                              "file:///Web/a.htm", ""}) {
    EXPECT_EQ(Host().RelativeLocation(*web, address), address);
  }
}

TEST_F(DiskHostTest, APathOnDiskHasALocationToo) {
  web = Open();
  EXPECT_EQ(Host().RelativeLocation(*web, "/web/docs/out.htm"), "docs/out.htm");
  EXPECT_EQ(Host().RelativeLocation(*web, "/website/out.htm"), "/website/out.htm");
  disk->folders.insert("C:\\Webs\\site");
  disk->files["C:\\Webs\\site\\a.htm"] = "";
  web = OpenDiskWeb("C:\\Webs\\site", {}, report, PathStyle::kWindows);
  EXPECT_EQ(Host(PathStyle::kWindows).RelativeLocation(*web, "c:\\webs\\SITE\\Docs\\out.htm"),
            "Docs/out.htm");
  EXPECT_EQ(Host(PathStyle::kWindows).RelativeLocation(*web, "C:\\out.htm"), "C:\\out.htm");
}

TEST_F(DiskHostTest, InTheWindowsStyleTheWebsAddressMayDifferInCase) {
  disk->folders.insert("C:\\Webs\\site");
  disk->files["C:\\Webs\\site\\a.htm"] = "";
  web = OpenDiskWeb("C:\\Webs\\site", {}, report, PathStyle::kWindows);
  EXPECT_EQ(Host(PathStyle::kWindows).RelativeLocation(*web, "file:///c:/webs/SITE/Docs/A.htm"),
            "Docs/A.htm");
}

TEST_F(DiskHostTest, ItsVersionIsTheProgramsOwn) { EXPECT_EQ(Host().Version(), SCRIVO_VERSION); }

}  // namespace
}  // namespace scrivo
