#include "addin/registration.h"

#include <gtest/gtest.h>

#include "tests/doubles/memory_registry.h"

namespace scrivo {
namespace {

// A registry that cannot be written to below some key of one root.
class GuardedRegistry : public MemoryRegistry {
 public:
  RegistryHandle guarded = 0;
  std::string guarded_path;  // "" for the whole root

  RegistryStatus CreateKey(RegistryHandle parent, const std::string& path, std::uint32_t rights,
                           RegistryHandle* key) override {
    if (IsGuarded(parent, path)) return kRegistryAccessDenied;
    return MemoryRegistry::CreateKey(parent, path, rights, key);
  }
  RegistryStatus OpenKey(RegistryHandle parent, const std::string& path, std::uint32_t rights,
                         RegistryHandle* key) override {
    const RegistryStatus status = MemoryRegistry::OpenKey(parent, path, rights, key);
    if (status != kRegistrySuccess || !IsGuarded(parent, path) || !(rights & kRightSetValue)) {
      return status;
    }
    CloseKey(*key);
    return kRegistryAccessDenied;
  }

 private:
  bool IsGuarded(RegistryHandle parent, const std::string& path) const {
    return parent == guarded && path.starts_with(guarded_path);
  }
};

class RegistrationTest : public testing::Test {
 protected:
  static constexpr const char* kLibrary = "C:\\Program Files\\Scrivo\\Scrivo.dll";
  static constexpr const char* kAddinKey =
      "Software\\Microsoft\\Office\\SharePoint Designer\\Addins\\Kestrel.Connect";

  ~RegistrationTest() override { EXPECT_EQ(registry.OpenKeys(), 0u); }

  StoredKey* KeyAt(RegistryHandle root, const std::string& path) {
    return FindKeyAt(&registry.tree[static_cast<std::uint32_t>(root)], KeyNames(path));
  }
  // A text value; "(none)" when it is missing or no text.
  std::string TextAt(RegistryHandle root, const std::string& path, const std::string& name) {
    StoredKey* key = KeyAt(root, path);
    StoredValue* value = key ? key->FindValue(name) : nullptr;
    return value && value->type == kRegSz ? std::string(value->data.c_str()) : "(none)";
  }
  void Store(RegistryHandle root, const std::string& path, const std::string& name) {
    RegistryHandle key = 0;
    ASSERT_EQ(registry.CreateKey(root, path, kRightSetValue, &key), kRegistrySuccess);
    const std::uint8_t text[] = "x";
    registry.SetValue(key, name, kRegSz, text, sizeof text);
    registry.CloseKey(key);
  }
  void ExpectRegisteredBelow(RegistryHandle root) {
    const std::string classes = "Software\\Classes\\";
    const std::string class_key = classes + "CLSID\\" + kConnectClass;
    EXPECT_EQ(TextAt(root, class_key + "\\InprocServer32", ""), kLibrary);
    EXPECT_EQ(TextAt(root, class_key + "\\InprocServer32", "ThreadingModel"), "Apartment");
    EXPECT_EQ(TextAt(root, class_key + "\\ProgID", ""), "Kestrel.Connect");
    EXPECT_EQ(TextAt(root, classes + "Kestrel.Connect\\CLSID", ""), kConnectClass);
    EXPECT_EQ(TextAt(root, kAddinKey, "FriendlyName"), "ScrivoBuilder");
    EXPECT_EQ(TextAt(root, kAddinKey, "Description"),
              "Front Page site to Microsoft Help Workshop converter");
    StoredKey* key = KeyAt(root, kAddinKey);
    ASSERT_NE(key, nullptr);
    EXPECT_EQ(key->values.size(), 3u);
    StoredValue* behavior = key->FindValue("LoadBehavior");
    ASSERT_NE(behavior, nullptr);
    EXPECT_EQ(behavior->type, kRegDword);
    EXPECT_EQ(behavior->data, std::string("\3\0\0\0", 4));
  }

