#include "tests/doubles/memory_registry.h"

#include <gtest/gtest.h>

namespace scrivo {
namespace {

class InMemory : public testing::Test {
 protected:
  RegistryHandle Open(const std::string& path, std::uint32_t rights) {
    RegistryHandle key = 0;
    EXPECT_EQ(registry.CreateKey(kHkeyCurrentUser, path, rights, &key), kRegistrySuccess);
    return key;
  }
  RegistryStatus Query(RegistryHandle key, const std::string& name) {
    return registry.QueryValue(key, name, &type, nullptr, &size);
  }
  RegistryStatus Set(RegistryHandle key, const std::string& name) {
    const std::uint8_t bytes[] = {'a', 'b', 0};
    return registry.SetValue(key, name, kRegSz, bytes, sizeof bytes);
  }

  MemoryRegistry registry;
  std::uint32_t type = 0, size = 0;
  RegistryHandle other = 0;
};

TEST_F(InMemory, ChecksTheRightsThatAKeyWasOpenedWith) {
  const RegistryHandle reader = Open("a", kRightQueryValue);
  const RegistryHandle writer = Open("a", kRightSetValue);
  const RegistryHandle lister = Open("a\\b", kRightEnumerateSubKeys);
  char name[10];
  std::uint32_t length = sizeof name;
  EXPECT_EQ(Set(writer, "v"), kRegistrySuccess);
  EXPECT_EQ(Set(reader, "v"), kRegistryAccessDenied);
  EXPECT_EQ(registry.DeleteValue(reader, "v"), kRegistryAccessDenied);
  EXPECT_EQ(Query(reader, "v"), kRegistrySuccess);
  EXPECT_EQ(Query(writer, "v"), kRegistryAccessDenied);
  EXPECT_EQ(registry.EnumValue(writer, 0, name, &length), kRegistryAccessDenied);
  EXPECT_EQ(registry.LongestValueName(lister, &length), kRegistryAccessDenied);
  EXPECT_EQ(registry.EnumKey(reader, 0, name, sizeof name), kRegistryAccessDenied);
  EXPECT_EQ(registry.EnumKey(lister, 0, name, sizeof name), kRegistryNoMoreItems);
}

TEST_F(InMemory, CountsTheOpenKeys) {
  const RegistryHandle a = Open("a", kRightAllAccess);
  const RegistryHandle again = Open("a", kRightAllAccess);
  EXPECT_NE(a, again);
  EXPECT_EQ(registry.OpenKeys(), 2u);
  EXPECT_EQ(registry.CloseKey(a), kRegistrySuccess);
  EXPECT_EQ(registry.CloseKey(a), kRegistryInvalidHandle);
  EXPECT_EQ(registry.OpenKeys(), 1u);
}

TEST_F(InMemory, ClosingARootDoesNothing) {
  EXPECT_EQ(registry.CloseKey(kHkeyLocalMachine), kRegistrySuccess);
  EXPECT_EQ(registry.OpenKey(kHkeyLocalMachine, "", kRightAllAccess, &other), kRegistrySuccess);
}

TEST_F(InMemory, RefusesAHandleThatIsNone) {
  const RegistryHandle none = 0x12345678;
  char name[10];
  std::uint32_t length = sizeof name;
  EXPECT_EQ(registry.OpenKey(none, "a", kRightAllAccess, &other), kRegistryInvalidHandle);
  EXPECT_EQ(registry.CreateKey(none, "a", kRightAllAccess, &other), kRegistryInvalidHandle);
  EXPECT_EQ(registry.DeleteKey(none, "a"), kRegistryInvalidHandle);
  EXPECT_EQ(registry.DeleteValue(none, "a"), kRegistryInvalidHandle);
  EXPECT_EQ(Query(none, "a"), kRegistryInvalidHandle);
  EXPECT_EQ(Set(none, "a"), kRegistryInvalidHandle);
  EXPECT_EQ(registry.EnumKey(none, 0, name, sizeof name), kRegistryInvalidHandle);
  EXPECT_EQ(registry.EnumValue(none, 0, name, &length), kRegistryInvalidHandle);
  EXPECT_EQ(registry.LongestValueName(none, &length), kRegistryInvalidHandle);
}

TEST_F(InMemory, TellsWhenAnOpenKeyWasDeleted) {
  const RegistryHandle key = Open("a\\b", kRightAllAccess);
  EXPECT_EQ(registry.DeleteKey(kHkeyCurrentUser, "a\\b"), kRegistrySuccess);
  EXPECT_EQ(Set(key, "v"), kRegistryKeyDeleted);
  EXPECT_EQ(registry.CreateKey(key, "c", kRightAllAccess, &other), kRegistryKeyDeleted);
  EXPECT_EQ(registry.CloseKey(key), kRegistrySuccess);
}

TEST_F(InMemory, OpensBelowAnOpenKey) {
  Open("a\\b\\c", kRightAllAccess);
  const RegistryHandle key = Open("a", kRightQueryValue);
  EXPECT_EQ(registry.OpenKey(key, "B\\C", kRightAllAccess, &other), kRegistrySuccess);
  EXPECT_EQ(registry.OpenKey(key, "", kRightAllAccess, &other), kRegistrySuccess);
  EXPECT_EQ(Set(other, "v"), kRegistrySuccess);
  EXPECT_EQ(Query(key, "v"), kRegistrySuccess);
  EXPECT_EQ(registry.OpenKey(key, "x", kRightAllAccess, &other), kRegistryFileNotFound);
}

TEST_F(InMemory, RefusesPathsThatAreNone) {
  EXPECT_EQ(registry.OpenKey(kHkeyCurrentUser, "\\a", kRightAllAccess, &other), kRegistryBadPath);
  EXPECT_EQ(registry.CreateKey(kHkeyCurrentUser, std::string(256, 'k'), kRightAllAccess, &other),
            kRegistryInvalidParameter);
}

TEST_F(InMemory, DoesNotDeleteARoot) {
  EXPECT_EQ(registry.DeleteKey(kHkeyCurrentUser, ""), kRegistryAccessDenied);
}

TEST_F(InMemory, TellsHowMuchRoomAValueNeeds) {
  const RegistryHandle key = Open("a", kRightAllAccess);
  Set(key, "v");
  std::uint8_t data[3] = {};
  size = 2;
  EXPECT_EQ(registry.QueryValue(key, "v", &type, data, &size), kRegistryMoreData);
  EXPECT_EQ(size, 3u);
  EXPECT_EQ(data[0], 0);
  EXPECT_EQ(registry.QueryValue(key, "v", &type, data, &size), kRegistrySuccess);
  EXPECT_EQ(data[1], 'b');
}

TEST_F(InMemory, TellsWhenANameDoesNotFit) {
  Open("abc", kRightAllAccess);
  Set(kHkeyCurrentUser, "xyz");
  char name[4] = {};
  std::uint32_t length = 3;
  EXPECT_EQ(registry.EnumKey(kHkeyCurrentUser, 0, name, 3), kRegistryMoreData);
  EXPECT_EQ(registry.EnumKey(kHkeyCurrentUser, 0, name, 4), kRegistrySuccess);
  EXPECT_STREQ(name, "abc");
  EXPECT_EQ(registry.EnumValue(kHkeyCurrentUser, 0, name, &length), kRegistryMoreData);
  length = 4;
  EXPECT_EQ(registry.EnumValue(kHkeyCurrentUser, 0, name, &length), kRegistrySuccess);
  EXPECT_EQ(length, 3u);
  EXPECT_STREQ(name, "xyz");
}

TEST_F(InMemory, ListsKeysByNameAndValuesInTheirOrder) {
  for (const char* const name : {"b", "C", "a"}) {
    Open(name, kRightAllAccess);
    Set(kHkeyCurrentUser, name);
  }
  std::string keys, values;
  char name[10];
  for (std::uint32_t i = 0; registry.EnumKey(kHkeyCurrentUser, i, name, 10) == 0; ++i) keys += name;
  for (std::uint32_t i = 0, length = 10;
       registry.EnumValue(kHkeyCurrentUser, i, name, &length) == 0; ++i, length = 10) {
    values += name;
  }
  EXPECT_EQ(keys, "abC");
  EXPECT_EQ(values, "bCa");
}

TEST_F(InMemory, KeepsRootsApart) {
  Open("a", kRightAllAccess);
  EXPECT_EQ(registry.OpenKey(kHkeyLocalMachine, "a", kRightAllAccess, &other),
            kRegistryFileNotFound);
}

TEST_F(InMemory, ExpandsWhatTheEnvironmentKnows) {
  registry.environment = [](const std::string& name) {
    return name == "A" ? "value" : name == "EMPTY" ? "" : nullptr;
  };
  const auto expanded = [&](const std::string& source) {
    const std::uint32_t needed = registry.ExpandEnvironment(source, nullptr, 0);
    std::string buffer(needed, '#');
    EXPECT_EQ(registry.ExpandEnvironment(source, buffer.data(), needed), needed);
    EXPECT_EQ(buffer.back(), '\0');
    return buffer.substr(0, needed - 1);
  };
  EXPECT_EQ(expanded("%A%\\x"), "value\\x");
  EXPECT_EQ(expanded("%A%%A%"), "valuevalue");
  EXPECT_EQ(expanded("%B%A%"), "%Bvalue");
  EXPECT_EQ(expanded("100% %EMPTY%done"), "100% done");
  EXPECT_EQ(expanded("%"), "%");
  EXPECT_EQ(expanded(""), "");
}

TEST_F(InMemory, FillsNoBufferThatIsTooSmall) {
  char buffer[4] = {'#', '#', '#', '#'};
  EXPECT_EQ(registry.ExpandEnvironment("text", buffer, 4), 5u);
  EXPECT_EQ(buffer[0], '#');
}

}  // namespace
}  // namespace scrivo
