// The program ScrivoHost: a stand-in for the authoring application.

#include <string>
#include <vector>

#include "com/win32/com_ptr.h"
#include "host/host_arguments.h"
#include "host/win32/host_window.h"
#include "host/win32/wide_controls.h"
#include "platform/win32/wide.h"
#include "system/program.h"
#include "system/services.h"
// After windows.h, on which it stands.
#include <ole2.h>

namespace scrivo::host {
namespace {

// Says how to call the program, on the console that it was started from too if there is one.
void TellUsage(const std::string& problem) {
  const std::string text = problem.empty() ? Usage() : problem + "\n\n" + Usage();
  if (AttachConsole(ATTACH_PARENT_PROCESS)) {
    DWORD written = 0;
    const std::string lines = text + "\n";
    WriteFile(GetStdHandle(problem.empty() ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE), lines.data(),
              static_cast<DWORD>(lines.size()), &written, nullptr);
  }
  TellWide(nullptr, text, problem.empty() ? MB_ICONINFORMATION : MB_ICONEXCLAMATION);
}

// The whole path of one relative to the current folder.
std::string FullPath(const std::string& path) {
  wchar_t full[MAX_PATH];
  const DWORD length = GetFullPathNameW(Wide(path).c_str(), MAX_PATH, full, nullptr);
  return length > 0 && length < MAX_PATH ? Narrow(std::wstring_view(full, length)) : path;
}

void RunMessages(HostWindow* window) {
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    if (window->Handle() && window->IsKey(&message)) continue;
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

// Shows the host until it is closed; gives the program's exit status.
int Run(const HostArguments& arguments) {
  const auto world = HostWorld::Make();
  HostWindow window(world);
  if (!arguments.web.empty()) {
    const bool is_address = arguments.web.find("://") != std::string::npos;
    window.OpenWeb(is_address ? arguments.web : FullPath(arguments.web));
    if (arguments.external && !world->session.Active()) return 1;  // the user has been told why
  }
  window.Start(arguments.external);
  RunMessages(&window);
  return 0;
}

}  // namespace
}  // namespace scrivo::host

int main(int argc, char** argv) {
  using namespace scrivo;
  using namespace scrivo::host;
  const HostArguments arguments = ParseArguments(ProgramArguments(argc, argv));
  if (arguments.help || !arguments.problem.empty()) {
    TellUsage(arguments.problem);
    return arguments.help ? 0 : 2;
  }
  if (FAILED(OleInitialize(nullptr)))
    return 1;  // add-ins use the clipboard and the shell's dialogs
  int status = 1;
  try {
    TheServices() = CreateSystemServices();
    status = Run(arguments);
  } catch (const std::exception& exception) {
    TellWide(nullptr, exception.what(), MB_ICONERROR);
  }
  OleUninitialize();
  return status;
}
