#include "tests/platform/win32/dialog_answer.h"

namespace scrivo {
namespace {

BOOL CALLBACK TakeOwnDialog(HWND window, LPARAM result) {
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  char class_name[16] = "";
  GetClassNameA(window, class_name, sizeof class_name);
  const bool is_own_dialog = process == GetCurrentProcessId() &&
                             lstrcmpA(class_name, "#32770") == 0 && IsWindowVisible(window);
  if (is_own_dialog) *reinterpret_cast<HWND*>(result) = window;
  return !is_own_dialog;
}

// The visible dialog of this process, or null.
HWND FindDialog() {
  HWND found = nullptr;
  EnumWindows(&TakeOwnDialog, reinterpret_cast<LPARAM>(&found));
  return found;
}

}  // namespace

DialogAnswer::DialogAnswer(std::function<void(HWND)> answer)
    : thread_([this, answer = std::move(answer)] {
        HWND dialog = nullptr;
        while (!given_up_ && !(dialog = FindDialog())) Sleep(5);
        if (dialog) answer(dialog);
      }) {}

DialogAnswer::~DialogAnswer() {
  given_up_ = true;
  thread_.join();
}

void Press(HWND dialog, int button) { PostMessageA(dialog, WM_COMMAND, button, 0); }

}  // namespace scrivo
