#include "ui/win32/button_strip_control.h"

#include <commctrl.h>

#include <algorithm>

#include "system/system_services.h"

namespace scrivo {
namespace {

// In twips.
constexpr double kButtonWidth = 1350, kButtonHeight = 345, kButtonGap = 90, kBesideCaption = 300,
                 kAroundCaption = 150;
constexpr int kFirstButtonId = 2000;

}  // namespace

ButtonStripControl::ButtonStripControl(HWND parent, ButtonStrip& strip,
                                       const std::vector<std::string>& captions,
                                       const std::string& default_key,
                                       const std::string& cancel_key,
                                       std::function<void(const std::string& key)> clicked)
    : strip_(strip),
      default_key_(default_key),
      cancel_key_(cancel_key),
      clicked_(std::move(clicked)) {
  Create("", WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, WS_EX_CONTROLPARENT, parent, RECT{});
  tips_ = CreateWindowExA(WS_EX_TOPMOST, TOOLTIPS_CLASSA, nullptr, WS_POPUP | TTS_ALWAYSTIP, 0, 0,
                          0, 0, Handle(), nullptr, OwnModule(), nullptr);
  for (std::size_t i = 0; i < strip_.Items().size(); ++i) {
    StripItem& item = strip_.Items()[i];
    HWND button = nullptr;
    if (!item.caption.empty()) {
      const DWORD kind = item.key == default_key ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON;
      button = CreateControl("BUTTON", captions[i], WS_VISIBLE | WS_TABSTOP | kind, 0, Handle(),
                             kFirstButtonId + static_cast<int>(i), nullptr);
      TOOLINFOA tip{};
      tip.cbSize = TTTOOLINFOA_V2_SIZE;
      tip.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
      tip.hwnd = Handle();
      tip.uId = reinterpret_cast<UINT_PTR>(button);
      std::string text = ToAnsi(item.tip);
      tip.lpszText = text.data();
      if (!item.tip.empty()) SendMessageA(tips_, TTM_ADDTOOLA, 0, reinterpret_cast<LPARAM>(&tip));
    }
    buttons_.push_back(button);
  }
}

int ButtonStripControl::NeededHeight() const {
  return std::max(Pixels(kButtonHeight), line_height_ + Pixels(kAroundCaption));
}

HWND ButtonStripControl::FirstButton() const {
  const auto first =
      std::find_if(buttons_.begin(), buttons_.end(), [](HWND button) { return button != nullptr; });
  return first == buttons_.end() ? nullptr : *first;
}

void ButtonStripControl::LayOut() {
  double left = 0;
  for (std::size_t i = 0; i < buttons_.size(); ++i) {
    const StripItem& item = strip_.Items()[i];
    if (buttons_[i]) {
      MoveWindow(buttons_[i], Pixels(left + kButtonGap), 0, Pixels(item.width - kButtonGap),
                 NeededHeight(), TRUE);
      EnableWindow(buttons_[i], item.enabled);
    }
    left += item.width;
  }
}

void ButtonStripControl::SetFont(HFONT font) {
  for (std::size_t i = 0; i < buttons_.size(); ++i) {
    if (!buttons_[i]) continue;
    StripItem& item = strip_.Items()[i];
    SendMessageA(buttons_[i], WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
    const SIZE caption = TextSize(Handle(), font, item.caption);
    line_height_ = caption.cy;
    const double width = std::max(kButtonWidth, Twips(caption.cx) + kBesideCaption);
    item.width = static_cast<float>(width + kButtonGap);
  }
}

void ButtonStripControl::Click(const std::string& key) {
  for (std::size_t i = 0; i < buttons_.size(); ++i) {
    if (strip_.Items()[i].key == key && buttons_[i] && IsWindowEnabled(buttons_[i])) clicked_(key);
  }
}

LRESULT ButtonStripControl::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_COMMAND && lparam && HIWORD(wparam) == BN_CLICKED) {
    const auto index = static_cast<std::size_t>(LOWORD(wparam) - kFirstButtonId);
    if (index < buttons_.size()) {
      const auto clicked = clicked_;  // this object may be gone once it was called
      clicked(std::string(strip_.Items()[index].key));
    }
    return 0;
  }
  return NativeWindow::OnMessage(message, wparam, lparam);
}

}  // namespace scrivo
