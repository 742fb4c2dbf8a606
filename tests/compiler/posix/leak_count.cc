#include "tests/compiler/leak_count.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "platform/file_registry.h"
#include "system/services.h"

namespace scrivo {
namespace {

constexpr bool IsSanitized() {
#ifdef __has_feature
#if __has_feature(address_sanitizer)
  return true;
#endif
#endif
  return false;
}

}  // namespace

const long kHandlesOfAKey = 0;  // a key is no more than an entry in a table

long OpenHandles() {
  const std::filesystem::directory_iterator descriptors("/proc/self/fd");
  return static_cast<long>(std::distance(begin(descriptors), end(descriptors)));
}

long long UsedMemory() {
  long long whole = 0;
  long long resident = 0;
  std::ifstream("/proc/self/statm") >> whole >> resident;
  return resident * sysconf(_SC_PAGESIZE);
}

long long MemorySlack() {
  // AddressSanitizer keeps freed memory for a while, up to 256 MiB.
  return (IsSanitized() ? 512LL : 8LL) << 20;
}

int ChildrenToStart() { return IsSanitized() ? 500 : 10'000; }

int ChildrenThatMayNotStart() { return 0; }

std::shared_ptr<RegistryStore> RegistryIn(const std::string& folder) {
  return std::make_shared<FileRegistry>(CreateSystemServices().files, folder, "registry.reg");
}

}  // namespace scrivo
