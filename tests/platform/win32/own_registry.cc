#include "platform/seams/services.h"
#include "tests/platform/registry_stores.h"

namespace scrivo {

std::vector<RegistryStoreKind> OwnRegistryStoreKind() {
  return {{"System", [] { return CreateSystemServices().registry; }, nullptr}};
}

}  // namespace scrivo
