#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace scrivo {

// One value as the registry holds it: a type code and bytes.
struct StoredValue {
  std::string name;  // "" for the key's default value
  std::uint32_t type = 0;
  std::string data;

  bool operator==(const StoredValue&) const = default;
};

// A registry key with everything below it.
struct StoredKey {
  std::string name;
  std::vector<StoredValue> values;  // in the order in which they were first stored
  std::vector<StoredKey> keys;      // in the order of their names

  bool operator==(const StoredKey&) const = default;

  // The value or sub-key with this name, whatever its case; null when there is none.
  StoredValue* FindValue(const std::string& value_name);
  StoredKey* FindKey(const std::string& key_name);
  // The sub-key with this name, made when there is none.
  StoredKey& MakeKey(const std::string& key_name);
  void RemoveKey(const std::string& key_name);
};

// The keys below each predefined root (0x80000000 …).
using RegistryTree = std::map<std::uint32_t, StoredKey>;

// The names of a key path, its empty ones left out.
std::vector<std::string> KeyNames(const std::string& path);

// The key at `names` below `key`; null when one of them is missing.
StoredKey* FindKeyAt(StoredKey* key, const std::vector<std::string>& names);

}  // namespace scrivo
