#include "platform/settings.h"

#include <algorithm>

#include "platform/registry.h"
#include "tests/doubles/expect_error.h"
#include "tests/doubles/failing_registry.h"
#include "tests/doubles/fake_services.h"
#include "tests/platform/registry_stores.h"

namespace scrivo {
namespace {

// The settings over each kind of registry, under an application of the test's own.
class Settings : public WithFakeServices, public testing::WithParamInterface<RegistryStoreKind> {
 protected:
  Settings() {
    TheServices().registry = store;
    registry_.Init(kHkeyCurrentUser);
    Empty();
  }
  ~Settings() override { Empty(); }

  void Empty() {
    std::vector<std::string> sections;
    registry_.GetAllSubKeys(kPath, &sections);
    for (const std::string& section : sections) registry_.DeleteKey(kPath + "\\" + section);
    registry_.DeleteKey(kPath);
  }

  // The names of the registry keys below the application's.
  std::vector<std::string> Sections() {
    std::vector<std::string> sections;
    registry_.GetAllSubKeys(kPath, &sections);
    return sections;
  }

  const std::string kApp = "Scrivo Settings Test";
  const std::string kPath = "Software\\VB and VBA Program Settings\\" + kApp;
  std::shared_ptr<RegistryStore> store = GetParam().make();
  CRegistry registry_;
};

TEST_P(Settings, GiveTheDefaultWhileNothingIsSaved) {
  EXPECT_EQ(GetSetting(kApp, "Settings", "Trace", "0"), "0");
  EXPECT_EQ(GetSetting(kApp, "Settings", "Trace"), "");
  SaveSetting(kApp, "Settings", "Other", "1");
  EXPECT_EQ(GetSetting(kApp, "Settings", "Trace", "0"), "0");
}

TEST_P(Settings, GiveBackWhatWasSaved) {
  const std::string texts[] = {
      "1", "", " blanks ", "C:\\Webs\\site\\A.CHM", "caf\xE9 \"x\"", "line\r\nline", "tab\there"};
  for (const std::string& text : texts) {
    SaveSetting(kApp, "Settings", "Key", text);
    EXPECT_EQ(GetSetting(kApp, "Settings", "Key", "default"), text);
  }
}

TEST_P(Settings, NeverTakeAPercentSignForAReference) {
  for (const char* const text : {"%PATH% explained", "a%20b%20c.htm", "100%"}) {
    SaveSetting(kApp, "Settings", "Key", text);
    EXPECT_EQ(GetSetting(kApp, "Settings", "Key"), text);
    EXPECT_EQ(registry_.ValueType(kPath + "\\Settings", "Key"), 1u);
  }
}

TEST_P(Settings, KeepApplicationsSectionsAndKeysApart) {
  SaveSetting(kApp, "one", "a", "1a");
  SaveSetting(kApp, "one", "b", "1b");
  SaveSetting(kApp, "two", "a", "2a");
  EXPECT_EQ(GetSetting(kApp, "one", "a"), "1a");
  EXPECT_EQ(GetSetting(kApp, "one", "b"), "1b");
  EXPECT_EQ(GetSetting(kApp, "two", "a"), "2a");
  EXPECT_EQ(GetSetting(kApp, "two", "b"), "");
  EXPECT_EQ(GetSetting(kApp + " of others", "one", "a"), "");
}

TEST_P(Settings, LiveWhereOtherProgramsOfTheTimeKeepTheirs) {
  SaveSetting(kApp, "Settings", "Trace", "1");
  EXPECT_EQ(registry_.GetValue(kPath + "\\Settings", "Trace", RegistryValue()), RegistryValue("1"));
}

TEST_P(Settings, TakeAWebsAddressAsASection) {
  const std::string web = "file:///C:/Webs/my site";
  SaveSetting(kApp, web, "TITLE", "A");
  EXPECT_EQ(GetSetting(kApp, web, "TITLE"), "A");
  EXPECT_EQ(Sections(), std::vector<std::string>{web});
}

TEST_P(Settings, WriteABackslashInASectionAsItsHexadecimalForm) {
  SaveSetting(kApp, "\\\\server\\web\\", "TITLE", "A");
  SaveSetting(kApp, "\\\\server\\web", "TITLE", "B");
  SaveSetting(kApp, "\\\\server", "TITLE", "C");
  EXPECT_EQ(GetSetting(kApp, "\\\\server\\web\\", "TITLE"), "A");
  EXPECT_EQ(GetSetting(kApp, "\\\\server\\web", "TITLE"), "B");
  EXPECT_EQ(GetSetting(kApp, "\\\\server", "TITLE"), "C");
  std::vector<std::string> sections = Sections();
  std::sort(sections.begin(), sections.end());
  EXPECT_EQ(sections, (std::vector<std::string>{"%5C%5Cserver", "%5C%5Cserver%5Cweb",
                                                "%5C%5Cserver%5Cweb%5C"}));
}

TEST_P(Settings, TakeANumberThatWasStoredByHandAsItsText) {
  registry_.SetValue(kPath + "\\Settings", "Trace", std::int32_t{-1}, 4);
  EXPECT_EQ(GetSetting(kApp, "Settings", "Trace", "0"), "-1");
  registry_.SetValue(kPath + "\\Settings", "Trace", std::int32_t{1}, 4);
  EXPECT_EQ(GetSetting(kApp, "Settings", "Trace", "0"), "1");
}

TEST_P(Settings, TakeExpandableTextAsItStands) {
  registry_.SetValue(kPath + "\\Settings", "Key", "%PATH%", 2);
  EXPECT_EQ(GetSetting(kApp, "Settings", "Key"), "%PATH%");
}

TEST_P(Settings, GiveTheDefaultForBytes) {
  registry_.SetValue(kPath + "\\Settings", "Key", ByteArray{{1, 2, 3, 4, 5, 6}}, 3);
  EXPECT_EQ(GetSetting(kApp, "Settings", "Key", "default"), "default");
}

TEST_P(Settings, NeedAnApplicationASectionAndAKey) {
  const std::string text =
      "Invalid procedure call or argument: a setting needs application, section and key";
  ExpectError([&] { GetSetting("", "s", "k"); }, kInvalidProcedureCall, "Settings", text);
  ExpectError([&] { GetSetting(kApp, "", "k"); }, kInvalidProcedureCall, "Settings", text);
  ExpectError([&] { GetSetting(kApp, "s", ""); }, kInvalidProcedureCall, "Settings", text);
  ExpectError([&] { SaveSetting("", "s", "k", "v"); }, kInvalidProcedureCall, "Settings", text);
  ExpectError([&] { SaveSetting(kApp, "", "k", "v"); }, kInvalidProcedureCall, "Settings", text);
  ExpectError([&] { SaveSetting(kApp, "s", "", "v"); }, kInvalidProcedureCall, "Settings", text);
}

class OpenKeysOfSettings : public Settings {};

TEST_P(OpenKeysOfSettings, AreNone) {
  const std::size_t before = GetParam().open_keys(*store);
  SaveSetting(kApp, "Settings", "Key", "x");
  GetSetting(kApp, "Settings", "Key");
  GetSetting(kApp, "Settings", "Missing");
  GetSetting(kApp, "Missing", "Key");
  EXPECT_EQ(GetParam().open_keys(*store), before);
}

INSTANTIATE_TEST_SUITE_P(Stores, Settings, testing::ValuesIn(RegistryStoreKinds()), KindName);
INSTANTIATE_TEST_SUITE_P(Stores, OpenKeysOfSettings,
                         testing::ValuesIn(CountingRegistryStoreKinds()), KindName);

class SettingFaults : public WithFakeServices {
 protected:
  SettingFaults() {
    SaveSetting("App", "Section", "Key", "saved");
    TheServices().registry = failing;
  }