  GuardedRegistry registry;
};

TEST_F(RegistrationTest, ItIsWrittenForAllUsersWhereThatIsAllowed) {
  ASSERT_TRUE(RegisterAddin(registry, kLibrary));
  ExpectRegisteredBelow(kHkeyLocalMachine);
  EXPECT_TRUE(registry.tree[static_cast<std::uint32_t>(kHkeyCurrentUser)].keys.empty());
}

TEST_F(RegistrationTest, WithoutTheRightsItIsWrittenForTheUser) {
  registry.guarded = kHkeyLocalMachine;
  ASSERT_TRUE(RegisterAddin(registry, kLibrary));
  ExpectRegisteredBelow(kHkeyCurrentUser);
  EXPECT_TRUE(registry.tree[static_cast<std::uint32_t>(kHkeyLocalMachine)].keys.empty());
}

TEST_F(RegistrationTest, WhatCouldNotBeWrittenWholeIsTakenBack) {
  registry.guarded = kHkeyLocalMachine;
  registry.guarded_path = "Software\\Microsoft\\";
  ASSERT_TRUE(RegisterAddin(registry, kLibrary));
  ExpectRegisteredBelow(kHkeyCurrentUser);
  EXPECT_EQ(KeyAt(kHkeyLocalMachine, "Software\\Classes\\Kestrel.Connect"), nullptr);
  const std::string class_key = std::string("Software\\Classes\\CLSID\\") + kConnectClass;
  EXPECT_EQ(KeyAt(kHkeyLocalMachine, class_key), nullptr);
}

TEST_F(RegistrationTest, WithoutAnyRightsItFails) {
  class ReadOnlyRegistry : public MemoryRegistry {
    RegistryStatus CreateKey(RegistryHandle, const std::string&, std::uint32_t,
                             RegistryHandle*) override {
      return kRegistryAccessDenied;
    }
  } read_only;
  EXPECT_FALSE(RegisterAddin(read_only, kLibrary));
}

TEST_F(RegistrationTest, RegisteringAgainChangesTheLibraryOnly) {
  ASSERT_TRUE(RegisterAddin(registry, "C:\\Old\\Scrivo.dll"));
  ASSERT_TRUE(RegisterAddin(registry, kLibrary));
  ExpectRegisteredBelow(kHkeyLocalMachine);
}

TEST_F(RegistrationTest, UnregisteringLeavesTheRegistryAsItWas) {
  for (const RegistryHandle root : {kHkeyLocalMachine, kHkeyCurrentUser}) {
    Store(root, "Software\\Classes\\CLSID\\{00000000-0000-0000-0000-000000000001}", "");
    Store(root, "Software\\Microsoft\\Office\\SharePoint Designer\\Addins\\Other.Addin", "x");
  }
  const RegistryTree before = registry.tree;
  ASSERT_TRUE(RegisterAddin(registry, kLibrary));
  EXPECT_TRUE(registry.tree != before);
  ASSERT_TRUE(UnregisterAddin(registry));
  EXPECT_TRUE(registry.tree == before);
}

TEST_F(RegistrationTest, AForeignValueInOurKeyStaysWithIt) {
  ASSERT_TRUE(RegisterAddin(registry, kLibrary));
  Store(kHkeyLocalMachine, kAddinKey, "CommandLineSafe");
  ASSERT_TRUE(UnregisterAddin(registry));
  StoredKey* key = KeyAt(kHkeyLocalMachine, kAddinKey);
  ASSERT_NE(key, nullptr);
  ASSERT_EQ(key->values.size(), 1u);
  EXPECT_EQ(key->values[0].name, "CommandLineSafe");
}

TEST_F(RegistrationTest, AForeignKeyBelowOursStaysWithIt) {
  ASSERT_TRUE(RegisterAddin(registry, kLibrary));
  const std::string class_key = std::string("Software\\Classes\\CLSID\\") + kConnectClass;
  Store(kHkeyLocalMachine, class_key + "\\Implemented Categories", "x");
  ASSERT_TRUE(UnregisterAddin(registry));
  StoredKey* key = KeyAt(kHkeyLocalMachine, class_key);
  ASSERT_NE(key, nullptr);
  EXPECT_TRUE(key->values.empty());
  EXPECT_EQ(key->keys.size(), 1u);
}

TEST_F(RegistrationTest, BothRootsAreUnregistered) {
  ASSERT_TRUE(RegisterAddin(registry, kLibrary));
  registry.guarded = kHkeyLocalMachine;
  ASSERT_TRUE(RegisterAddin(registry, kLibrary));
  registry.guarded = 0;
  ASSERT_NE(KeyAt(kHkeyLocalMachine, kAddinKey), nullptr);
  ASSERT_NE(KeyAt(kHkeyCurrentUser, kAddinKey), nullptr);
  ASSERT_TRUE(UnregisterAddin(registry));
  for (const RegistryHandle root : {kHkeyLocalMachine, kHkeyCurrentUser}) {
    EXPECT_EQ(KeyAt(root, kAddinKey), nullptr);
    EXPECT_EQ(KeyAt(root, "Software\\Classes\\Kestrel.Connect"), nullptr);
  }
}

TEST_F(RegistrationTest, ANameThatAnotherClassHasTakenIsLeftToIt) {
  ASSERT_TRUE(RegisterAddin(registry, kLibrary));
  RegistryHandle key = 0;
  ASSERT_EQ(registry.CreateKey(kHkeyLocalMachine, "Software\\Classes\\Kestrel.Connect\\CLSID",
                               kRightSetValue, &key),
            kRegistrySuccess);
  const std::string other = "{00000000-0000-0000-0000-000000000001}";
  registry.SetValue(key, "", kRegSz, reinterpret_cast<const std::uint8_t*>(other.c_str()),
                    static_cast<std::uint32_t>(other.size() + 1));
  registry.CloseKey(key);
  ASSERT_TRUE(UnregisterAddin(registry));
  EXPECT_EQ(TextAt(kHkeyLocalMachine, "Software\\Classes\\Kestrel.Connect\\CLSID", ""), other);
  EXPECT_EQ(TextAt(kHkeyLocalMachine, kAddinKey, "FriendlyName"), "ScrivoBuilder");
  const std::string class_key = std::string("Software\\Classes\\CLSID\\") + kConnectClass;
  EXPECT_EQ(KeyAt(kHkeyLocalMachine, class_key), nullptr);
}

TEST_F(RegistrationTest, ARegistrationForAllUsersReplacesOneForTheUser) {
  registry.guarded = kHkeyLocalMachine;
  ASSERT_TRUE(RegisterAddin(registry, "C:\\Old\\Scrivo.dll"));
  registry.guarded = 0;
  ASSERT_TRUE(RegisterAddin(registry, kLibrary));
  ExpectRegisteredBelow(kHkeyLocalMachine);
  EXPECT_EQ(KeyAt(kHkeyCurrentUser, kAddinKey), nullptr);
  EXPECT_EQ(KeyAt(kHkeyCurrentUser, "Software\\Classes\\Kestrel.Connect"), nullptr);
}

TEST_F(RegistrationTest, WhatCannotBeRemovedIsTold) {
  ASSERT_TRUE(RegisterAddin(registry, kLibrary));
  registry.guarded = kHkeyLocalMachine;
  EXPECT_FALSE(UnregisterAddin(registry));
  ExpectRegisteredBelow(kHkeyLocalMachine);
}

TEST_F(RegistrationTest, ForThisUserAloneNothingIsWrittenForOthers) {
  ASSERT_TRUE(RegisterAddinForThisUser(registry, kLibrary));
  ExpectRegisteredBelow(kHkeyCurrentUser);
  EXPECT_TRUE(registry.tree[static_cast<std::uint32_t>(kHkeyLocalMachine)].keys.empty());
}

TEST_F(RegistrationTest, ForThisUserAloneARegistrationForAllStays) {
  ASSERT_TRUE(RegisterAddin(registry, kLibrary));
  ASSERT_TRUE(RegisterAddinForThisUser(registry, kLibrary));
  ExpectRegisteredBelow(kHkeyCurrentUser);
  ASSERT_TRUE(UnregisterAddinForThisUser(registry));
  EXPECT_EQ(KeyAt(kHkeyCurrentUser, kAddinKey), nullptr);
  ExpectRegisteredBelow(kHkeyLocalMachine);
}

TEST_F(RegistrationTest, UnregisteringWhatWasNeverRegisteredIsDone) {
  EXPECT_TRUE(UnregisterAddin(registry));
}

}  // namespace
}  // namespace scrivo
