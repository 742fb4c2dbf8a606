#include "ui/win32/other_windows.h"

#include <algorithm>

namespace scrivo {
namespace {

BOOL CALLBACK Collect(HWND window, LPARAM windows) {
  if (IsWindowVisible(window) && IsWindowEnabled(window)) {
    reinterpret_cast<std::vector<HWND>*>(windows)->push_back(window);
  }
  return TRUE;
}

}  // namespace

OtherWindowsDisabled::OtherWindowsDisabled(HWND window) {
  EnumThreadWindows(GetCurrentThreadId(), &Collect, reinterpret_cast<LPARAM>(&windows_));
  std::erase(windows_, window);
  Enable(false);
}

OtherWindowsDisabled::~OtherWindowsDisabled() { Enable(true); }

void OtherWindowsDisabled::Enable(bool enabled) const {
  for (HWND window : windows_) EnableWindow(window, enabled);
}

}  // namespace scrivo
