#include "platform/file_registry.h"
#include "platform/posix/files.h"
#include "tests/doubles/temp_folder.h"
#include "tests/platform/registry_stores.h"

namespace scrivo {
namespace {

// A registry in a file on the real disk, whose folder goes with it.
class RegistryOnDisk : public TempFolder, public FileRegistry {
 public:
  RegistryOnDisk()
      : FileRegistry(std::make_shared<PosixFiles>(), *this / "made/below", "registry.reg") {}
};

}  // namespace

std::vector<RegistryStoreKind> OwnRegistryStoreKind() {
  return {{"FileOnDisk", [] { return std::make_shared<RegistryOnDisk>(); }, nullptr}};
}

}  // namespace scrivo