  void Fail(const std::string& call, int skip = 0) {
    failing->call = call;
    failing->skip = skip;
  }

  std::shared_ptr<FailingRegistry> failing = std::make_shared<FailingRegistry>(registry);
};

TEST_F(SettingFaults, AnUnreadableSettingGivesTheDefault) {
  for (const auto& [call, skip] :
       {std::pair("OpenKey", 0), std::pair("QueryValue", 0), std::pair("QueryValue", 1)}) {
    Fail(call, skip);
    EXPECT_EQ(GetSetting("App", "Section", "Key", "default"), "default") << call << skip;
    EXPECT_EQ(registry->OpenKeys(), 0u);
  }
}

TEST_F(SettingFaults, ASettingThatCannotBeSavedIsReportedWithItsPlace) {
  for (const char* const call : {"CreateKey", "SetValue"}) {
    Fail(call);
    ExpectError(
        [] { SaveSetting("App", "Section", "Key", "new"); }, kPathFileAccessError, "Settings",
        "Cannot save the setting \"Key\" in HKEY_CURRENT_USER\\Software\\VB and VBA Program "
        "Settings\\App\\Section (system error 5)");
    EXPECT_EQ(registry->OpenKeys(), 0u);
  }
  EXPECT_EQ(GetSetting("App", "Section", "Key"), "saved");
}

}  // namespace
}  // namespace scrivo
