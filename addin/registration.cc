#include "addin/registration.h"

#include <cstring>
#include <string_view>
#include <vector>

#include "addin/product.h"

namespace scrivo {
namespace {

constexpr RegistryHandle kForAllUsers = kHkeyLocalMachine;
constexpr RegistryHandle kForThisUser = kHkeyCurrentUser;

// One value of the registration.
struct Entry {
  std::string key;   // below the root
  std::string name;  // "" for the key's default value
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

// Where it stands under which class the add-in's name creates objects.
std::string NameClassKey() {
  return std::string("Software\\Classes\\").append(kProgId).append("\\CLSID");
}

// What belongs to the class. Like every list here, keys come before those below them.
std::vector<Entry> ClassEntries(const std::string& library_path) {
  const std::string class_key = std::string("Software\\Classes\\CLSID\\") + kConnectClass;
  const std::string server_key = class_key + "\\InprocServer32";
  return {
      Text(class_key, "", kFriendlyName),
      Text(server_key, "", library_path),
      Text(server_key, "ThreadingModel", "Apartment"),
      Text(class_key + "\\ProgID", "", kProgId),
  };
}

// What belongs to the add-in's name.
std::vector<Entry> NameEntries() {
  std::string addin_key = kHostRoot;
  addin_key.append("\\Addins\\").append(kProgId);
  return {
      Text(std::string("Software\\Classes\\").append(kProgId), "", kFriendlyName),
      Text(NameClassKey(), "", kConnectClass),
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

// Whether the add-in's name belongs to this class, or to nobody yet.
bool IsNameOurs(RegistryStore& registry, RegistryHandle root) {
  RegistryHandle key = 0;
  if (registry.OpenKey(root, NameClassKey(), kRightQueryValue, &key) != kRegistrySuccess) {
    return true;
  }
  const std::string_view expected(kConnectClass, std::strlen(kConnectClass) + 1);
  std::uint8_t data[64];
  std::uint32_t type = 0, size = sizeof data;
  const RegistryStatus status = registry.QueryValue(key, "", &type, data, &size);
  registry.CloseKey(key);
  return status == kRegistryFileNotFound ||
         (status == kRegistrySuccess &&
          expected.starts_with(std::string_view(reinterpret_cast<char*>(data), size)));
}

// Deletes a value, and its key when nothing else is in it. True when the value is not there any
// more.
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

// Removes the entries, keys after those below them. True when none of them is left.
bool RemoveAll(RegistryStore& registry, RegistryHandle root, const std::vector<Entry>& entries) {
  bool removed = true;
  for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry) {
    removed = Remove(registry, root, *entry) && removed;
  }
  return removed;
}

// Removes the registration below one root; a name that belongs to another class stays with it.
bool UnregisterBelow(RegistryStore& registry, RegistryHandle root) {
  const bool name_is_gone = !IsNameOurs(registry, root) || RemoveAll(registry, root, NameEntries());
  return RemoveAll(registry, root, ClassEntries("")) && name_is_gone;
}

bool RegisterBelow(RegistryStore& registry, RegistryHandle root, const std::string& library_path) {
  std::vector<Entry> entries = ClassEntries(library_path);
  for (const Entry& entry : NameEntries()) entries.push_back(entry);
  for (const Entry& entry : entries) {
    if (Write(registry, root, entry)) continue;
    UnregisterBelow(registry, root);
    return false;
  }
  return true;
}

}  // namespace

bool RegisterAddin(RegistryStore& registry, const std::string& library_path) {
  if (!RegisterBelow(registry, kForAllUsers, library_path)) {
    return RegisterAddinForThisUser(registry, library_path);
  }
  // An older registration for this user would win over the new one for all.
  UnregisterBelow(registry, kForThisUser);
  return true;
}

bool UnregisterAddin(RegistryStore& registry) {
  const bool for_all_users = UnregisterBelow(registry, kForAllUsers);
  const bool for_this_user = UnregisterAddinForThisUser(registry);
  return for_all_users && for_this_user;
}

bool RegisterAddinForThisUser(RegistryStore& registry, const std::string& library_path) {
  return RegisterBelow(registry, kForThisUser, library_path);
}

bool UnregisterAddinForThisUser(RegistryStore& registry) {
  return UnregisterBelow(registry, kForThisUser);
}

}  // namespace scrivo
