#include "tests/ui/win32/live_window.h"

#include <algorithm>
#include <utility>

namespace scrivo {
namespace {

struct Search {
  std::string class_name;
  std::vector<HWND> found;
};

BOOL CALLBACK Collect(HWND window, LPARAM search_address) {
  auto& search = *reinterpret_cast<Search*>(search_address);
  char name[64] = "";
  GetClassNameA(window, name, sizeof name);
  if (lstrcmpiA(name, search.class_name.c_str()) == 0) search.found.push_back(window);
  return TRUE;
}

std::function<void()> pending_action;

void CALLBACK RunPending(HWND, UINT, UINT_PTR timer, DWORD) {
  KillTimer(nullptr, timer);
  const auto action = std::exchange(pending_action, nullptr);
  if (action) action();
}

}  // namespace

std::vector<HWND> ControlsOf(HWND window, const std::string& class_name) {
  Search search{class_name, {}};
  EnumChildWindows(window, Collect, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

HWND ButtonOf(HWND window, const std::string& text) {
  for (HWND button : ControlsOf(window, "BUTTON")) {
    std::string caption = TextOf(button);
    std::erase(caption, '&');
    if (caption == text) return button;
  }
  return nullptr;
}

void OnceShown(std::function<void()> action) {
  pending_action = std::move(action);
  SetTimer(nullptr, 0, USER_TIMER_MINIMUM, RunPending);
}

void PumpMessages() {
  MSG message;
  while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
    if (IsFormKey(&message)) continue;
    TranslateMessage(&message);
    DispatchMessageA(&message);
  }
}

}  // namespace scrivo
