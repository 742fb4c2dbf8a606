// A help viewer for the tests: its entry answers with what it was called with.

#include "platform/win32/windows.h"

extern "C" __declspec(dllexport) HWND WINAPI
    HtmlHelpA(HWND owner, LPCSTR, UINT command, DWORD_PTR data);

extern "C" __declspec(dllexport) HWND WINAPI
    HtmlHelpA(HWND owner, LPCSTR, UINT command, DWORD_PTR data) {
  const DWORD_PTR has_data = data ? 100 : 0;
  return reinterpret_cast<HWND>(reinterpret_cast<DWORD_PTR>(owner) + command + has_data);
}
