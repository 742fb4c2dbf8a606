#pragma once

#include <memory>
#include <string>

#include "ui/form_views.h"
#include "ui/win32/button_strip_control.h"
#include "ui/win32/form_window.h"
#include "ui/win32/item_panel_control.h"

namespace scrivo {

// What a parameter dialog looks like before anybody has moved it. Measures in twips.
struct ParameterDesign {
  std::string title;
  std::string default_key;  // the button that Enter presses
  std::string cancel_key;   // the button that Escape presses
  double width;
  double smallest_width;
};

// A parameter dialog as a real window: a panel of items above a strip of buttons.
class ParameterWindow : public FormWindow, public ParameterView {
 public:
  // The items, the buttons and who hears what the user does to them; not owned, they outlive this.
  ParameterWindow(const ParameterDesign& design, ItemPanel& panel, ButtonStrip& strip,
                  ParameterViewEvents& events);
  ~ParameterWindow() override;

  void ShowModal() override;
  void Hide() override;
  void Close() override;
  WindowHandle Window() override;
  float Left() override;
  void Left(float twips) override;
  float Top() override;
  void Top(float twips) override;
  float Width() override;
  void Width(float twips) override;
  float Height() override;
  void Height(float twips) override;
  void ShowItem(const std::string& key) override;
  void Enable(bool enabled) override;

 protected:
  LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam) override;
  void UseFont(HFONT font) override;
  void LayOut() override;
  SIZE SmallestSize() override;
  HWND FirstFocus() override;
  void OnEnter() override;
  void OnEscape() override;

 private:
  // The outer height, in pixels, at which every item is seen at the present width.
  int NeededHeight();
  // Where the window is on the screen, or will be when it is maximized no longer.
  RECT Place() const;
  void MoveTo(const RECT& place);
  void Activate(HWND other);
  void PullIntoView();

  ParameterDesign design_;
  ButtonStrip& strip_data_;
  ParameterViewEvents& events_;
  std::unique_ptr<ItemPanelControl> panel_;
  std::unique_ptr<ButtonStripControl> strip_;
  bool just_shown_ = false;
};

}  // namespace scrivo
