#pragma once

#include <string>

#include "system/registry_store.h"

namespace scrivo {

// The machine's registry through the ANSI functions.
class Win32Registry : public RegistryStore {
 public:
  RegistryStatus OpenKey(RegistryHandle parent, const std::string& path, std::uint32_t rights,
                         RegistryHandle* key) override;
  RegistryStatus CreateKey(RegistryHandle parent, const std::string& path, std::uint32_t rights,
                           RegistryHandle* key) override;
  RegistryStatus DeleteKey(RegistryHandle parent, const std::string& path) override;
  RegistryStatus DeleteValue(RegistryHandle key, const std::string& name) override;
  RegistryStatus QueryValue(RegistryHandle key, const std::string& name, std::uint32_t* type,
                            std::uint8_t* data, std::uint32_t* size) override;
  RegistryStatus SetValue(RegistryHandle key, const std::string& name, std::uint32_t type,
                          const std::uint8_t* data, std::uint32_t size) override;
  RegistryStatus EnumKey(RegistryHandle key, std::uint32_t index, char* buffer,
                         std::uint32_t length) override;
  RegistryStatus EnumValue(RegistryHandle key, std::uint32_t index, char* name,
                           std::uint32_t* length) override;
  RegistryStatus LongestValueName(RegistryHandle key, std::uint32_t* length) override;
  RegistryStatus CloseKey(RegistryHandle key) override;
  std::uint32_t ExpandEnvironment(const std::string& source, char* buffer,
                                  std::uint32_t size) override;
};

}  // namespace scrivo
