#include "tests/addin/win32/user.h"

#include <algorithm>

namespace scrivo {
namespace {

// The text of a message box is the control with this number.
constexpr int kMessageText = 0xFFFF;

std::string ClassOf(HWND window) {
  char name[64] = "";
  GetClassNameA(window, name, sizeof name);
  return name;
}

std::string TitleOf(HWND window) {
  char title[256] = "";
  GetWindowTextA(window, title, sizeof title);
  return title;
}

BOOL CALLBACK TakeOwn(HWND window, LPARAM windows) {
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  if (process == GetCurrentProcessId() && IsWindowVisible(window)) {
    reinterpret_cast<std::vector<HWND>*>(windows)->push_back(window);
  }
  return TRUE;
}

}  // namespace

User::User()
    : thread_([this] {
        while (!is_gone_) {
          Look();
          Sleep(5);
        }
      }) {}

User::~User() {
  is_gone_ = true;
  thread_.join();
}

std::vector<std::string> User::Seen() {
  const std::lock_guard lock(mutex_);
  return seen_;
}

void User::Look() {
  std::vector<HWND> windows;
  EnumWindows(&TakeOwn, reinterpret_cast<LPARAM>(&windows));
  // A window that was closed may give its handle to the next one.
  std::erase_if(met_, [&](HWND window) {
    return std::find(windows.begin(), windows.end(), window) == windows.end();
  });
  for (HWND window : windows) {
    if (std::find(met_.begin(), met_.end(), window) == met_.end()) Meet(window);
  }
}

void User::Meet(HWND window) {
  const std::string class_name = ClassOf(window);
  std::string what;
  if (class_name == "#32770") {
    char text[1024] = "";
    GetDlgItemTextA(window, kMessageText, text, sizeof text);
    what = std::string("message: ") + text;
  } else if (class_name == "ScrivoWindow") {
    what = "form: " + TitleOf(window);
  } else {
    return;
  }
  met_.push_back(window);
  {
    const std::lock_guard lock(mutex_);
    seen_.push_back(what);
  }
  if (class_name == "#32770") {
    PostMessageA(window, WM_COMMAND, GetDlgItem(window, IDYES) ? IDYES : IDOK, 0);
  } else if (on_form) {
    on_form(window);
  } else {
    PostMessageA(window, WM_CLOSE, 0, 0);
  }
}

}  // namespace scrivo
