#include "platform/paths.h"

#include <gtest/gtest.h>

namespace scrivo {
namespace {

constexpr PathStyle kWindows = PathStyle::kWindows;
constexpr PathStyle kPosix = PathStyle::kPosix;

TEST(GetFileName, IsWhatFollowsTheLastSeparator) {
  EXPECT_EQ(GetFileName("C:\\a\\b.hhc", kWindows), "b.hhc");
  EXPECT_EQ(GetFileName("b.hhc", kWindows), "b.hhc");
  EXPECT_EQ(GetFileName("C:\\a\\", kWindows), "");
  EXPECT_EQ(GetFileName("", kWindows), "");
  EXPECT_EQ(GetFileName("/a/b.hhc", kPosix), "b.hhc");
  EXPECT_EQ(GetFileName("b.hhc", kPosix), "b.hhc");
}

TEST(GetFileName, KnowsTheSeparatorOfItsStyleAlone) {
  EXPECT_EQ(GetFileName("C:/a/b.hhc", kWindows), "C:/a/b.hhc");
  EXPECT_EQ(GetFileName("/a/b\\c.hhc", kPosix), "b\\c.hhc");
}

TEST(GetFolder, IsWhatComesBeforeTheLastSeparator) {
  EXPECT_EQ(GetFolder("C:\\a\\hhc.exe", kWindows), "C:\\a");
  EXPECT_EQ(GetFolder("hhc.exe", kWindows), "");
  EXPECT_EQ(GetFolder("/opt/hhc", kPosix), "/opt");
  EXPECT_EQ(GetFolder("/hhc", kPosix), "");
}

TEST(JoinPath, PutsTheSeparatorBetween) {
  EXPECT_EQ(JoinPath("C:\\a", "b", kWindows), "C:\\a\\b");
  EXPECT_EQ(JoinPath("C:\\", "b", kWindows), "C:\\\\b");
  EXPECT_EQ(JoinPath("/a", "b", kPosix), "/a/b");
}

std::string Path(std::string address, PathStyle style) {
  const std::string path = UrlToPath(address, style);
  EXPECT_EQ(address, path) << "the argument must be rewritten as well";
  return path;
}

TEST(UrlToPath, TurnsAFileAddressIntoAFolder) {
  EXPECT_EQ(Path("file:///C:/Webs/site", kWindows), "C:\\Webs\\site");
  EXPECT_EQ(Path("file:///C:/Webs/my site/", kWindows), "C:\\Webs\\my site\\");
  EXPECT_EQ(Path("file:///srv/site", kPosix), "/srv/site");
  EXPECT_EQ(Path("file:///srv/a\\b", kPosix), "/srv/a\\b");
}

TEST(UrlToPath, LeavesOtherAddressesAlone) {
  for (const PathStyle style : {kWindows, kPosix}) {
    EXPECT_EQ(Path("http://server/web", style), "http://server/web");
    EXPECT_EQ(Path("FILE:///C:/Webs", style), "FILE:///C:/Webs");
    EXPECT_EQ(Path("File:///C:/Webs", style), "File:///C:/Webs");
    EXPECT_EQ(Path("", style), "");
    EXPECT_EQ(Path("fil", style), "fil");
  }
}

TEST(UrlToPath, TakesFourLettersForAFileAddress) {
  EXPECT_EQ(Path("filename/with/slashes", kWindows), "\\with\\slashes");
  EXPECT_EQ(Path("file", kWindows), "");
  EXPECT_EQ(Path("file://", kPosix), "");
}

TEST(Paths, FollowTheProcesssStyleByDefault) {
  Globals().path_style = kWindows;
  EXPECT_EQ(GetFileName("a\\b"), "b");
  EXPECT_EQ(JoinPath("a", "b"), "a\\b");
  Globals().path_style = kPosix;
  EXPECT_EQ(GetFileName("a\\b"), "a\\b");
  EXPECT_EQ(JoinPath("a", "b"), "a/b");
  Globals() = GlobalState();
}

}  // namespace
}  // namespace scrivo
