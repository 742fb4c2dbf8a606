#include "platform/paths.h"

#include <gtest/gtest.h>

#include "platform/settings.h"
#include "platform/temp_files.h"
#include "tests/doubles/fake_services.h"

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

constexpr char kCafe[] = "C:\\caf\xC3\xA9.htm";
constexpr char kContents[] = "C:\\\xE7\x9B\xAE\xE5\xBD\x95.htm";  // 目录

class AnsiNames : public WithFakeServices {};

TEST_F(AnsiNames, AreInTheCodePageWhereItHoldsThem) {
  EXPECT_EQ(NameToAnsi(kCafe, PathStyle::kWindows), "C:\\caf\xE9.htm");
  system->code_page = 936;
  EXPECT_EQ(NameToAnsi(kContents, PathStyle::kWindows), "C:\\\xC4\xBF\xC2\xBC.htm");
}

TEST_F(AnsiNames, StayAsTheyAreWhereTheCodePageLacksACharacter) {
  EXPECT_EQ(NameToAnsi(kContents, PathStyle::kWindows), kContents);
  EXPECT_EQ(NameToAnsi("\xED\xA0\xB4.htm", PathStyle::kWindows), "\xED\xA0\xB4.htm");
}

TEST_F(AnsiNames, ComeBackFromTheRegistry) {
  for (const int code_page : {1252, 1251, 936}) {
    system->code_page = code_page;
    for (const std::string name : {"C:\\a.htm", kCafe, kContents, "C:\\\xED\xA0\xB4"}) {
      EXPECT_EQ(FromRegistry(ToRegistry(name, PathStyle::kWindows), PathStyle::kWindows), name)
          << code_page;
    }
  }
  EXPECT_EQ(ToRegistry(kContents, PathStyle::kWindows), "C:\\\xC4\xBF\xC2\xBC.htm");
}

TEST_F(AnsiNames, AreBytesThatNobodyTouchesInThePosixStyle) {
  for (const std::string name : {"/caf\xE9.htm", "/caf\xC3\xA9.htm", "/\xE7\x9B\xAE.htm"}) {
    EXPECT_EQ(NameToAnsi(name, PathStyle::kPosix), name);
    EXPECT_EQ(ToRegistry(name, PathStyle::kPosix), name);
    EXPECT_EQ(FromRegistry(name, PathStyle::kPosix), name);
  }
}

TEST_F(AnsiNames, BecomeTextToBeShown) {
  EXPECT_EQ(NameText("/caf\xE9.htm"), "/caf\xC3\xA9.htm");
  EXPECT_EQ(NameText(kContents), kContents);
}

TEST_F(AnsiNames, CountInAnsiBytesInTheBuffersOfWindows) {
  system->code_page = 1252;
  const std::string folder = "C:\\" + std::string(104, 'a');
  files->folders.insert(folder);
  EXPECT_NE(GetTempFile(folder, "Scrivo", PathStyle::kWindows), "");
  std::string accented = "C:\\";
  for (int i = 0; i < 104; ++i) accented += "\xC3\xA9";  // 208 bytes of UTF-8, 104 of ANSI
  files->folders.insert(accented);
  EXPECT_NE(GetTempFile(accented, "Scrivo", PathStyle::kWindows), "");
}

TEST_F(AnsiNames, StandInTheSettingsInAnsi) {
  Globals().path_style = PathStyle::kWindows;
  SaveSetting("Scrivo", "file:///C:/caf\xC3\xA9", "TITLE",
              "\xC3\x9C"
              "ber");
  EXPECT_EQ(GetSetting("Scrivo", "file:///C:/caf\xC3\xA9", "TITLE"),
            "\xC3\x9C"
            "ber");
  RegistryHandle key = 0;
  ASSERT_EQ(registry->OpenKey(kHkeyCurrentUser,
                              "Software\\VB and VBA Program Settings\\Scrivo\\file:///C:/caf\xE9",
                              kRightQueryValue, &key),
            kRegistrySuccess);
  std::uint8_t data[16] = {};
  std::uint32_t type = 0, size = sizeof data;
  ASSERT_EQ(registry->QueryValue(key, "TITLE", &type, data, &size), kRegistrySuccess);
  EXPECT_EQ(std::string(data, data + size), std::string("\xDC"
                                                        "ber\0",
                                                        5));
}

TEST_F(AnsiNames, KeepSettingsOfWebsApartThatTheCodePageCannotTell) {
  Globals().path_style = PathStyle::kWindows;
  SaveSetting("Scrivo", "file:///C:/\xE7\x9B\xAE", "OUTPUT", "one");
  SaveSetting("Scrivo", "file:///C:/\xE5\xBD\x95", "OUTPUT", "other");
  EXPECT_EQ(GetSetting("Scrivo", "file:///C:/\xE7\x9B\xAE", "OUTPUT"), "one");
}

}  // namespace

}  // namespace scrivo
