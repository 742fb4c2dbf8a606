#include "tests/compiler/leak_count.h"

#include <malloc.h>

#include <filesystem>
#include <iterator>

#include "tests/doubles/memory_registry.h"

#ifdef __has_feature
#if __has_feature(address_sanitizer)
#define SCRIVO_IS_SANITIZED 1
#include <sanitizer/allocator_interface.h>
#endif
#endif

namespace scrivo {

const long kHandlesOfAKey = 0;  // a key is no more than an entry in a table
const int kFewChildren = 300;

long OpenHandles() {
  const std::filesystem::directory_iterator descriptors("/proc/self/fd");
  return static_cast<long>(std::distance(begin(descriptors), end(descriptors)));
}

long long UsedMemory() {
  // What was allocated and not freed, to the byte.
#if SCRIVO_IS_SANITIZED
  return static_cast<long long>(__sanitizer_get_current_allocated_bytes());
#else
  const struct mallinfo2 heap = mallinfo2();
  return static_cast<long long>(heap.uordblks + heap.hblkhd);
#endif
}

// The registry in memory keeps an entry for each key that is left open.
long long MemorySlack(int calls) { return 64 * 1024 + 300LL * calls; }

int ChildrenThatMayNotStart(int) { return 0; }

std::shared_ptr<RegistryStore> RegistryIn(const std::string&) {
  return std::make_shared<MemoryRegistry>();
}

}  // namespace scrivo
