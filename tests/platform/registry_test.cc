#include "platform/registry.h"

#include <algorithm>

#include "tests/doubles/expect_error.h"
#include "tests/doubles/fake_services.h"
#include "tests/platform/registry_stores.h"

namespace scrivo {
namespace {

using std::string_literals::operator""s;

// The class over each kind of registry, below a key of its own that is emptied before and after.
class Registry : public WithFakeServices, public testing::WithParamInterface<RegistryStoreKind> {
 protected:
  Registry() {
    TheServices().registry = store;
    registry.Init(kHkeyCurrentUser);
    RemoveTree(key);
  }
  ~Registry() override { RemoveTree(key); }

  void RemoveTree(const std::string& name) {
    std::vector<std::string> below;
    registry.GetAllSubKeys(name, &below);
    for (const std::string& sub_key : below) RemoveTree(name + "\\" + sub_key);
    registry.DeleteKey(name);
  }

  // Stores bytes as they are, past the class.
  void Store(const std::string& name, std::uint32_t type, const std::string& bytes) {
    RegistryHandle handle = 0;
    ASSERT_EQ(store->CreateKey(kHkeyCurrentUser, key, kRightAllAccess, &handle), kRegistrySuccess);
    EXPECT_EQ(
        store->SetValue(handle, name, type, reinterpret_cast<const std::uint8_t*>(bytes.c_str()),
                        static_cast<std::uint32_t>(bytes.size())),
        kRegistrySuccess);
    store->CloseKey(handle);
  }

  // The bytes of a value as they are stored.
  std::string Stored(const std::string& name) {
    RegistryHandle handle = 0;
    if (store->OpenKey(kHkeyCurrentUser, key, kRightQueryValue, &handle) != kRegistrySuccess) {
      return "no key";
    }
    std::uint32_t type = 0;
    std::uint8_t data[1000];
    std::uint32_t size = sizeof data;
    const RegistryStatus status = store->QueryValue(handle, name, &type, data, &size);
    store->CloseKey(handle);
    return status == kRegistrySuccess ? std::string(data, data + size) : "no value";
  }

  std::string Text(const std::string& name) {
    const RegistryValue value = registry.GetValue(key, name, RegistryValue("default"));
    const auto* const text = std::get_if<std::string>(&value);
    return text ? *text : "not a text";
  }

