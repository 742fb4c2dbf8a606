// What the stand-in host reads from the registry and writes into it: registered add-ins, the place
// of the help compiler, the webs opened last.

#include "host/settings.h"

#include "host/compiler_place.h"
#include "platform/registry.h"
#include "tests/doubles/fake_services.h"

namespace scrivo::host {
namespace {

constexpr char kAddins[] = "Software\\Microsoft\\Office\\SharePoint Designer\\Addins\\";

class AddinEntriesTest : public WithFakeServices {
 protected:
  static void Put(std::uint32_t root, const std::string& prog_id, const std::string& name,
                  const RegistryValue& value, std::uint32_t type) {
    CRegistry store;
    store.Init(root);
    store.SetValue(kAddins + prog_id, name, value, type);
  }
  static constexpr auto kUser = static_cast<std::uint32_t>(kHkeyCurrentUser),
                        kMachine = static_cast<std::uint32_t>(kHkeyLocalMachine);
};

TEST_F(AddinEntriesTest, WithoutKeysThereAreNone) { EXPECT_TRUE(ReadAddinEntries().empty()); }

TEST_F(AddinEntriesTest, ReadsNameDescriptionAndBehaviour) {
  Put(kMachine, "A.Addin", "FriendlyName", std::string("Friendly"), kRegSz);
  Put(kMachine, "A.Addin", "Description", std::string("Does it"), kRegSz);
  Put(kMachine, "A.Addin", "LoadBehavior", std::int32_t{3}, kRegDword);
  const auto entries = ReadAddinEntries();
  ASSERT_EQ(entries.size(), 1u);
  EXPECT_EQ(entries[0].prog_id, "A.Addin");
  EXPECT_EQ(entries[0].name, "Friendly");
  EXPECT_EQ(entries[0].description, "Does it");
  EXPECT_TRUE(entries[0].LoadsAtStart());
}

TEST_F(AddinEntriesTest, TheKeysNameStandsInForWhatIsMissing) {
  Put(kUser, "A.Addin", "LoadBehavior", std::string("3"), kRegSz);
  const auto entries = ReadAddinEntries();
  ASSERT_EQ(entries.size(), 1u);
  EXPECT_EQ(entries[0].name, "A.Addin");
  EXPECT_EQ(entries[0].description, "A.Addin");
  EXPECT_EQ(entries[0].load_behavior, 0);
}

TEST_F(AddinEntriesTest, TheUsersEntryStandsBeforeTheMachines) {
  Put(kMachine, "A.Addin", "LoadBehavior", std::int32_t{3}, kRegDword);
  Put(kMachine, "B.Addin", "LoadBehavior", std::int32_t{3}, kRegDword);
  Put(kUser, "a.addin", "LoadBehavior", std::int32_t{0}, kRegDword);
  const auto entries = ReadAddinEntries();
  ASSERT_EQ(entries.size(), 2u);
  EXPECT_FALSE(entries[0].LoadsAtStart());
  EXPECT_EQ(entries[1].prog_id, "B.Addin");
}

TEST_F(AddinEntriesTest, OnlyBothBitsLoadAtStart) {
  for (const std::int32_t behavior : {0, 1, 2, 8, 9, 16}) {
    EXPECT_FALSE((AddinEntry{"", "", "", behavior}.LoadsAtStart())) << behavior;
  }
}

class CompilerPlaceTest : public WithFakeServices {
 protected:
  static constexpr char kKey[] = "Software\\Microsoft\\HTML Help Workshop";
  static constexpr char kFolder[] = "C:\\Tools\\Scrivo";

  CompilerPlaceTest() { store_.Init(static_cast<std::uint32_t>(kHkeyCurrentUser)); }
  void Set(const RegistryValue& value, std::uint32_t type) {
    store_.SetValue(kKey, "InstallDir", value, type);
  }
  RegistryValue Get() { return store_.GetValue(kKey, "InstallDir", std::string("(none)")); }
  void PutCompiler() { files->files[std::string(kFolder) + "\\hhc.exe"] = "MZ"; }

 private:
  CRegistry store_;
};

TEST_F(CompilerPlaceTest, OursIsSetWhereNoneIs) {
  PutCompiler();
  EXPECT_TRUE(SetCompilerWhereNoneIs(kFolder));
  EXPECT_EQ(Get(), RegistryValue(std::string(kFolder)));
  Set(std::string(), kRegSz);
  EXPECT_TRUE(SetCompilerWhereNoneIs(kFolder)) << "an empty place is none";
  EXPECT_EQ(Get(), RegistryValue(std::string(kFolder)));
}

TEST_F(CompilerPlaceTest, OneThatIsSetStays) {
  PutCompiler();
  Set(std::string("C:\\Workshop"), kRegSz);
  EXPECT_FALSE(SetCompilerWhereNoneIs(kFolder));
  EXPECT_EQ(Get(), RegistryValue(std::string("C:\\Workshop")));
  Set(std::int32_t{5}, kRegDword);
  EXPECT_FALSE(SetCompilerWhereNoneIs(kFolder)) << "whatever it means";
  EXPECT_EQ(Get(), RegistryValue(std::int32_t{5}));
}

TEST_F(CompilerPlaceTest, AFolderWithoutACompilerIsNotSet) {
  EXPECT_FALSE(SetCompilerWhereNoneIs(kFolder));
  EXPECT_EQ(Get(), RegistryValue(std::string("(none)")));
}

TEST_F(CompilerPlaceTest, AFolderThatTheRegistryCannotNameIsNotSet) {
  const std::string folder = "C:\\\xE4\xB8\xAD";
  files->files[folder + "\\hhc.exe"] = "MZ";
  EXPECT_FALSE(SetCompilerWhereNoneIs(folder));
  EXPECT_EQ(Get(), RegistryValue(std::string("(none)")));
}

class RecentWebsTest : public WithFakeServices {};

TEST_F(RecentWebsTest, TheLastOneOpenedComesFirstAndOnce) {
  for (const char* path : {"C:\\a", "C:\\b", "c:\\A"}) RecentWebs::Remember(path);
  EXPECT_EQ(RecentWebs::Read(), (std::vector<std::string>{"c:\\A", "C:\\b"}));
  RecentWebs::Forget("C:\\a");
  EXPECT_EQ(RecentWebs::Read(), std::vector<std::string>{"C:\\b"});
}

TEST_F(RecentWebsTest, TheOldestAreForgotten) {
  for (int i = 0; i < 12; ++i) RecentWebs::Remember(std::to_string(i));
  const auto paths = RecentWebs::Read();
  ASSERT_EQ(paths.size(), RecentWebs::kMost);
  EXPECT_EQ(paths.front(), "11");
  EXPECT_EQ(paths.back(), "4");
}

TEST_F(RecentWebsTest, LongPathsAreCutInTheirMiddle) {
  EXPECT_EQ(ShortenedPath("C:\\a", 20), "C:\\a");
  const std::string path = "C:\\Documents and Settings\\Somebody\\My Web Sites\\site";
  EXPECT_EQ(ShortenedPath(path, 30), "C:\\...\\My Web Sites\\site");
  EXPECT_EQ(ShortenedPath(std::string(50, 'x'), 30).size(), 30u);
}

}  // namespace
}  // namespace scrivo::host
