#pragma once

#include <functional>
#include <string>
#include <vector>

#include "ui/button_strip.h"
#include "ui/win32/native_window.h"

namespace scrivo {

// Shows a ButtonStrip as push buttons in a row; a spacer is an empty place as wide as its item
// says.
class ButtonStripControl : public NativeWindow {
 public:
  // `strip` is not owned and outlives this; its buttons get their widths here. `captions` carry
  // the access keys, item by item. The item with the key `cancel_key` answers Escape,
  // `default_key` answers Enter.
  ButtonStripControl(HWND parent, ButtonStrip& strip, const std::vector<std::string>& captions,
                     const std::string& default_key, const std::string& cancel_key,
                     std::function<void(const std::string& key)> clicked);

  void LayOut();
  // Also makes each button as wide as its caption needs; LayOut places them.
  void SetFont(HFONT font);
  // In pixels.
  int NeededHeight() const;
  HWND FirstButton() const;
  // Presses the button with this key, if it is enabled.
  void Click(const std::string& key);
  const std::string& DefaultKey() const { return default_key_; }
  const std::string& CancelKey() const { return cancel_key_; }

 protected:
  LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  ButtonStrip& strip_;
  std::string default_key_, cancel_key_;
  std::function<void(const std::string&)> clicked_;
  std::vector<HWND> buttons_;  // by item, null for a spacer
  HWND tips_ = nullptr;
  int line_height_ = 0;  // of the font, in pixels
};

}  // namespace scrivo
