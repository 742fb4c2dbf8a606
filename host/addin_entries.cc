#include "host/addin_entries.h"

#include <algorithm>

#include "platform/registry.h"
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

}  // namespace

std::vector<AddinEntry> ReadAddinEntries() {
  std::vector<AddinEntry> entries;
  AddEntriesOf(kHkeyCurrentUser, &entries);
  AddEntriesOf(kHkeyLocalMachine, &entries);
  return entries;
}

}  // namespace scrivo::host
