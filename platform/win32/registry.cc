#include "platform/win32/services.h"
#include "platform/win32/windows.h"

namespace scrivo {
namespace {

// The predefined roots are 32-bit numbers that 64-bit programs extend with their sign; handles of
// opened keys are small and come through unchanged.
HKEY KeyOf(RegistryHandle handle) {
  const auto number = static_cast<LONG>(static_cast<std::uint32_t>(handle));
  const bool is_root = number < 0 && handle <= 0xFFFFFFFF;
  return reinterpret_cast<HKEY>(is_root ? static_cast<LONG_PTR>(number)
                                        : static_cast<LONG_PTR>(handle));
}

RegistryHandle RegistryHandleOf(HKEY key) { return reinterpret_cast<RegistryHandle>(key); }

}  // namespace

RegistryStatus Win32Registry::OpenKey(RegistryHandle parent, const std::string& path,
                                      std::uint32_t rights, RegistryHandle* key) {
  HKEY opened = nullptr;
  const LONG status = RegOpenKeyExA(KeyOf(parent), path.c_str(), 0, rights, &opened);
  if (status == ERROR_SUCCESS) *key = RegistryHandleOf(opened);
  return status;
}

RegistryStatus Win32Registry::CreateKey(RegistryHandle parent, const std::string& path,
                                        std::uint32_t rights, RegistryHandle* key) {
  HKEY opened = nullptr;
  const LONG status = RegCreateKeyExA(KeyOf(parent), path.c_str(), 0, nullptr,
                                      REG_OPTION_NON_VOLATILE, rights, nullptr, &opened, nullptr);
  if (status == ERROR_SUCCESS) *key = RegistryHandleOf(opened);
  return status;
}

RegistryStatus Win32Registry::DeleteKey(RegistryHandle parent, const std::string& path) {
  return RegDeleteKeyA(KeyOf(parent), path.c_str());
}

RegistryStatus Win32Registry::DeleteValue(RegistryHandle key, const std::string& name) {
  return RegDeleteValueA(KeyOf(key), name.c_str());
}

RegistryStatus Win32Registry::QueryValue(RegistryHandle key, const std::string& name,
                                         std::uint32_t* type, std::uint8_t* data,
                                         std::uint32_t* size) {
  DWORD stored_type = 0;
  DWORD byte_count = *size;
  const LONG status =
      RegQueryValueExA(KeyOf(key), name.c_str(), nullptr, &stored_type, data, &byte_count);
  *type = stored_type;
  *size = byte_count;
  return status;
}

RegistryStatus Win32Registry::SetValue(RegistryHandle key, const std::string& name,
                                       std::uint32_t type, const std::uint8_t* data,
                                       std::uint32_t size) {
  return RegSetValueExA(KeyOf(key), name.c_str(), 0, type, data, size);
}

RegistryStatus Win32Registry::EnumKey(RegistryHandle key, std::uint32_t index, char* buffer,
                                      std::uint32_t length) {
  return RegEnumKeyA(KeyOf(key), index, buffer, length);
}

RegistryStatus Win32Registry::EnumValue(RegistryHandle key, std::uint32_t index, char* name,
                                        std::uint32_t* length) {
  DWORD characters = *length;
  const LONG status =
      RegEnumValueA(KeyOf(key), index, name, &characters, nullptr, nullptr, nullptr, nullptr);
  *length = characters;
  return status;
}

RegistryStatus Win32Registry::LongestValueName(RegistryHandle key, std::uint32_t* length) {
  DWORD longest = 0;
  const LONG status = RegQueryInfoKeyA(KeyOf(key), nullptr, nullptr, nullptr, nullptr, nullptr,
                                       nullptr, nullptr, &longest, nullptr, nullptr, nullptr);
  if (status == ERROR_SUCCESS) *length = longest;
  return status;
}

RegistryStatus Win32Registry::CloseKey(RegistryHandle key) { return RegCloseKey(KeyOf(key)); }

std::uint32_t Win32Registry::ExpandEnvironment(const std::string& source, char* buffer,
                                               std::uint32_t size) {
  return ExpandEnvironmentStringsA(source.c_str(), buffer, size);
}

}  // namespace scrivo
