#pragma once

#include <memory>
#include <string>

#include "platform/memory_registry.h"
#include "system/files.h"

namespace scrivo {

// A registry kept in a text file (see registry_text.h), for systems that have none of their own.
// The file is read again before each operation, so that what others wrote is seen, and written
// after each change, whole under a temporary name and then put in place; folder and file are made
// by the first change. Key names must not hold CR or LF (kRegistryInvalidParameter). A change that
// cannot be written is kRegistryAccessDenied or kRegistryCannotWrite and has no effect.
//
// A file that cannot be read, or is damaged, is never overwritten: each operation then raises an
// Error that names the file and, for a damaged one, the line.
class FileRegistry : public RegistryStore {
 public:
  FileRegistry(std::shared_ptr<Files> files, const std::string& folder,
               const std::string& file_name);

  // How many keys are open.
  std::size_t OpenKeys() const { return memory_.OpenKeys(); }

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

 private:
  void Load();
  // Writes the file when the registry's text is not what was read.
  void Save();
  void MakeFolder(const std::string& folder);
  template <typename Operation>
  RegistryStatus Change(Operation operation);

  std::shared_ptr<Files> files_;
  std::string folder_;
  std::string path_;
  std::string text_;  // what the file held when it was last read; "" for a missing file
  MemoryRegistry memory_;
};

}  // namespace scrivo
