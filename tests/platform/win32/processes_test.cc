// Children of the system itself.

#include <string>

#include "platform/win32/windows.h"
#include "tests/doubles/real_services.h"
#include "tests/doubles/test_folder.h"

namespace scrivo {
namespace {

class Win32ProcessesTest : public WithRealServices {
 protected:
  // A child that lives until it is ended, or the test's folder is gone.
  StartedProcess StartLiving() {
    TheServices().files->Write(InFolder("alive"), "");
    StartRequest request;
    request.command_line = '"' + TestProgram("test_printer") + '"' + " live";
    request.creation_flags = kNormalPriorityClass;
    request.folder = folder;
    StartedProcess child;
    EXPECT_TRUE(processes.Start(request, &child)) << processes.LastError();
    return child;
  }

  Processes& processes = *TheServices().processes;
};

bool IsInheritable(SystemHandle handle) {
  DWORD flags = 0;
  return GetHandleInformation(reinterpret_cast<HANDLE>(handle), &flags) != FALSE &&
         (flags & HANDLE_FLAG_INHERIT) != 0;
}

TEST_F(Win32ProcessesTest, ChildrenMayInheritAPipeUntilItIsClosed) {
  SystemHandle read_end = 0, write_end = 0;
  ASSERT_TRUE(processes.OpenPipe(&read_end, &write_end));
  for (const SystemHandle end : {read_end, write_end}) {
    EXPECT_TRUE(IsInheritable(end));
    processes.Close(end);
    EXPECT_FALSE(IsInheritable(end));
  }
}

TEST_F(Win32ProcessesTest, EndingAChildReturnsWhenItHasEnded) {
  const StartedProcess child = StartLiving();
  EXPECT_EQ(processes.ExitCode(child.process), 259u);
  processes.End(child.process);
  EXPECT_EQ(processes.ExitCode(child.process), 1u);
  EXPECT_TRUE(TheServices().files->FileExists(InFolder("alive")));
  processes.Close(child.thread);
  processes.Close(child.process);
}

TEST_F(Win32ProcessesTest, EndingAChildThatHasEndedLeavesItsExitCode) {
  const StartedProcess child = StartLiving();
  TheServices().files->Remove(InFolder("alive"), false);
  processes.WaitForEnd(child.process);
  processes.End(child.process);
  EXPECT_EQ(processes.ExitCode(child.process), 0u);
  processes.Close(child.thread);
  processes.Close(child.process);
}

TEST_F(Win32ProcessesTest, AFailedCallLeavesTheSystemsCode) {
  StartRequest request;
  request.command_line = '"' + InFolder("none.exe") + '"';
  StartedProcess child;
  EXPECT_FALSE(processes.Start(request, &child));
  EXPECT_EQ(processes.LastError(), 2u);
  processes.Close(0);
  EXPECT_EQ(processes.LastError(), 6u);
}

}  // namespace
}  // namespace scrivo
