#include "tests/compiler/leak_count.h"

#include <cstdlib>

#include "platform/seams/services.h"
#include "platform/win32/windows.h"

// After the system's header, which it needs.
#include <psapi.h>

namespace scrivo {
namespace {

/// The handles that answer, for an emulated Windows that does not count them.
long FoundHandles() {
  constexpr std::uintptr_t kLast = 4 * 15'000;
  long found = 0;
  for (std::uintptr_t value = 4; value <= kLast; value += 4) {
    DWORD flags = 0;
    found += GetHandleInformation(reinterpret_cast<HANDLE>(value), &flags) != FALSE;
  }
  return found;
}

}  // namespace

const long kHandlesOfAKey = 1;

long OpenHandles() {
  DWORD count = 0;
  GetProcessHandleCount(GetCurrentProcess(), &count);
  return count != 0 ? static_cast<long>(count) : FoundHandles();
}

long long UsedMemory() {
  PROCESS_MEMORY_COUNTERS_EX counters{};
  GetProcessMemoryInfo(GetCurrentProcess(), reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&counters),
                       sizeof counters);
  return static_cast<long long>(counters.PrivateUsage);
}

long long MemorySlack() { return 8 << 20; }

int ChildrenToStart() {
  // A Windows that is emulated starts them slowly.
  return std::getenv("SCRIVO_LONG_TESTS") ? 10'000 : 100;
}

std::shared_ptr<RegistryStore> RegistryIn(const std::string&) {
  return CreateSystemServices().registry;
}

}  // namespace scrivo
