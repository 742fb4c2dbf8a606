// A console program for the tests: prints how it was started.

#include <cstdio>

#include "platform/win32/windows.h"

int main() {
  STARTUPINFOA start_up;
  GetStartupInfoA(&start_up);
  char folder[MAX_PATH] = "";
  GetCurrentDirectoryA(MAX_PATH, folder);
  std::printf(
      "flags %lu, show %d, input from a pipe %d, same outputs %d, priority %lu, folder %s\n",
      start_up.dwFlags, start_up.wShowWindow, GetFileType(start_up.hStdInput) == FILE_TYPE_PIPE,
      start_up.hStdOutput == start_up.hStdError, GetPriorityClass(GetCurrentProcess()), folder);
}
