#include "host/win32/wide_controls.h"

#include "platform/win32/wide.h"
#include "system/error.h"
#include "ui/win32/native_window.h"

namespace scrivo::host {

HWND CreateWideControl(const wchar_t* class_name, const std::string& text, DWORD style, HWND parent,
                       int id) {
  HWND control =
      CreateWindowExW(0, class_name, Wide(text).c_str(), WS_CHILD | style, 0, 0, 0, 0, parent,
                      reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), OwnModule(), nullptr);
  if (!control) throw Error(kOutOfMemory, "ScrivoHost", "The control cannot be created");
  return control;
}

void ShowWideText(HWND window, const std::string& text) {
  SetWindowTextW(window, Wide(text).c_str());
}

void TellWide(HWND owner, const std::string& text, UINT icon) {
  MessageBoxW(owner, Wide(text).c_str(), L"Scrivo Host", MB_OK | icon);
}

}  // namespace scrivo::host
