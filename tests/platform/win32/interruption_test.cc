// Each test runs in a child of its own, since an interruption cannot be taken back.

#include "platform/win32/interruption.h"

#include <gtest/gtest.h>

#include <functional>

#include "tests/doubles/real_services.h"
#include "tests/doubles/test_folder.h"
#include "tests/platform/win32/eventually.h"

namespace scrivo {
namespace {

class InterruptionTest : public WithRealServices {
 protected:
  static bool IsInterrupted(const std::function<void()>& work) {
    try {
      work();
      return false;
    } catch (const Error& error) {
      return error.number == kUserInterrupt && error.description == "Interrupted";
    }
  }

  // Ctrl-C on a console of this process's own.
  static void PressCtrlC() {
    FreeConsole();
    AllocConsole();
    CatchInterruptions();
    if (!GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0)) ExitProcess(3);
    // It arrives in another thread.
    if (!Eventually([] { return Interrupted(); })) ExitProcess(4);
  }

  // Holds that `work` says yes in a child process.
  static void ExpectInAChild(const std::function<bool()>& work) {
    EXPECT_EXIT(ExitProcess(work() ? 0 : 1), testing::ExitedWithCode(0), "");
  }

  Files& files = *TheServices().files;
};

// Calls the handler as the system does, in a thread of its own.
DWORD WINAPI HandleEvent(void* event) {
  return static_cast<DWORD>(OnConsoleEvent(*static_cast<const DWORD*>(event)));
}

TEST_F(InterruptionTest, IsEveryEventOfTheConsole) {
  for (DWORD event : {DWORD{CTRL_C_EVENT}, DWORD{CTRL_BREAK_EVENT}}) {
    ExpectInAChild([&event] {
      const HANDLE handler = CreateThread(nullptr, 0, HandleEvent, &event, 0, nullptr);
      DWORD handled = FALSE;
      return handler != nullptr && WaitForSingleObject(handler, INFINITE) == WAIT_OBJECT_0 &&
             GetExitCodeThread(handler, &handled) && handled == TRUE && Interrupted();
    });
  }
}

// The system ends the program as soon as the handler returns, before the program has cleared up.
TEST_F(InterruptionTest, KeepsTheHandlerOfAClosingConsoleFromReturning) {
  for (DWORD event :
       {DWORD{CTRL_CLOSE_EVENT}, DWORD{CTRL_LOGOFF_EVENT}, DWORD{CTRL_SHUTDOWN_EVENT}}) {
    ExpectInAChild([&] {
      const HANDLE handler = CreateThread(nullptr, 0, HandleEvent, &event, 0, nullptr);
      if (handler == nullptr || !Eventually([] { return Interrupted(); })) return false;
      // Other work, in which a handler that returns would have done so.
      for (int i = 0; i < 100; ++i) {
        OnConsoleEvent(CTRL_C_EVENT);
        files.Append(InFolder("log"), "x");
      }
      return WaitForSingleObject(handler, 0) == WAIT_TIMEOUT;
    });
  }
}

TEST_F(InterruptionTest, StopsReadingAndBeginningButNotPuttingInOrder) {
  ExpectInAChild([&] {
    files.Write(InFolder("a"), "x");
    files.Write(InFolder("b"), "x");
    PressCtrlC();
    if (!IsInterrupted([&] { files.OpenForReading(InFolder("a")); })) return false;
    if (!IsInterrupted([&] { files.List(folder); })) return false;
    if (!IsInterrupted([&] { files.Write(InFolder("c"), "x"); })) return false;
    if (!IsInterrupted([&] { files.MakeFolder(InFolder("d")); })) return false;
    if (!files.MakeUniqueFile(folder, "x").empty()) return false;
    files.Append(InFolder("log"), "x");
    files.Remove(InFolder("b"), false);
    return files.FileExists(InFolder("log")) && !files.FileExists(InFolder("b")) &&
           !files.FileExists(InFolder("c"));
  });
}

TEST_F(InterruptionTest, EndsAChildThatDoesNotEndByItselfAndLetsNoOtherStart) {
  ExpectInAChild([&] {
    Processes& processes = *TheServices().processes;
    files.Write(InFolder("alive"), "");
    StartRequest request;
    request.command_line = '"' + TestProgram("test_printer") + '"' + " live";
    request.folder = folder;
    request.creation_flags = DETACHED_PROCESS;  // out of reach of the console's Ctrl-C
    StartedProcess child;
    if (!processes.Start(request, &child)) return false;
    if (processes.ExitCode(child.process) != kStillActive) return false;
    PressCtrlC();
    processes.WaitForEnd(child.process);
    if (processes.ExitCode(child.process) != 1) return false;
    return !processes.Start(request, &child) &&
           processes.LastError() == ERROR_OPERATION_ABORTED + 0u;
  });
}

TEST_F(InterruptionTest, EndsAChildThatWasStartedJustBefore) {
  ExpectInAChild([&] {
    files.Write(InFolder("alive"), "");
    STARTUPINFOA start_up{};
    start_up.cb = sizeof start_up;
    PROCESS_INFORMATION child{};
    std::string command = '"' + TestProgram("test_printer") + '"' + " live";
    if (!CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, DETACHED_PROCESS, nullptr,
                        folder.c_str(), &start_up, &child)) {
      return false;
    }
    PressCtrlC();
    EndWhenInterrupted(child.hProcess);
    WaitForSingleObject(child.hProcess, INFINITE);
    DWORD code = 0;
    GetExitCodeProcess(child.hProcess, &code);
    return code == 1;
  });
}

}  // namespace
}  // namespace scrivo
