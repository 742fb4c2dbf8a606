#include "tests/platform/registry_stores.h"

#include "platform/file_registry.h"
#include "platform/memory_registry.h"
#include "tests/doubles/memory_files.h"

namespace scrivo {

namespace {

template <typename Store>
std::size_t OpenKeysOf(RegistryStore& store) {
  return dynamic_cast<Store&>(store).OpenKeys();
}

std::shared_ptr<RegistryStore> MakeMemoryRegistry() { return std::make_shared<MemoryRegistry>(); }

std::shared_ptr<RegistryStore> MakeFileRegistry() {
  return std::make_shared<FileRegistry>(std::make_shared<MemoryFiles>(), "config", "registry.reg");
}

}  // namespace

std::vector<RegistryStoreKind> CountingRegistryStoreKinds() {
  return {{"Memory", MakeMemoryRegistry, OpenKeysOf<MemoryRegistry>},
          {"File", MakeFileRegistry, OpenKeysOf<FileRegistry>}};
}

std::vector<RegistryStoreKind> RegistryStoreKinds() {
  std::vector<RegistryStoreKind> kinds = CountingRegistryStoreKinds();
  for (RegistryStoreKind& own : OwnRegistryStoreKind()) kinds.push_back(std::move(own));
  return kinds;
}

}  // namespace scrivo
