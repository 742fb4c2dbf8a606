#include "tests/compiler/leak_count.h"

#include "platform/win32/windows.h"
#include "system/services.h"

namespace scrivo {
namespace {

// The handles that answer, for an emulated Windows that does not count them.
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
const int kFewChildren = 100;  // an emulated Windows starts them slowly

long OpenHandles() {
  DWORD count = 0;
  GetProcessHandleCount(GetCurrentProcess(), &count);
  return count != 0 ? static_cast<long>(count) : FoundHandles();
}

long long UsedMemory() {
  long long used = 0;
  MEMORY_BASIC_INFORMATION region{};
  for (const char* at = nullptr; VirtualQuery(at, &region, sizeof region) != 0;
       at = static_cast<const char*>(region.BaseAddress) + region.RegionSize) {
    if (region.State == MEM_COMMIT && region.Type == MEM_PRIVATE) {
      used += static_cast<long long>(region.RegionSize);
    }
  }
  return used;
}

long long MemorySlack(int) { return 8 << 20; }  // the system counts whole regions

int ChildrenThatMayNotStart(int children) {
  const bool is_emulated =
      GetProcAddress(GetModuleHandleA("ntdll.dll"), "wine_get_version") != nullptr;
  return is_emulated ? 1 + children / 1000 : 0;
}

std::shared_ptr<RegistryStore> RegistryIn(const std::string&) {
  return CreateSystemServices().registry;
}

}  // namespace scrivo
