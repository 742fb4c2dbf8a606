#include "tests/platform/registry_stores.h"

namespace scrivo {

std::vector<RegistryStoreKind> OwnRegistryStoreKind() { return {}; }

}  // namespace scrivo
