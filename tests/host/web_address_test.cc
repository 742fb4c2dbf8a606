#include "host/web_address.h"

#include <gtest/gtest.h>

namespace scrivo::host {
namespace {

constexpr char kWeb[] = "file:///C:/Webs/my site";

TEST(WebAddressTest, KnowsWhatStandsForItself) {
  for (const char* absolute :
       {"file:///C:/a", "http://server/a", "C:\\a", "c:/a", "\\\\server\\a"}) {
    EXPECT_TRUE(IsAbsoluteAddress(absolute)) << absolute;
  }
  for (const char* relative : {"", "a.htm", "docs/a.htm", "../a", "/a", "docs/a:b"}) {
    EXPECT_FALSE(IsAbsoluteAddress(relative)) << relative;
  }
}

TEST(WebAddressTest, GivesTheWayFromAFolderToAPage) {
  EXPECT_EQ(MakeRelative(kWeb, true, "file:///C:/Webs/my site/docs/a b.htm"), "docs/a b.htm");
  EXPECT_EQ(MakeRelative(kWeb, true, "file:///c:/WEBS/My Site/docs/A.htm"), "docs/A.htm");
  EXPECT_EQ(MakeRelative(kWeb, true, "C:\\Webs\\my site\\docs\\a.htm"), "docs/a.htm");
  EXPECT_EQ(MakeRelative("file:///C:/Webs/my site/", true, "file:///C:/Webs/my site/a"), "a");
  EXPECT_EQ(MakeRelative(kWeb, true, kWeb), "");
}

TEST(WebAddressTest, GoesUpWhereItMust) {
  EXPECT_EQ(MakeRelative(kWeb, true, "file:///C:/Webs/other/a.htm"), "../other/a.htm");
  EXPECT_EQ(MakeRelative(kWeb, true, "file:///C:/Webs/my site2/a.htm"), "../my site2/a.htm");
  EXPECT_EQ(MakeRelative("file:///C:/w/docs/a.htm", false, "file:///C:/w/index.htm"),
            "../index.htm");
  EXPECT_EQ(MakeRelative("file:///C:/w/docs/a.htm", false, "file:///C:/w/docs/b.htm"), "b.htm");
}

TEST(WebAddressTest, LeavesAloneWhatHasNoWay) {
  EXPECT_EQ(MakeRelative(kWeb, true, "docs/a.htm"), "docs/a.htm");
  EXPECT_EQ(MakeRelative(kWeb, true, "file:///D:/Webs/a.htm"), "file:///D:/Webs/a.htm");
  EXPECT_EQ(MakeRelative(kWeb, true, "http://server/a.htm"), "http://server/a.htm");
  EXPECT_EQ(MakeRelative("http://server/a", true, "http://other/a"), "http://other/a");
  EXPECT_EQ(MakeRelative("http://server/web", true, "http://server/web/a"), "a");
}

TEST(WebAddressTest, MakesRelativeAddressesAbsolute) {
  EXPECT_EQ(MakeAbsolute(kWeb, true, "docs/a b.htm"), "file:///C:/Webs/my site/docs/a b.htm");
  EXPECT_EQ(MakeAbsolute(kWeb, true, "./docs/../a.htm"), "file:///C:/Webs/my site/a.htm");
  EXPECT_EQ(MakeAbsolute(kWeb, true, "../../../../a"), "file:///C:/a");
  EXPECT_EQ(MakeAbsolute("file:///C:/w/docs/a.htm", false, "b.htm"), "file:///C:/w/docs/b.htm");
  EXPECT_EQ(MakeAbsolute("C:\\w", true, "docs\\b.htm"), "file:///C:/w/docs/b.htm");
  EXPECT_EQ(MakeAbsolute(kWeb, true, "/a.htm"), "file:///C:/a.htm");
  EXPECT_EQ(MakeAbsolute(kWeb, true, "http://server/a"), "http://server/a");
  EXPECT_EQ(MakeAbsolute("/srv/web", true, "a"), "file:///srv/web/a");
}

TEST(WebAddressTest, PathsBecomeAddresses) {
  EXPECT_EQ(AddressOfPath("C:\\Webs\\my site"), kWeb);
  EXPECT_EQ(AddressOfPath("\\\\server\\share"), "file://server/share");
  EXPECT_EQ(AddressOfPath("/srv/web"), "file:///srv/web");
  EXPECT_EQ(AddressOfPath(kWeb), kWeb);
  EXPECT_EQ(AddressOfPath("docs/a.htm"), "docs/a.htm");
}

TEST(WebAddressTest, TheLastNameOfAnAddress) {
  EXPECT_EQ(LastName(kWeb), "my site");
  EXPECT_EQ(LastName("a.htm"), "a.htm");
  EXPECT_EQ(LastName("docs/"), "");
}

}  // namespace
}  // namespace scrivo::host
