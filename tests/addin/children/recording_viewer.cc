// A help viewer for the tests: it remembers what it was last called with.

#include <cstdio>

#include "platform/win32/windows.h"

namespace {

char last_call[1024] = "";

}  // namespace

extern "C" __declspec(dllexport) HWND WINAPI
    HtmlHelpA(HWND owner, LPCSTR file, UINT command, DWORD_PTR data);
extern "C" __declspec(dllexport) const char* WINAPI LastCall();

extern "C" __declspec(dllexport) HWND WINAPI
    HtmlHelpA(HWND owner, LPCSTR file, UINT command, DWORD_PTR data) {
  std::snprintf(last_call, sizeof last_call, "%s|%u|%s|%s", file, command,
                data ? reinterpret_cast<const char*>(data) : "", owner ? "owned" : "not owned");
  return owner;
}

extern "C" __declspec(dllexport) const char* WINAPI LastCall() { return last_call; }
