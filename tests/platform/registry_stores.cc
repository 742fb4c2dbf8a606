#include "tests/platform/registry_stores.h"

#include "tests/doubles/memory_registry.h"

namespace scrivo {

namespace {

template <typename Store>
std::size_t OpenKeysOf(RegistryStore& store) {
  return dynamic_cast<Store&>(store).OpenKeys();
}

std::shared_ptr<RegistryStore> MakeMemoryRegistry() { return std::make_shared<MemoryRegistry>(); }

}  // namespace

std::vector<RegistryStoreKind> CountingRegistryStoreKinds() {
  return {{"Memory", MakeMemoryRegistry, OpenKeysOf<MemoryRegistry>}};
}

std::vector<RegistryStoreKind> RegistryStoreKinds() {
  std::vector<RegistryStoreKind> kinds = CountingRegistryStoreKinds();
  for (RegistryStoreKind& own : OwnRegistryStoreKind()) kinds.push_back(std::move(own));
  return kinds;
}

}  // namespace scrivo
