#pragma once

#include <string>

#include "ui/win32/native_window.h"

namespace scrivo {

// A panel whose caption shows progress as text and whose fill shows it as an area from the left.
class ProgressPanel : public NativeWindow {
 public:
  explicit ProgressPanel(HWND parent);

  // False when it shows just that already.
  bool Set(const std::string& caption, int flood_percent);
  // Not owned; must live as long as the panel uses it.
  void SetFont(HFONT font);

 protected:
  LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  void Paint();
  void PaintPart(HDC device, const RECT& part, const RECT& whole, int background, int text) const;

  std::string caption_;
  int flood_percent_ = 0;
  HFONT font_ = nullptr;
};

}  // namespace scrivo
