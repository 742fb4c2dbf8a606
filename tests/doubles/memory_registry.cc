#include "tests/doubles/memory_registry.h"

#include <algorithm>
#include <cstdlib>

namespace scrivo {
namespace {

constexpr std::size_t kLongestKeyName = 255;

std::string Expanded(const std::string& source,
                     const std::function<const char*(const std::string&)>& environment) {
  std::string text;
  std::size_t at = 0;
  while (at < source.size()) {
    const std::size_t end = source[at] == '%' ? source.find('%', at + 1) : std::string::npos;
    const char* const value =
        end == std::string::npos ? nullptr : environment(source.substr(at + 1, end - at - 1));
    if (value) {
      text += value;
      at = end + 1;
    } else {
      text += source[at++];
    }
  }
  return text;
}

}  // namespace

MemoryRegistry::MemoryRegistry()
    : environment([](const std::string& name) { return std::getenv(name.c_str()); }) {}

bool MemoryRegistry::IsRoot(RegistryHandle key) {
  constexpr RegistryHandle kLastRoot = 0x80000006;
  return key >= kHkeyClassesRoot && key <= kLastRoot;
}

RegistryStatus MemoryRegistry::Locate(RegistryHandle key, Opened* place) const {
  if (IsRoot(key)) {
    *place = {static_cast<std::uint32_t>(key), {}, kRightAllAccess};
    return kRegistrySuccess;
  }
  const auto found = open_.find(key);
  if (found == open_.end()) return kRegistryInvalidHandle;
  *place = found->second;
  return kRegistrySuccess;
}

RegistryStatus MemoryRegistry::LocateBelow(RegistryHandle parent, const std::string& path,
                                           Opened* place) const {
  if (!path.empty() && path.front() == '\\') return kRegistryBadPath;
  const RegistryStatus status = Locate(parent, place);
  if (status != kRegistrySuccess) return status;
  for (std::string& name : KeyNames(path)) {
    if (name.size() > kLongestKeyName) return kRegistryInvalidParameter;
    place->names.push_back(std::move(name));
  }
  return kRegistrySuccess;
}

StoredKey* MemoryRegistry::At(const Opened& place) {
  return FindKeyAt(&tree[place.root], place.names);
}

RegistryStatus MemoryRegistry::Find(RegistryHandle key, std::uint32_t rights, StoredKey** found) {
  Opened place;
  const RegistryStatus status = Locate(key, &place);
  if (status != kRegistrySuccess) return status;
  if ((place.rights & rights) != rights) return kRegistryAccessDenied;
  *found = At(place);
  return *found ? kRegistrySuccess : kRegistryKeyDeleted;
}

RegistryHandle MemoryRegistry::Open(Opened place, std::uint32_t rights) {
  place.rights = rights;
  open_[next_handle_] = std::move(place);
  return next_handle_++;
}

RegistryStatus MemoryRegistry::OpenKey(RegistryHandle parent, const std::string& path,
                                       std::uint32_t rights, RegistryHandle* key) {
  Opened place;
  const RegistryStatus status = LocateBelow(parent, path, &place);
  if (status != kRegistrySuccess) return status;
  if (!At(place)) return kRegistryFileNotFound;
  *key = Open(std::move(place), rights);
  return kRegistrySuccess;
}

RegistryStatus MemoryRegistry::CreateKey(RegistryHandle parent, const std::string& path,
                                         std::uint32_t rights, RegistryHandle* key) {
  StoredKey* found = nullptr;
  RegistryStatus status = Find(parent, 0, &found);
  Opened place;
  if (status == kRegistrySuccess) status = LocateBelow(parent, path, &place);
  if (status != kRegistrySuccess) return status;
  for (const std::string& name : KeyNames(path)) found = &found->MakeKey(name);
  *key = Open(std::move(place), rights);
  return kRegistrySuccess;
}

RegistryStatus MemoryRegistry::DeleteKey(RegistryHandle parent, const std::string& path) {
  Opened place;
  const RegistryStatus status = LocateBelow(parent, path, &place);
  if (status != kRegistrySuccess) return status;
  const StoredKey* const key = At(place);
  if (!key) return kRegistryFileNotFound;
  if (place.names.empty() || !key->keys.empty()) return kRegistryAccessDenied;
  const std::string name = place.names.back();
  place.names.pop_back();
  At(place)->RemoveKey(name);
  return kRegistrySuccess;
}

RegistryStatus MemoryRegistry::DeleteValue(RegistryHandle key, const std::string& name) {
  StoredKey* found = nullptr;
  const RegistryStatus status = Find(key, kRightSetValue, &found);
  if (status != kRegistrySuccess) return status;
  const StoredValue* const value = found->FindValue(name);
  if (!value) return kRegistryFileNotFound;
  found->values.erase(found->values.begin() + (value - found->values.data()));
  return kRegistrySuccess;
}

RegistryStatus MemoryRegistry::QueryValue(RegistryHandle key, const std::string& name,
                                          std::uint32_t* type, std::uint8_t* data,
                                          std::uint32_t* size) {
  StoredKey* found = nullptr;
  const RegistryStatus status = Find(key, kRightQueryValue, &found);
  if (status != kRegistrySuccess) return status;
  const StoredValue* const value = found->FindValue(name);
  if (!value) return kRegistryFileNotFound;
  const std::uint32_t room = *size;
  *type = value->type;
  *size = static_cast<std::uint32_t>(value->data.size());
  if (!data) return kRegistrySuccess;
  if (room < value->data.size()) return kRegistryMoreData;
  std::copy(value->data.begin(), value->data.end(), data);
  return kRegistrySuccess;
}

RegistryStatus MemoryRegistry::SetValue(RegistryHandle key, const std::string& name,
                                        std::uint32_t type, const std::uint8_t* data,
                                        std::uint32_t size) {
  StoredKey* found = nullptr;
  const RegistryStatus status = Find(key, kRightSetValue, &found);
  if (status != kRegistrySuccess) return status;
  StoredValue* value = found->FindValue(name);
  if (!value) value = &found->values.emplace_back(StoredValue{name, 0, ""});
  value->type = type;
  value->data.assign(data, data + size);
  return kRegistrySuccess;
}

RegistryStatus MemoryRegistry::EnumKey(RegistryHandle key, std::uint32_t index, char* buffer,
                                       std::uint32_t length) {
  StoredKey* found = nullptr;
  const RegistryStatus status = Find(key, kRightEnumerateSubKeys, &found);
  if (status != kRegistrySuccess) return status;
  if (index >= found->keys.size()) return kRegistryNoMoreItems;
  const std::string& name = found->keys[index].name;
  if (name.size() >= length) return kRegistryMoreData;
  buffer[name.copy(buffer, name.size())] = '\0';
  return kRegistrySuccess;
}

RegistryStatus MemoryRegistry::EnumValue(RegistryHandle key, std::uint32_t index, char* name,
                                         std::uint32_t* length) {
  StoredKey* found = nullptr;
  const RegistryStatus status = Find(key, kRightQueryValue, &found);
  if (status != kRegistrySuccess) return status;
  if (index >= found->values.size()) return kRegistryNoMoreItems;
  const std::string& value_name = found->values[index].name;
  if (value_name.size() >= *length) return kRegistryMoreData;
  name[value_name.copy(name, value_name.size())] = '\0';
  *length = static_cast<std::uint32_t>(value_name.size());
  return kRegistrySuccess;
}

RegistryStatus MemoryRegistry::LongestValueName(RegistryHandle key, std::uint32_t* length) {
  StoredKey* found = nullptr;
  const RegistryStatus status = Find(key, kRightQueryValue, &found);
  if (status != kRegistrySuccess) return status;
  std::size_t longest = 0;
  for (const StoredValue& value : found->values) longest = std::max(longest, value.name.size());
  *length = static_cast<std::uint32_t>(longest);
  return kRegistrySuccess;
}

RegistryStatus MemoryRegistry::CloseKey(RegistryHandle key) {
  return IsRoot(key) || open_.erase(key) != 0 ? kRegistrySuccess : kRegistryInvalidHandle;
}

std::uint32_t MemoryRegistry::ExpandEnvironment(const std::string& source, char* buffer,
                                                std::uint32_t size) {
  const std::string text = Expanded(source.substr(0, source.find('\0')), environment);
  const auto needed = static_cast<std::uint32_t>(text.size() + 1);
  if (size >= needed) buffer[text.copy(buffer, text.size())] = '\0';
  return needed;
}

}  // namespace scrivo
