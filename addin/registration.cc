#include "addin/registration.h"

#include <cstring>
#include <vector>

#include "addin/product.h"

namespace scrivo {
namespace {

constexpr RegistryHandle kForAllUsers = kHkeyLocalMachine;
constexpr RegistryHandle kForThisUser = kHkeyCurrentUser;

/// One value of the registration.
struct Entry {
  std::string key;   ///< below the root
  std::string name;  ///< "" for the key's default value
  std::uint32_t type;
  std::string data;
};

Entry Text(const std::string& key, const std::string& name, const std::string& text) {
  return {key, name, kRegSz, std::string(text.c_str(), text.size() + 1)};
}

Entry Number(const std::string& key, const std::string& name, std::int32_t number) {
  std::string data(sizeof number, '\0');
  std::memcpy(data.data(), &number, sizeof number);
  return {key, name, kRegDword, data};
}

/// All of them, keys before those below them.
std::vector<Entry> Entries(const std::string& library_path) {
  const std::string classes = "Software\\Classes\\";
  const std::string class_key = classes + "CLSID\\" + kConnectClass;
  const std::string server_key = class_key + "\\InprocServer32";
  const std::string name_key = classes + kProgId;
  std::string addin_key = kHostRoot;
  addin_key.append("\\Addins\\").append(kProgId);
  return {
      Text(class_key, "", kFriendlyName),
      Text(server_key, "", library_path),
      Text(server_key, "ThreadingModel", "Apartment"),
      Text(class_key + "\\ProgID", "", kProgId),
      Text(name_key, "", kFriendlyName),
      Text(name_key + "\\CLSID", "", kConnectClass),
      Text(addin_key, "FriendlyName", kFriendlyName),
      Text(addin_key, "Description", kDescription),
      Number(addin_key, "LoadBehavior", kLoadBehavior),
  };
}

bool Write(RegistryStore& registry, RegistryHandle root, const Entry& entry) {
  RegistryHandle key = 0;
  if (registry.CreateKey(root, entry.key, kRightSetValue, &key) != kRegistrySuccess) return false;
  const RegistryStatus status = registry.SetValue(
      key, entry.name, entry.type, reinterpret_cast<const std::uint8_t*>(entry.data.data()),
      static_cast<std::uint32_t>(entry.data.size()));
  registry.CloseKey(key);
  return status == kRegistrySuccess;
}

bool IsEmpty(RegistryStore& registry, RegistryHandle key) {
  char name[2];
  std::uint32_t length = sizeof name;
  return registry.EnumKey(key, 0, name, sizeof name) == kRegistryNoMoreItems &&
         registry.EnumValue(key, 0, name, &length) == kRegistryNoMoreItems;
}

/// Deletes a value, and its key when nothing else is in it. True when the value is not there any
/// more.
bool Remove(RegistryStore& registry, RegistryHandle root, const Entry& entry) {
  RegistryHandle key = 0;
  const std::uint32_t rights = kRightQueryValue | kRightSetValue | kRightEnumerateSubKeys;
  const RegistryStatus opened = registry.OpenKey(root, entry.key, rights, &key);
  if (opened == kRegistryFileNotFound) return true;
  if (opened != kRegistrySuccess) return false;
  const RegistryStatus status = registry.DeleteValue(key, entry.name);
  const bool is_empty = IsEmpty(registry, key);
  registry.CloseKey(key);
  if (is_empty) registry.DeleteKey(root, entry.key);
  return status == kRegistrySuccess || status == kRegistryFileNotFound;
}

/// Removes the first `count` entries, keys after those below them.
bool RemoveFirst(RegistryStore& registry, RegistryHandle root, const std::vector<Entry>& entries,
                 std::size_t count) {
  bool removed = true;
  while (count > 0) removed = Remove(registry, root, entries[--count]) && removed;
  return removed;
}

bool RegisterBelow(RegistryStore& registry, RegistryHandle root,
                   const std::vector<Entry>& entries) {
  for (std::size_t i = 0; i < entries.size(); ++i) {
    if (Write(registry, root, entries[i])) continue;
    RemoveFirst(registry, root, entries, i + 1);
    return false;
  }
  return true;
}

}  // namespace

bool RegisterAddin(RegistryStore& registry, const std::string& library_path) {
  const std::vector<Entry> entries = Entries(library_path);
  return RegisterBelow(registry, kForAllUsers, entries) ||
         RegisterBelow(registry, kForThisUser, entries);
}

bool UnregisterAddin(RegistryStore& registry) {
  const std::vector<Entry> entries = Entries("");
  const bool for_all_users = RemoveFirst(registry, kForAllUsers, entries, entries.size());
  const bool for_this_user = RemoveFirst(registry, kForThisUser, entries, entries.size());
  return for_all_users && for_this_user;
}

}  // namespace scrivo