  std::shared_ptr<RegistryStore> store = GetParam().make();
  const std::string key = "Software\\Scrivo Registry Test";
  CRegistry registry;
};

std::string WithNul(const std::string& text) { return text + std::string(1, '\0'); }

TEST_P(Registry, StartsAtTheClassesRoot) {
  EXPECT_EQ(CRegistry().RootKey(), 0x80000000u);
  ASSERT_TRUE(registry.CreateKey(key));
  EXPECT_FALSE(CRegistry().KeyExists(key));
}

TEST_P(Registry, TakesAnyRoot) {
  CRegistry other;
  other.RootKey(0x12345678);
  EXPECT_EQ(other.RootKey(), 0x12345678u);
  EXPECT_FALSE(other.CreateKey(key));
  EXPECT_FALSE(other.KeyExists(key));
  other.Init(0x80000001);
  EXPECT_EQ(other.RootKey(), 0x80000001u);
  EXPECT_TRUE(other.CreateKey(key));
}

TEST_P(Registry, CreatesAKeyWithItsParents) {
  EXPECT_TRUE(registry.CreateKey(key + "\\a\\b"));
  EXPECT_TRUE(registry.KeyExists(key + "\\a"));
  EXPECT_TRUE(registry.KeyExists(key + "\\a\\b"));
}

TEST_P(Registry, CreatingAnExistingKeyKeepsItAndSucceeds) {
  ASSERT_TRUE(registry.SetValue(key, "v", "text", 1));
  EXPECT_TRUE(registry.CreateKey(key));
  EXPECT_EQ(Text("v"), "text");
}

TEST_P(Registry, FindsNamesInAnyCase) {
  ASSERT_TRUE(registry.SetValue(key, "InstallDir", "text", 1));
  EXPECT_TRUE(registry.KeyExists("SOFTWARE\\scrivo registry TEST"));
  EXPECT_EQ(Text("INSTALLDIR"), "text");
  ASSERT_TRUE(registry.SetValue(key, "installdir", "other", 1));
  EXPECT_EQ(Text("InstallDir"), "other");
  std::vector<std::string> names;
  EXPECT_EQ(registry.GetAllValueNames(key, &names), 1);
}

TEST_P(Registry, TellsAMissingKey) {
  EXPECT_FALSE(registry.KeyExists(key));
  EXPECT_EQ(registry.ValueType(key, "v"), 0u);
  EXPECT_EQ(registry.GetValue(key, "v", RegistryValue("d")), RegistryValue("d"));
  EXPECT_FALSE(registry.DeleteValue(key, "v"));
  EXPECT_FALSE(registry.DeleteKey(key));
}

TEST_P(Registry, DeletesAKeyWithItsValues) {
  ASSERT_TRUE(registry.SetValue(key, "v", "text", 1));
  EXPECT_TRUE(registry.DeleteKey(key));
  EXPECT_FALSE(registry.KeyExists(key));
}

TEST_P(Registry, KeepsAKeyThatHasSubKeys) {
  ASSERT_TRUE(registry.CreateKey(key + "\\below"));
  EXPECT_FALSE(registry.DeleteKey(key));
  EXPECT_TRUE(registry.KeyExists(key + "\\below"));
}

TEST_P(Registry, DeletesAValue) {
  ASSERT_TRUE(registry.SetValue(key, "v", "text", 1));
  ASSERT_TRUE(registry.SetValue(key, "w", "other", 1));
  EXPECT_TRUE(registry.DeleteValue(key, "v"));
  EXPECT_EQ(registry.ValueType(key, "v"), 0u);
  EXPECT_EQ(Text("w"), "other");
  EXPECT_FALSE(registry.DeleteValue(key, "v"));
}

TEST_P(Registry, TellsTheTypeThatIsStored) {
  Store("a", 3, "x");
  Store("b", 11, "12345678");
  ASSERT_TRUE(registry.SetValue(key, "c", "%A B%", 1));
  EXPECT_EQ(registry.ValueType(key, "a"), 3u);
  EXPECT_EQ(registry.ValueType(key, "b"), 11u);
  EXPECT_EQ(registry.ValueType(key, "c"), 2u);
  EXPECT_EQ(registry.ValueType(key, "missing"), 0u);
}

TEST_P(Registry, ReadsTextWithoutItsNul) {
  Store("v", 1, WithNul("C:\\Help"));
  EXPECT_EQ(Text("v"), "C:\\Help");
}

TEST_P(Registry, ReadsTextOfSeveralStringsWithItsInnerNuls) {
  Store("v", 7, WithNul(WithNul(WithNul("one") + "two")));
  EXPECT_EQ(registry.GetValue(key, "v", RegistryValue()),
            RegistryValue(WithNul(WithNul("one") + "two")));
}

TEST_P(Registry, ReadsTextOfOneNulAsEmpty) {
  Store("v", 1, WithNul(""));
  EXPECT_EQ(Text("v"), "");
}

TEST_P(Registry, ReadsTextOfNoBytesAsEmpty) {
  Store("v", 1, "");
  EXPECT_EQ(Text("v"), "");
}

TEST_P(Registry, ReadsTheKeysDefaultValue) {
  Store("", 1, WithNul("the key's own"));
  EXPECT_EQ(Text(""), "the key's own");
}

TEST_P(Registry, ExpandsEnvironmentReferences) {
  Store("v", 2, WithNul("%PATH%|end"));
  EXPECT_EQ(Text("v"), std::string(std::getenv("PATH")) + "|end");
  Store("v", 2, WithNul("%SCRIVO NO SUCH NAME%\\x"));
  EXPECT_EQ(Text("v"), "%SCRIVO NO SUCH NAME%\\x");
  Store("v", 2, WithNul(""));
  EXPECT_EQ(Text("v"), "");
}

TEST_P(Registry, DoesNotExpandOtherText) {
  Store("v", 1, WithNul("%PATH%"));
  EXPECT_EQ(Text("v"), "%PATH%");
}

TEST_P(Registry, ReadsADoubleWordAsASignedInteger) {
  Store("v", 4, "\x2A\0\0\0"s);
  EXPECT_EQ(registry.GetValue(key, "v", RegistryValue()), RegistryValue(std::int32_t{42}));
  Store("v", 4, "\xFE\xFF\xFF\xFF");
  EXPECT_EQ(registry.GetValue(key, "v", RegistryValue()), RegistryValue(std::int32_t{-2}));
}

TEST_P(Registry, ReversesTheBytesOfABigEndianDoubleWord) {
  Store("v", 5, "\x01\x02\x03\x04");
  EXPECT_EQ(registry.GetValue(key, "v", RegistryValue()), RegistryValue(std::int32_t{0x01020304}));
  Store("v", 5, "\0\0\0\x2A"s);
  EXPECT_EQ(registry.GetValue(key, "v", RegistryValue()), RegistryValue(std::int32_t{42}));
}

TEST_P(Registry, ReadsADoubleWordOfAnotherSize) {
  Store("short", 4, "\x2A");
  Store("long", 4, "\x07\0\0\0\0\0\0\0"s);
  EXPECT_EQ(registry.GetValue(key, "short", RegistryValue()), RegistryValue(std::int32_t{42}));
  EXPECT_EQ(registry.GetValue(key, "long", RegistryValue()), RegistryValue(std::int32_t{7}));
}

TEST_P(Registry, ReadsBytesWithOneNulMoreThanIsStored) {
  Store("v", 3, "\x01\x02\x03\x04");
  const RegistryValue value = registry.GetValue(key, "v", RegistryValue());
  EXPECT_EQ(value, RegistryValue(ByteArray{{1, 2, 3, 4, 0}}));
  EXPECT_EQ(std::get<ByteArray>(value).lower_bound, 0);
  EXPECT_EQ(std::get<ByteArray>(value).UpperBound(), 4);
}

TEST_P(Registry, ReadsEveryOtherTypeAsBytes) {
  for (const std::uint32_t type : {0u, 6u, 8u, 11u, 4711u}) {
    Store("v", type, "ab");
    EXPECT_EQ(registry.GetValue(key, "v", RegistryValue()), RegistryValue(ByteArray{{97, 98, 0}}))
        << type;
  }
}

TEST_P(Registry, ReadsNoBytesAsOneNul) {
  Store("v", 3, "");
  EXPECT_EQ(registry.GetValue(key, "v", RegistryValue()), RegistryValue(ByteArray{{0}}));
}

TEST_P(Registry, GivesTheDefaultUnchangedWhateverItsType) {
  ASSERT_TRUE(registry.CreateKey(key));
  const RegistryValue defaults[] = {RegistryValue(),
                                    RegistryValue(""),
                                    RegistryValue("text"),
                                    RegistryValue(std::int16_t{3}),
                                    RegistryValue(std::int32_t{-4}),
                                    RegistryValue(true),
                                    RegistryValue(ByteArray{{1, 2}, 5})};
  for (const RegistryValue& value : defaults) {
    EXPECT_EQ(registry.GetValue(key, "missing", value), value);
    EXPECT_EQ(registry.GetValue(key + "\\missing", "v", value), value);
  }
}

TEST_P(Registry, StoresTextWithItsNul) {
  EXPECT_TRUE(registry.SetValue(key, "v", "C:\\Help", 1));
  EXPECT_EQ(Stored("v"), WithNul("C:\\Help"));
  EXPECT_EQ(registry.ValueType(key, "v"), 1u);
}

TEST_P(Registry, StoresEmptyTextAsOneNul) {
  EXPECT_TRUE(registry.SetValue(key, "v", "", 1));
  EXPECT_EQ(Stored("v"), WithNul(""));
  EXPECT_EQ(Text("v"), "");
}

TEST_P(Registry, ChoosesTheTypeOfTextByWhetherItHoldsAReference) {
  const std::pair<const char*, std::uint32_t> texts[] = {
      {"%WINDIR%\\system", 2},
      {"%A%", 2},
      {"a%bc%d", 2},
      {"%%", 1},
      {"100%", 1},
      {"100%% sure", 1},
      {"%%%", 2},
      {"plain", 1},
      {"", 1},
      {"%", 1},
      {"a%%b%", 2},
  };
  for (const auto& [text, type] : texts) {
    for (const std::uint32_t asked : {1u, 2u}) {
      EXPECT_TRUE(registry.SetValue(key, "v", text, asked));
      EXPECT_EQ(registry.ValueType(key, "v"), type) << text << " as " << asked;
      EXPECT_EQ(Stored("v"), WithNul(text));
    }
  }
}

TEST_P(Registry, StoresOtherValuesAsTheirText) {
  const std::pair<RegistryValue, const char*> values[] = {
      {std::int16_t{-7}, "-7"}, {std::int32_t{70000}, "70000"}, {true, "True"},
      {false, "False"},         {RegistryValue(), ""},
  };
  for (const auto& [value, text] : values) {
    EXPECT_TRUE(registry.SetValue(key, "v", value, 1));
    EXPECT_EQ(Stored("v"), WithNul(text));
  }
}

TEST_P(Registry, StoresTwoBytesFewerThanTheArrayHolds) {
  EXPECT_TRUE(registry.SetValue(key, "v", ByteArray{{1, 2, 3, 4, 5, 6, 7, 8, 9, 10}}, 3));
  EXPECT_EQ(Stored("v"), "\x01\x02\x03\x04\x05\x06\x07\x08");
  EXPECT_EQ(registry.ValueType(key, "v"), 3u);
  EXPECT_TRUE(registry.SetValue(key, "v", ByteArray{{1, 2, 3}, 1}, 3));
  EXPECT_EQ(Stored("v"), "\x01");
  EXPECT_TRUE(registry.SetValue(key, "v", ByteArray{{1, 2}}, 3));
  EXPECT_EQ(Stored("v"), "");
}

TEST_P(Registry, RefusesAnArrayOfFewerThanTwoBytes) {
  EXPECT_FALSE(registry.SetValue(key, "v", ByteArray{{1}}, 3));
  EXPECT_FALSE(registry.SetValue(key, "v", ByteArray{}, 3));
  EXPECT_EQ(registry.ValueType(key, "v"), 0u);
}

TEST_P(Registry, StoresIntegersAsADoubleWordWhicheverOfTheTwoIsAsked) {
  for (const std::uint32_t asked : {4u, 5u}) {
    EXPECT_TRUE(registry.SetValue(key, "v", std::int32_t{0x01020304}, asked));
    EXPECT_EQ(Stored("v"), "\x04\x03\x02\x01");
    EXPECT_EQ(registry.ValueType(key, "v"), 4u);
    EXPECT_TRUE(registry.SetValue(key, "v", std::int16_t{-2}, asked));
    EXPECT_EQ(Stored("v"), "\xFE\xFF\xFF\xFF");
  }
}

TEST_P(Registry, WritesNothingYetSucceedsWhenTheValueDoesNotSuitTheType) {
  for (const std::uint32_t type : {4u, 5u}) {
    EXPECT_TRUE(registry.SetValue(key, "v", "12", type));
    EXPECT_TRUE(registry.SetValue(key, "v", true, type));
    EXPECT_TRUE(registry.SetValue(key, "v", ByteArray{{1, 2, 3, 4}}, type));
    EXPECT_TRUE(registry.SetValue(key, "v", RegistryValue(), type));
  }
  EXPECT_TRUE(registry.SetValue(key, "v", "text", 3));
  EXPECT_TRUE(registry.SetValue(key, "v", std::int32_t{1}, 3));
  EXPECT_EQ(registry.ValueType(key, "v"), 0u);
  EXPECT_TRUE(registry.KeyExists(key));  // though the key was made
}

TEST_P(Registry, RefusesOtherTypes) {
  for (const std::uint32_t type : {0u, 6u, 7u, 8u, 9u}) {
    EXPECT_FALSE(registry.SetValue(key, "v", "text", type)) << type;
  }
  EXPECT_EQ(registry.ValueType(key, "v"), 0u);
}

TEST_P(Registry, StoresTheKeysDefaultValue) {
  EXPECT_TRUE(registry.SetValue(key, "", "own", 1));
  EXPECT_EQ(Text(""), "own");
}

TEST_P(Registry, KeepsTheBytesOfTheCodePage) {
  EXPECT_TRUE(registry.SetValue(key, "v", "caf\xE9", 1));
  EXPECT_EQ(Text("v"), "caf\xE9");
}

TEST_P(Registry, ListsSubKeys) {
  for (const char* const name : {"beta", "Alpha", "gamma delta"}) {
    ASSERT_TRUE(registry.CreateKey(key + "\\" + name));
  }
  ASSERT_TRUE(registry.CreateKey(key + "\\beta\\below"));
  std::vector<std::string> names = {"left", "over"};
  EXPECT_EQ(registry.GetAllSubKeys(key, &names), 3);
  std::sort(names.begin(), names.end());
  EXPECT_EQ(names, (std::vector<std::string>{"Alpha", "beta", "gamma delta"}));
}

TEST_P(Registry, ListsSubKeysOfTheLongestName) {
  const std::size_t room = GetParam().longest_path - key.size() - 1;
  const std::string longest(std::min<std::size_t>(255, room), 'k');
  ASSERT_TRUE(registry.CreateKey(key + "\\" + longest));
  std::vector<std::string> names;
  EXPECT_EQ(registry.GetAllSubKeys(key, &names), 1);
  EXPECT_EQ(names, std::vector<std::string>{longest});
  EXPECT_FALSE(registry.CreateKey(key + "\\" + longest + "k"));
}

TEST_P(Registry, ListsNothingOfAMissingKey) {
  std::vector<std::string> names = {"left", "over"};
  EXPECT_EQ(registry.GetAllSubKeys(key, &names), 0);
  EXPECT_TRUE(names.empty());
  names = {"left"};
  EXPECT_EQ(registry.GetAllValueNames(key, &names), 0);
  EXPECT_TRUE(names.empty());
}

TEST_P(Registry, ListsNothingOfAnEmptyKey) {
  ASSERT_TRUE(registry.CreateKey(key));
  std::vector<std::string> names;
  EXPECT_EQ(registry.GetAllSubKeys(key, &names), 0);
  EXPECT_EQ(registry.GetAllValueNames(key, &names), 0);
}

TEST_P(Registry, ListsValueNames) {
  const std::string longest(300, 'v');
  for (const std::string& name : {std::string("b"), longest, std::string("A c")}) {
    ASSERT_TRUE(registry.SetValue(key, name, "x", 1));
  }
  std::vector<std::string> names = {"left over"};
  EXPECT_EQ(registry.GetAllValueNames(key, &names), 3);
  std::sort(names.begin(), names.end());
  EXPECT_EQ(names, (std::vector<std::string>{"A c", "b", longest}));
}

TEST_P(Registry, ListsTheDefaultValueUnderAnEmptyName) {
  ASSERT_TRUE(registry.SetValue(key, "", "own", 1));
  std::vector<std::string> names;
  EXPECT_EQ(registry.GetAllValueNames(key, &names), 1);
  EXPECT_EQ(names, std::vector<std::string>{""});
}

TEST_P(Registry, AnEmptyKeyNameMeansTheRootWhereItIsNotRefused) {
  ASSERT_TRUE(registry.CreateKey(key));
  std::vector<std::string> names;
  EXPECT_GE(registry.GetAllSubKeys("", &names), 1);
  EXPECT_NE(std::find_if(
                names.begin(), names.end(),
                [](const std::string& name) { return name == "Software" || name == "SOFTWARE"; }),
            names.end());
  EXPECT_EQ(registry.GetValue("", "Scrivo no such value", RegistryValue("d")), RegistryValue("d"));
  registry.GetAllValueNames("", &names);
}

TEST_P(Registry, AnEmptyKeyNameIsRefusedElsewhere) {
  const std::vector<std::function<void()>> members = {
      [&] { registry.CreateKey(""); },
      [&] { registry.DeleteKey(""); },
      [&] { registry.DeleteValue("", "v"); },
      [&] { registry.KeyExists(""); },
      [&] { registry.SetValue("", "v", "x", 1); },
      [&] { registry.ValueType("", "v"); },
  };
  for (const auto& member : members) {
    ExpectError(member, kComponentErrorBase + 18001, "Scrivo.CRegistry", "Invalid KeyName value");
  }
}

class OpenKeysOfRegistry : public Registry {};

TEST_P(OpenKeysOfRegistry, AreThoseOfThreeMembersThatLeaveThem) {
  const auto opened_by = [&](const std::function<void()>& member) {
    const std::size_t before = GetParam().open_keys(*store);
    member();
    return GetParam().open_keys(*store) - before;
  };
  std::vector<std::string> names;
  EXPECT_EQ(opened_by([&] { registry.CreateKey(key); }), 0u);
  EXPECT_EQ(opened_by([&] { registry.SetValue(key, "v", "x", 1); }), 0u);
  EXPECT_EQ(opened_by([&] { registry.SetValue(key, "v", "x", 9); }), 0u);
  EXPECT_EQ(opened_by([&] { registry.KeyExists(key); }), 0u);
  EXPECT_EQ(opened_by([&] { registry.GetAllSubKeys(key, &names); }), 0u);
  EXPECT_EQ(opened_by([&] { registry.GetAllValueNames(key, &names); }), 0u);
  EXPECT_EQ(opened_by([&] { registry.GetValue(key, "v", RegistryValue()); }), 1u);
  EXPECT_EQ(opened_by([&] { registry.GetValue(key, "missing", RegistryValue()); }), 1u);
  EXPECT_EQ(opened_by([&] { registry.ValueType(key, "v"); }), 1u);
  EXPECT_EQ(opened_by([&] { registry.DeleteValue(key, "v"); }), 1u);
  EXPECT_EQ(opened_by([&] { registry.DeleteKey(key); }), 0u);
  EXPECT_EQ(opened_by([&] { registry.GetValue(key, "v", RegistryValue()); }), 0u);
  EXPECT_EQ(opened_by([&] { registry.ValueType(key, "v"); }), 0u);
  EXPECT_EQ(opened_by([&] { registry.DeleteValue(key, "v"); }), 0u);
}

TEST_P(Registry, AValueThatCannotBecomeTextIsAComponentFailure) {
  ExpectError(
      [&] {
        registry.SetValue(key, "v", ByteArray{{1, 2, 3}}, 1);
      },
      kComponentErrorBase + 18003, "Scrivo.CRegistry", "CRegistry component failure");
  EXPECT_EQ(registry.ValueType(key, "v"), 0u);
}

INSTANTIATE_TEST_SUITE_P(Stores, Registry, testing::ValuesIn(RegistryStoreKinds()), KindName);
INSTANTIATE_TEST_SUITE_P(Stores, OpenKeysOfRegistry,
                         testing::ValuesIn(CountingRegistryStoreKinds()), KindName);

}  // namespace
}  // namespace scrivo
