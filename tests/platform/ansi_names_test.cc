#include "platform/ansi_names.h"

#include "platform/settings.h"
#include "platform/temp_files.h"
#include "tests/doubles/fake_services.h"

namespace scrivo {
namespace {

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
