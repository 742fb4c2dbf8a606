#include "system/program.h"

#include "platform/win32/shell_api.h"
#include "platform/win32/wide.h"
#include "platform/win32/windows.h"

namespace scrivo {
namespace {

HANDLE Handle(StandardStream stream) {
  return GetStdHandle(stream == StandardStream::kOutput ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE);
}

}  // namespace

bool IsTerminal(StandardStream stream) {
  DWORD mode = 0;
  return GetConsoleMode(Handle(stream), &mode) != 0;
}

int TerminalColumns(StandardStream stream) {
  CONSOLE_SCREEN_BUFFER_INFO info{};
  if (!GetConsoleScreenBufferInfo(Handle(stream), &info)) return 80;
  return info.srWindow.Right - info.srWindow.Left + 1;
}

int TerminalCodePage() {
  // A console shows text in the OEM code page until it is told otherwise.
  static const bool is_told = SetConsoleOutputCP(GetACP()) != 0;
  (void)is_told;
  return static_cast<int>(GetACP());
}

void ShowUtf8OnTerminal() { SetConsoleOutputCP(CP_UTF8); }

std::vector<std::string> ProgramArguments(int, char**) {
  std::vector<std::string> arguments;
  int count = 0;
  LPWSTR* words = CommandLineToArgvW(GetCommandLineW(), &count);
  for (int i = 1; i < count; ++i) arguments.push_back(Narrow(words[i]));
  LocalFree(words);
  return arguments;
}

std::string EnvironmentVariable(const std::string& name) {
  const std::wstring wide = Wide(name);
  std::wstring value(256, L'\0');
  while (true) {
    // The length without the zero at its end, or with it the size that would be enough.
    const DWORD size =
        GetEnvironmentVariableW(wide.c_str(), value.data(), static_cast<DWORD>(value.size()));
    if (size < value.size()) return Narrow(value.substr(0, size));
    value.resize(size);
  }
}

}  // namespace scrivo
