#include "tests/doubles/registry_tree.h"

#include <algorithm>

namespace scrivo {
namespace {

std::string Folded(const std::string& name) {
  std::string folded = name;
  for (char& character : folded) {
    if (character >= 'a' && character <= 'z') character = static_cast<char>(character - 'a' + 'A');
  }
  return folded;
}

// Where the sub-key with this name is, or belongs.
std::vector<StoredKey>::iterator PlaceOf(std::vector<StoredKey>& keys, const std::string& name) {
  return std::lower_bound(
      keys.begin(), keys.end(), Folded(name),
      [](const StoredKey& key, const std::string& folded) { return Folded(key.name) < folded; });
}

}  // namespace

StoredValue* StoredKey::FindValue(const std::string& value_name) {
  for (StoredValue& value : values) {
    if (Folded(value.name) == Folded(value_name)) return &value;
  }
  return nullptr;
}

StoredKey* StoredKey::FindKey(const std::string& key_name) {
  const auto place = PlaceOf(keys, key_name);
  return place != keys.end() && Folded(place->name) == Folded(key_name) ? &*place : nullptr;
}

StoredKey& StoredKey::MakeKey(const std::string& key_name) {
  if (StoredKey* const key = FindKey(key_name)) return *key;
  StoredKey key;
  key.name = key_name;
  return *keys.insert(PlaceOf(keys, key_name), std::move(key));
}

void StoredKey::RemoveKey(const std::string& key_name) {
  if (FindKey(key_name)) keys.erase(PlaceOf(keys, key_name));
}

std::vector<std::string> KeyNames(const std::string& path) {
  std::vector<std::string> names;
  for (std::size_t start = 0; start <= path.size();) {
    const std::size_t end = std::min(path.find('\\', start), path.size());
    if (end > start) names.push_back(path.substr(start, end - start));
    start = end + 1;
  }
  return names;
}

StoredKey* FindKeyAt(StoredKey* key, const std::vector<std::string>& names) {
  for (const std::string& name : names) {
    if (key) key = key->FindKey(name);
  }
  return key;
}

}  // namespace scrivo
