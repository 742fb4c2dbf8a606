#include "host/settings.h"

#include <algorithm>

#include "errors/frame.h"
#include "platform/registry.h"
#include "platform/settings.h"
#include "text/ascii_text.h"

namespace scrivo::host {
namespace {

constexpr char kAddinsKey[] = "Software\\Microsoft\\Office\\SharePoint Designer\\Addins";

std::string TextValue(CRegistry& registry, const std::string& key, const std::string& name,
                      const std::string& default_text) {
  const RegistryValue value = registry.GetValue(key, name, default_text);
  const auto* text = std::get_if<std::string>(&value);
  return text && !text->empty() ? *text : default_text;
}

std::int32_t NumberValue(CRegistry& registry, const std::string& key, const std::string& name) {
  const RegistryValue value = registry.GetValue(key, name, std::int32_t{0});
  const auto* number = std::get_if<std::int32_t>(&value);
  return number ? *number : 0;
}

void AddEntriesOf(RegistryHandle root, std::vector<AddinEntry>* entries) {
  CRegistry registry;
  registry.Init(static_cast<std::uint32_t>(root));
  std::vector<std::string> names;
  registry.GetAllSubKeys(kAddinsKey, &names);
  for (const std::string& name : names) {
    const bool is_known = std::any_of(
        entries->begin(), entries->end(),
        [&](const AddinEntry& entry) { return EqualsIgnoringCase(entry.prog_id, name); });
    if (is_known) continue;
    const std::string key = std::string(kAddinsKey) + "\\" + name;
    AddinEntry entry;
    entry.prog_id = name;
    entry.name = TextValue(registry, key, "FriendlyName", name);
    entry.description = TextValue(registry, key, "Description", entry.name);
    entry.load_behavior = NumberValue(registry, key, "LoadBehavior");
    entries->push_back(std::move(entry));
  }
}

constexpr char kApplication[] = "ScrivoHost", kSection[] = "Recent webs";

std::string KeyOf(std::size_t index) { return "Web" + std::to_string(index + 1); }

void Write(const std::vector<std::string>& paths) {
  IgnoringErrors([&] {
    for (std::size_t i = 0; i < RecentWebs::kMost; ++i) {
      SaveSetting(kApplication, kSection, KeyOf(i), i < paths.size() ? paths[i] : "");
    }
  });
}

std::vector<std::string> Without(std::vector<std::string> paths, const std::string& path) {
  std::erase_if(paths, [&](const std::string& other) { return EqualsIgnoringCase(other, path); });
  return paths;
}

}  // namespace

std::vector<AddinEntry> ReadAddinEntries() {
  std::vector<AddinEntry> entries;
  AddEntriesOf(kHkeyCurrentUser, &entries);
  AddEntriesOf(kHkeyLocalMachine, &entries);
  return entries;
}

std::vector<std::string> RecentWebs::Read() {
  std::vector<std::string> paths;
  IgnoringErrors([&] {
    for (std::size_t i = 0; i < kMost; ++i) {
      std::string path = GetSetting(kApplication, kSection, KeyOf(i));
      if (!path.empty()) paths.push_back(std::move(path));
    }
  });
  return paths;
}

void RecentWebs::Remember(const std::string& path) {
  std::vector<std::string> paths = Without(Read(), path);
  paths.insert(paths.begin(), path);
  if (paths.size() > kMost) paths.resize(kMost);
  Write(paths);
}

void RecentWebs::Forget(const std::string& path) { Write(Without(Read(), path)); }

std::string ShortenedPath(const std::string& path, std::size_t length) {
  if (path.size() <= length) return path;
  const std::size_t head = path.find_first_of("\\/", 1) + 1;
  std::size_t tail = path.size() > length - head - 3 ? path.size() - (length - head - 3) : head;
  const std::size_t name = path.find_first_of("\\/", tail);
  if (name != std::string::npos) tail = name;
  return path.substr(0, head) + "..." + path.substr(tail);
}

}  // namespace scrivo::host
