// Long runs of calls leave nothing behind but the keys that the registry class keeps on purpose.

#include <algorithm>
#include <cstdlib>
#include <string>

#include "compiler/spawn_console_app.h"
#include "platform/registry.h"
#include "platform/temp_files.h"
#include "platform/win32/windows.h"
#include "tests/doubles/real_services.h"
#include "tests/doubles/test_folder.h"

// After the system's header, which it needs.
#include <psapi.h>

namespace scrivo {
namespace {

constexpr int kCalls = 10'000;
constexpr long kSlack = 30;  ///< handles that the system's own libraries open when first used
constexpr long long kMemorySlack = 8 << 20;
constexpr const char* kKey = "Software\\Scrivo leak test";

/// Ten thousand children; where starting one is slow, as it is on a Windows that is emulated, only
/// when SCRIVO_LONG_TESTS is set.
int SpawnCalls() { return std::getenv("SCRIVO_LONG_TESTS") ? kCalls : 100; }

class Leaks : public WithRealServices {
 protected:
  Leaks() {
    registry.Init(kHkeyCurrentUser);
    registry.SetValue(kKey, "v", std::string("text"), 1);
  }
  ~Leaks() override { registry.DeleteKey(kKey); }

  static long OpenHandles() {
    DWORD count = 0;
    GetProcessHandleCount(GetCurrentProcess(), &count);
    return count != 0 ? static_cast<long>(count) : FoundHandles();
  }
  /// The handles that answer, for an emulated Windows that does not count them.
  static long FoundHandles() {
    constexpr std::uintptr_t kLast = 4 * 12'000;
    long found = 0;
    for (std::uintptr_t value = 4; value <= kLast; value += 4) {
      DWORD flags = 0;
      found += GetHandleInformation(reinterpret_cast<HANDLE>(value), &flags) != FALSE;
    }
    return found;
  }
  static long long UsedMemory() {
    PROCESS_MEMORY_COUNTERS_EX counters{};
    GetProcessMemoryInfo(GetCurrentProcess(), reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&counters),
                         sizeof counters);
    return static_cast<long long>(counters.PrivateUsage);
  }

  /// Calls `work` so many times and holds that each call left `handles` handles open and none left
  /// memory.
  template <typename Work>
  static void ExpectLeft(long handles, int calls, Work work) {
    work();  // what is made once
    const long handles_before = OpenHandles();
    const long long memory_before = UsedMemory();
    for (int i = 0; i < calls; ++i) work();
    EXPECT_NEAR(OpenHandles() - handles_before, handles * calls, kSlack);
    EXPECT_LT(UsedMemory() - memory_before, kMemorySlack);
  }

  CRegistry registry;
};

TEST_F(Leaks, TheCountOfHandlesSeesAnOpenOne) {
  const long before = OpenHandles();
  HANDLE events[10];
  for (HANDLE& event : events) event = CreateEventA(nullptr, FALSE, FALSE, nullptr);
  EXPECT_EQ(OpenHandles() - before, 10);
  for (HANDLE event : events) CloseHandle(event);
}

TEST_F(Leaks, TheRegistryClosesTheKeysOfItsOtherMembers) {
  ExpectLeft(0, kCalls, [&] {
    std::vector<std::string> names;
    EXPECT_TRUE(registry.KeyExists(kKey));
    EXPECT_EQ(registry.GetAllSubKeys(kKey, &names), 0);
    EXPECT_EQ(registry.GetAllValueNames(kKey, &names), 1);
    EXPECT_TRUE(registry.SetValue(kKey, "v", std::int32_t{1}, 4));
  });
}

TEST_F(Leaks, EachReadOfAValueLeavesItsKeyOpen) {
  ExpectLeft(1, kCalls, [&] { registry.GetValue(kKey, "v", {}); });
}

TEST_F(Leaks, TemporaryNamesLeaveNothing) {
  ExpectLeft(0, kCalls, [&] { EXPECT_NE(GetTempFile(folder, "Scrivo"), ""); });
  EXPECT_TRUE(TheServices().files->List(folder).empty());
}

TEST_F(Leaks, ChildrenLeaveNothing) {
  const std::string command = '"' + TestProgram("test_printer") + '"' + " exit 5";
  ExpectLeft(0, SpawnCalls(),
             [&] { EXPECT_EQ(CSpawnConsoleApp().ExecuteApp(command, folder), 5); });
}

}  // namespace
}  // namespace scrivo
