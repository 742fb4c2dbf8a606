#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/win32/windows.h"
#include "ui/win32/native_window.h"

namespace scrivo {

// The other top-level windows of this thread, which cannot be used while this object lives: a host
// has one for each web that is open, and none of them may start a second command.
class OtherWindowsDisabled {
 public:
  // All that can be used now, but for `window`.
  explicit OtherWindowsDisabled(HWND window);
  ~OtherWindowsDisabled();
  OtherWindowsDisabled(const OtherWindowsDisabled&) = delete;
  OtherWindowsDisabled& operator=(const OtherWindowsDisabled&) = delete;

  // Lets them be used, or not, for a while.
  void Enable(bool enabled) const;

 private:
  std::vector<HWND> windows_;
};

// What a form leaves free along its borders and between its parts, in twips.
inline constexpr double kFormMargin = 120;

// What every form of ours has as a top-level window: the system's message font at the resolution
// of its monitor, a smallest size, the keyboard focus where it was when the user comes back, and
// modal display. The derived class makes the controls and places them.
class FormWindow : public NativeWindow {
 public:
  ~FormWindow() override;

 protected:
  // Modal: other windows wait for the form, so that it cannot be minimized out of the way.
  enum class Kind { kModal, kModeless };

  // Creates the window, hidden and empty; sizes in twips. It is not a form yet: until BeReady, no
  // virtual function below is called.
  void CreateForm(Kind kind, const std::string& title, double width, double height);
  // All controls are there: gives them their font and places.
  void BeReady();
  // Destroys the window; to be called first in a derived class's destructor. What was opened for
  // it and is not its own, such as the help viewer, goes over to its owner.
  void DestroyForm();
  // Puts the window, in this size, in the middle of the active window's monitor, a little above.
  void PlaceOnScreen(int width, int height);

  // Gives the controls their font; it lives until the next call has returned.
  virtual void UseFont(HFONT font) = 0;
  virtual void LayOut() = 0;
  // The smallest outer size, in pixels.
  virtual SIZE SmallestSize() = 0;
  // Where the keyboard is when the form is first shown.
  virtual HWND FirstFocus() = 0;
  // Enter, unless a button has the focus, which is pressed then. May destroy this object.
  virtual void OnEnter() {}
  // Escape. May destroy this object.
  virtual void OnEscape() = 0;

  // What the title bar and the borders add to the client area's height, in pixels.
  int FrameHeight() const;

  // Shows the form, in front of the window that was active before, and returns when it was hidden.
  // No other window of the thread can be used until then. The object may be destroyed meanwhile.
  void ShowUntilHidden();
  // Hides the form. The other windows still wait until what has hidden it is done.
  void HideForm();
  // Makes the window belong to another: it stays in front of it and out of the task bar.
  void BelongTo(HWND owner);
  LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  void MakeFont();
  void KeepFocus(bool is_active);
  // Handles WM_COMMAND; false when it is none of the keys above.
  bool OnCommand(WPARAM wparam, HWND control);

  bool is_ready_ = false;
  HFONT font_ = nullptr;
  HWND focus_ = nullptr;  // the control that had the focus when the form was left
  std::shared_ptr<bool> done_ = std::make_shared<bool>(true);
  std::shared_ptr<bool> is_gone_ = std::make_shared<bool>(false);
  std::optional<OtherWindowsDisabled> others_;  // while the form is shown as a modal one
};

// While it lives, Tab, Enter, Escape and access keys work in all forms of this thread, whoever
// runs the message loop: a modeless form is served by the host's, which knows nothing of them.
class FormKeys {
 public:
  FormKeys();
  ~FormKeys();
  FormKeys(const FormKeys&) = delete;
  FormKeys& operator=(const FormKeys&) = delete;

 private:
  HHOOK hook_;
};

}  // namespace scrivo
