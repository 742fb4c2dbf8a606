#pragma once

#include <memory>
#include <string>

#include "ui/form_views.h"
#include "ui/win32/button_strip_control.h"
#include "ui/win32/form_window.h"

namespace scrivo {

// The error dialog as a real window: a title band, the report, and the buttons.
class ErrorWindow : public FormWindow, public ErrorView {
 public:
  // The buttons and who hears the user; not owned, they outlive this.
  ErrorWindow(ButtonStrip& strip, ErrorViewEvents& events);
  ~ErrorWindow() override;

  void SetTitle(const std::string& caption) override;
  void SetMessage(const std::string& text) override;
  std::string Message() override;
  void ShowButtons() override;
  void ShowModal() override;
  void Hide() override;

 protected:
  LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam) override;
  void UseFont(HFONT font) override;
  void LayOut() override;
  SIZE SmallestSize() override;
  HWND FirstFocus() override;
  void OnEnter() override;
  void OnEscape() override;

 private:
  void MakeStrip();

  ButtonStrip& buttons_;
  ErrorViewEvents& events_;
  HFONT font_ = nullptr;        // not owned
  HFONT title_font_ = nullptr;  // owned
  HWND icon_ = nullptr;
  HWND title_ = nullptr;
  HWND message_ = nullptr;
  std::unique_ptr<ButtonStripControl> strip_;
};

}  // namespace scrivo
