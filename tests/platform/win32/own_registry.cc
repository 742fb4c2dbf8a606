#include "system/services.h"
#include "tests/platform/registry_stores.h"

namespace scrivo {

std::vector<RegistryStoreKind> OwnRegistryStoreKind() {
  // The ANSI functions turn a path into wide characters in a buffer of 260.
  return {{"System", [] { return CreateSystemServices().registry; }, nullptr, 260}};
}

}  // namespace scrivo
