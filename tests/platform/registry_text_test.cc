#include "platform/registry_text.h"

#include "system/registry_store.h"
#include "tests/doubles/expect_error.h"

namespace scrivo {
namespace {

using namespace std::string_literals;

void Add(StoredKey& key, const std::string& name, std::uint32_t type, const std::string& data) {
  key.values.push_back({name, type, data});
}

TEST(RegistryText, IsTheFormThatRegistryEditorsExchange) {
  RegistryTree tree;
  StoredKey& workshop =
      tree[0x80000001].MakeKey("Software").MakeKey("Microsoft").MakeKey("HTML Help Workshop");
  Add(workshop, "", kRegSz, "own\0"s);
  Add(workshop, "InstallDir", kRegSz, "C:\\a \"b\"\0"s);
  Add(workshop, "Count", kRegDword, "\x2a\0\0\x80"s);
  Add(workshop, "Bytes", kRegBinary, "\0\xff\x0a"s);
  Add(workshop, "Home", kRegExpandSz, "%A%\0"s);
  Add(workshop, "Odd", 0x4711, "");
  tree[0x80000001].MakeKey("Software").MakeKey("Empty");
  Add(tree[0x80000002], "v", kRegNone, "x");
  EXPECT_EQ(FormatRegistry(tree),
            "REGEDIT4\n"
            "\n"
            "[HKEY_CURRENT_USER\\Software\\Empty]\n"
            "\n"
            "[HKEY_CURRENT_USER\\Software\\Microsoft\\HTML Help Workshop]\n"
            "@=\"own\"\n"
            "\"InstallDir\"=\"C:\\\\a \\\"b\\\"\"\n"
            "\"Count\"=dword:8000002a\n"
            "\"Bytes\"=hex:00,ff,0a\n"
            "\"Home\"=hex(2):25,41,25,00\n"
            "\"Odd\"=hex(4711):\n"
            "\n"
            "[HKEY_LOCAL_MACHINE]\n"
            "\"v\"=hex(0):78\n");
}

TEST(RegistryText, OfAnEmptyRegistryIsItsHeading) {
  EXPECT_EQ(FormatRegistry({}), "REGEDIT4\n");
  RegistryTree tree;
  tree[0x80000001];
  EXPECT_EQ(FormatRegistry(tree), "REGEDIT4\n");
  EXPECT_TRUE(ParseRegistry("REGEDIT4\n", "f").empty());
  EXPECT_TRUE(ParseRegistry("REGEDIT4", "f").empty());
}

TEST(RegistryText, ReturnsEveryTypeAndByte) {
  std::string all;
  for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
  RegistryTree tree;
  StoredKey& key = tree[0x80000000].MakeKey("a]b").MakeKey(" [x] ").MakeKey("\xE9%\"");
  Add(key, "a\"b\\c=d\r\ne", kRegSz, "line\r\nline\\\"\t\xE9\0"s);
  Add(key, "@", kRegSz, "at\0"s);
  for (const std::uint32_t type : {0u, 1u, 2u, 3u, 4u, 5u, 6u, 7u, 0xFFFFFFFFu}) {
    Add(key, "all" + std::to_string(type), type, all);
    Add(key, "none" + std::to_string(type), type, "");
    Add(key, "text" + std::to_string(type), type, "ab\0"s);
    Add(key, "open" + std::to_string(type), type, "abcd");
    Add(key, "two" + std::to_string(type), type, "ab\0cd\0"s);
  }
  const std::string text = FormatRegistry(tree);
  RegistryTree read = ParseRegistry(text, "f");
  EXPECT_EQ(FormatRegistry(read), text);
  const StoredKey* const found = FindKeyAt(&read[0x80000000], {"a]b", " [x] ", "\xE9%\""});
  ASSERT_NE(found, nullptr);
  ASSERT_EQ(found->values.size(), key.values.size());
  for (std::size_t i = 0; i < key.values.size(); ++i) {
    EXPECT_EQ(found->values[i].name, key.values[i].name);
    EXPECT_EQ(found->values[i].type, key.values[i].type) << key.values[i].name;
    EXPECT_EQ(found->values[i].data, key.values[i].data) << key.values[i].name;
  }
}

TEST(RegistryText, IsReadAsPeopleWriteIt) {
  RegistryTree tree = ParseRegistry(
      "REGEDIT4\r\n; by hand\r\n\r\n[HKEY_CURRENT_USER\\a]\r\n\"n\"=dword:2A\r\n"
      "\"N\"=hex:AB,c\r\n\r\n[HKEY_CURRENT_USER\\A\\b]\r\n",
      "f");
  StoredKey* const key = tree[0x80000001].FindKey("a");
  ASSERT_NE(key, nullptr);
  ASSERT_EQ(key->values.size(), 1u);  // the later one with the same name counts
  EXPECT_EQ(key->values[0].data, "\xAB\x0C");
  EXPECT_NE(key->FindKey("B"), nullptr);
}

TEST(RegistryText, DamageIsReportedWithFileAndLine) {
  const std::string start = "REGEDIT4\n[HKEY_CURRENT_USER\\a]\n";
  const std::pair<std::string, int> damaged[] = {
      {"", 1},
      {"\n", 1},
      {"REGEDIT5\n", 1},
      {"Windows Registry Editor Version 5.00\n", 1},
      {"REGEDIT4\n\"v\"=\"before any key\"\n", 2},
      {"REGEDIT4\n[HKEY_SOMEBODY\\a]\n", 2},
      {"REGEDIT4\n[HKEY_CURRENT_USERS\\a]\n", 2},
      {"REGEDIT4\n[HKEY_CURRENT_USER\\a\n", 2},
      {"REGEDIT4\n[-HKEY_CURRENT_USER\\a]\n", 2},
      {start + "v=\"x\"\n", 3},
      {start + "\"v\"\n", 3},
      {start + "\"v\"=\n", 3},
      {start + "\"v\"=x\n", 3},
      {start + "\"v\"=\"open\n", 3},
      {start + "\"v\"=\"open\\\n", 3},
      {start + "\"v\"=\"x\"y\n", 3},
      {start + "\"\"=\"x\"\n", 3},
      {start + "\"v=\"x\"\n", 3},
      {start + "\"v\"=dword:\n", 3},
      {start + "\"v\"=dword:123456789\n", 3},
      {start + "\"v\"=dword:12x\n", 3},
      {start + "\"v\"=hex:1,\n", 3},
      {start + "\"v\"=hex:,1\n", 3},
      {start + "\"v\"=hex:123\n", 3},
      {start + "\"v\"=hex(:1\n", 3},
      {start + "\"v\"=hex(1:1\n", 3},
      {start + "\"v\"=hex(g):1\n", 3},
      {start + "\"v\"=\"x\"\n\0"s, 4},
  };
  for (const auto& [text, line] : damaged) {
    ExpectError([&, text = text] { ParseRegistry(text, "/home/me/registry.reg"); },
                kPathFileAccessError, "Registry",
                "/home/me/registry.reg, line " + std::to_string(line) +
                    ": this is not a registry file, or it is damaged. Repair the line or move the "
                    "file away; until then it is left as it is");
  }
}

}  // namespace
}  // namespace scrivo
