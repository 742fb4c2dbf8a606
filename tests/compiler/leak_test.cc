// Long runs of calls leave nothing behind but the keys that the registry class keeps on purpose.

#include <cstdlib>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "compiler/spawn_console_app.h"
#include "platform/registry.h"
#include "platform/temp_files.h"
#include "tests/compiler/leak_count.h"
#include "tests/doubles/real_services.h"
#include "tests/doubles/test_folder.h"

namespace scrivo {
namespace {

constexpr int kCalls = 10'000;
constexpr int kSomeCalls = 1'000;
constexpr long kSlack = 30;  // handles that the system's own libraries open when first used
constexpr const char* kKey = "Software\\Scrivo leak test";

// How many children to start in a row: a few show a leak as well as ten thousand do.
int ChildrenToStart() { return std::getenv("SCRIVO_LONG_TESTS") ? 10'000 : kFewChildren; }

class Leaks : public WithRealServices {
 protected:
  Leaks() {
    TheServices().registry = RegistryIn(InFolder("registry"));
    registry.Init(kHkeyCurrentUser);
    registry.SetValue(kKey, "v", std::string("text"), 1);
  }
  ~Leaks() override { registry.DeleteKey(kKey); }

  // Calls `work` so many times and holds that each call left `handles` handles open and none left
  // memory.
  template <typename Work>
  static void ExpectLeft(long handles, int calls, Work work) {
    work();  // what is made once
    const long handles_before = OpenHandles();
    const long long memory_before = UsedMemory();
    for (int i = 0; i < calls; ++i) work();
    const long handles_left = OpenHandles() - handles_before;
    const long long memory_left = UsedMemory() - memory_before;
    RecordProperty("handles_left", std::to_string(handles_left));
    RecordProperty("bytes_left", std::to_string(memory_left));
    EXPECT_NEAR(handles_left, handles * calls, kSlack);
    EXPECT_LT(memory_left, MemorySlack(calls));
  }

  CRegistry registry;
};

TEST_F(Leaks, TheCountOfHandlesSeesOpenOnes) {
  TheServices().files->Write(InFolder("file"), "x");
  const long before = OpenHandles();
  std::vector<std::unique_ptr<FileReader>> readers;
  for (int i = 0; i < 10; ++i) {
    readers.push_back(TheServices().files->OpenForReading(InFolder("file")));
  }
  EXPECT_EQ(OpenHandles() - before, 10);
}

TEST_F(Leaks, TheMeasureOfMemorySeesALeak) {
  const long long before = UsedMemory();
  const std::vector<char> leak(static_cast<std::size_t>(MemorySlack(1)) * 2, 'x');
  EXPECT_GT(UsedMemory() - before, MemorySlack(1));
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
  ExpectLeft(kHandlesOfAKey, kCalls, [&] { registry.GetValue(kKey, "v", {}); });
}

TEST_F(Leaks, EachQuestionForAValuesTypeLeavesItsKeyOpen) {
  ExpectLeft(kHandlesOfAKey, kSomeCalls, [&] { EXPECT_EQ(registry.ValueType(kKey, "v"), 1u); });
}

TEST_F(Leaks, EachDeletionOfAValueLeavesItsKeyOpen) {
  ExpectLeft(kHandlesOfAKey, kSomeCalls, [&] { EXPECT_FALSE(registry.DeleteValue(kKey, "w")); });
}

TEST_F(Leaks, TemporaryNamesLeaveNothing) {
  const TempFolder names;
  ExpectLeft(0, kCalls, [&] { EXPECT_NE(GetTempFile(names.path(), "Scrivo"), ""); });
  EXPECT_TRUE(TheServices().files->List(names.path()).empty());
}

TEST_F(Leaks, ChildrenLeaveNothing) {
  const std::string command = '"' + TestProgram("test_printer") + '"' + " out x exit 5";
  std::map<std::string, int> ends;  // how many printed what and ended with which status
  std::string failures;             // to start one
  int not_started = 0;
  ErrorHandler().ErrorNumber(0);  // that of the last error, of whatever test it was
  ExpectLeft(0, ChildrenToStart(), [&] {
    std::string printed;
    CSpawnConsoleApp app;
    app.OnProcessOutputs = [&](const std::string& output) { printed += output; };
    const std::int32_t status = app.ExecuteApp(command, folder);
    if (ErrorHandler().ErrorNumber() == CSpawnConsoleApp::kCreateProcessFailed) {
      failures += ErrorHandler().ErrorDescription() + "\n";
      ErrorHandler().ErrorNumber(0);
      ++not_started;
    } else {
      ++ends[printed + " " + std::to_string(status)];
    }
  });
  // The pipe of one that did not start stays open on purpose.
  EXPECT_LE(not_started, ChildrenThatMayNotStart(ChildrenToStart())) << failures;
  EXPECT_EQ(ends, (std::map<std::string, int>{{"x 5", ChildrenToStart() + 1 - not_started}}));
}

}  // namespace
}  // namespace scrivo
