// A console program for the tests: prints how it was started.

#include <cstdio>

#include "platform/win32/windows.h"

int main() {
  STARTUPINFOA start_up;
  GetStartupInfoA(&start_up);
  char folder[MAX_PATH] = "";
  GetCurrentDirectoryA(MAX_PATH, folder);
  std::printf("flags %lu, show %d, input %d, same outputs %d, priority %lu, folder %s\n",
              start_up.dwFlags, start_up.wShowWindow, start_up.hStdInput != nullptr,
              start_up.hStdOutput == start_up.hStdError, GetPriorityClass(GetCurrentProcess()),
              folder);
}
