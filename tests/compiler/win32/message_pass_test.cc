// The message loop between two pieces of a child's output.

#include <string>

#include "compiler/spawn_console_app.h"
#include "platform/win32/windows.h"
#include "tests/doubles/real_services.h"
#include "tests/doubles/test_folder.h"

namespace scrivo {
namespace {

int handled = 0;

void CALLBACK OnTimerMessage(HWND, UINT, UINT_PTR, DWORD) { ++handled; }

TEST_F(WithRealServices, WindowMessagesAreHandledAfterEachPieceOfOutput) {
  handled = 0;
  std::vector<int> handled_before;
  CSpawnConsoleApp app;
  app.OnProcessOutputs = [&](const std::string&) {
    handled_before.push_back(handled);
    PostThreadMessageA(GetCurrentThreadId(), WM_TIMER, 0,
                       reinterpret_cast<LPARAM>(&OnTimerMessage));
  };
  app.ExecuteApp('"' + TestProgram("test_printer") + '"' + " bytes 33", folder);
  EXPECT_EQ(handled_before, (std::vector<int>{0, 1, 2, 3}));
  EXPECT_EQ(handled, 4);
}

}  // namespace
}  // namespace scrivo
