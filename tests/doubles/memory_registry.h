#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "system/registry_store.h"
#include "tests/doubles/registry_tree.h"

namespace scrivo {

// A registry in memory, with all predefined roots, empty at first. It holds type codes and bytes
// as they were given and checks the rights that keys were opened with. Names compare without
// regard to the case of the letters A to Z.
class MemoryRegistry : public RegistryStore {
 public:
  // What it holds; may be replaced at any time. A handle whose key is gone then answers
  // kRegistryKeyDeleted.
  RegistryTree tree;
  // Tells an environment variable, null for one that is not set; the process's own by default.
  std::function<const char*(const std::string& name)> environment;

  MemoryRegistry();

  // How many keys are open.
  std::size_t OpenKeys() const { return open_.size(); }

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
  // Where an open key is, and what it may be used for.
  struct Opened {
    std::uint32_t root;
    std::vector<std::string> names;
    std::uint32_t rights;
  };

  static bool IsRoot(RegistryHandle key);
  // The place of a predefined root or open key.
  RegistryStatus Locate(RegistryHandle key, Opened* place) const;
  // The place of `path` below `parent`.
  RegistryStatus LocateBelow(RegistryHandle parent, const std::string& path, Opened* place) const;
  // The key itself, when it was opened with all of `rights`.
  RegistryStatus Find(RegistryHandle key, std::uint32_t rights, StoredKey** found);
  StoredKey* At(const Opened& place);
  RegistryHandle Open(Opened place, std::uint32_t rights);

  std::map<RegistryHandle, Opened> open_;
  RegistryHandle next_handle_ = 1;
};

}  // namespace scrivo
