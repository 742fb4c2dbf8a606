#include "platform/settings.h"

#include <cstdint>
#include <vector>

#include "platform/paths.h"
#include "system/error.h"
#include "system/services.h"
#include "system/system_services.h"

namespace scrivo {
namespace {

// `name` as one name of a key path.
std::string AsKeyName(const std::string& name) {
  std::string key_name;
  for (const char character : name) {
    if (character == '\\') {
      key_name += "%5C";
    } else {
      key_name += character;
    }
  }
  return key_name;
}

std::string SectionPath(const std::string& application, const std::string& section,
                        const std::string& key) {
  if (application.empty() || section.empty() || key.empty()) {
    throw Error(kInvalidProcedureCall, "Settings",
                "Invalid procedure call or argument: a setting needs application, section and key");
  }
  return "Software\\VB and VBA Program Settings\\" + AsKeyName(application) + "\\" +
         ToRegistry(AsKeyName(section));
}

std::string SettingOf(std::uint32_t type, const std::vector<std::uint8_t>& data,
                      const std::string& default_value) {
  if (type == kRegSz || type == kRegExpandSz) {
    const std::string text(data.begin(), data.end());
    return FromRegistry(text.substr(0, text.find('\0')));
  }
  if (type == kRegDword && data.size() == 4) {
    const std::uint32_t number =
        data[0] | data[1] << 8 | data[2] << 16 | static_cast<std::uint32_t>(data[3]) << 24;
    return std::to_string(static_cast<std::int32_t>(number));
  }
  return default_value;
}

}  // namespace

std::string GetSetting(const std::string& application, const std::string& section,
                       const std::string& key, const std::string& default_value) {
  RegistryStore& store = *TheServices().registry;
  const std::string path = SectionPath(application, section, key);
  RegistryHandle opened = 0;
  if (store.OpenKey(kHkeyCurrentUser, path, kRightQueryValue, &opened) != kRegistrySuccess) {
    return default_value;
  }
  std::uint32_t type = kRegNone;
  std::uint32_t size = 0;
  std::vector<std::uint8_t> data;
  RegistryStatus status = store.QueryValue(opened, key, &type, nullptr, &size);
  if (status == kRegistrySuccess) {
    data.resize(size + std::size_t{1});  // never empty, so that its address is never null
    status = store.QueryValue(opened, key, &type, data.data(), &size);
    data.resize(size);
  }
  store.CloseKey(opened);
  return status == kRegistrySuccess ? SettingOf(type, data, default_value) : default_value;
}

void SaveSetting(const std::string& application, const std::string& section, const std::string& key,
                 const std::string& value) {
  RegistryStore& store = *TheServices().registry;
  const std::string path = SectionPath(application, section, key);
  RegistryHandle opened = 0;
  RegistryStatus status = store.CreateKey(kHkeyCurrentUser, path, kRightSetValue, &opened);
  if (status == kRegistrySuccess) {
    const std::string text = ToRegistry(value);
    // Always plain text: a "%" in a page's address must not make it an environment reference.
    status =
        store.SetValue(opened, key, kRegSz, reinterpret_cast<const std::uint8_t*>(text.c_str()),
                       static_cast<std::uint32_t>(text.size() + 1));
    store.CloseKey(opened);
  }
  if (status != kRegistrySuccess) {
    throw Error(kPathFileAccessError, "Settings",
                "Cannot save the setting \"" + key + "\" in HKEY_CURRENT_USER\\" + FromAnsi(path) +
                    " (system error " + std::to_string(status) + ")");
  }
}

}  // namespace scrivo
