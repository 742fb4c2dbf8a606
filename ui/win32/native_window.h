#pragma once

#include <memory>
#include <string>

#include "platform/win32/windows.h"

namespace scrivo {

// Length of a form measure in pixels at a resolution. Forms are measured in twips, 1440 to the
// inch.
int PixelsFromTwips(double twips, int dpi);
double TwipsFromPixels(int pixels, int dpi);

// The window class of the forms.
inline constexpr char kFormClass[] = "ScrivoWindow";

// A window of our own, which takes ANSI text as the forms of a host do: creates it, routes its
// messages to OnMessage and lets no exception out into the system. Destroying the object destroys
// the window.
class NativeWindow {
 public:
  NativeWindow() = default;
  virtual ~NativeWindow();
  NativeWindow(const NativeWindow&) = delete;
  NativeWindow& operator=(const NativeWindow&) = delete;

  HWND Handle() const { return handle_; }
  // Dots per inch of the monitor that the window is on.
  int Dpi() const;
  int Pixels(double twips) const { return PixelsFromTwips(twips, Dpi()); }
  double Twips(int pixels) const { return TwipsFromPixels(pixels, Dpi()); }

 protected:
  // Creates a form, or a part of one, hidden, at `bounds` in pixels of the screen (child windows:
  // of the parent's client area).
  void Create(const std::string& title, DWORD style, DWORD extended_style, HWND parent,
              const RECT& bounds);
  // Creates a top-level window that is not a form, and so has no dialog keys of its own, hidden and
  // without a size. It takes wide text: any letter, whatever the code page.
  void CreateWide(const char* class_name, const std::string& title, DWORD style,
                  DWORD extended_style);
  // Destroys the window now. A derived class whose messages need its members does that first in
  // its destructor.
  void Destroy();
  // Handles one message. What is not handled goes to NativeWindow::OnMessage, the system's
  // default.
  virtual LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam);

 private:
  static LRESULT CALLBACK Procedure(HWND handle, UINT message, WPARAM wparam, LPARAM lparam);

  HWND handle_ = nullptr;
};

// Shows `window` and serves messages until *done; a quit message ends the display too and is
// passed on. Tab, Enter, Escape and access keys work as in a dialog. The window may be destroyed
// while it is shown, provided that *done is set then.
void RunModal(HWND window, const std::shared_ptr<const bool>& done);

// Hands a message to the dialog keys of the form that it belongs to; true when it was one.
bool IsFormKey(MSG* message);

// The font that the system uses in message boxes, at a resolution. Owned by the caller
// (DeleteObject).
HFONT CreateMessageFont(int dpi);

// A bold font, `percent` per cent as high as `font`. Owned by the caller.
HFONT CreateHeadingFont(HFONT font, int percent);

// Width and height of a line of text, in pixels.
SIZE TextSize(HWND window, HFONT font, const std::string& text);

// Creates a child control of a system class ("BUTTON", "EDIT", …) with a font, at no place yet.
HWND CreateControl(const char* class_name, const std::string& text, DWORD style,
                   DWORD extended_style, HWND parent, int id, HFONT font);

// A control's text.
std::string TextOf(HWND control);
void ShowText(HWND control, const std::string& text);

// Whether a window is one that NativeWindow has made.
bool IsOwnWindow(HWND window);

// The module (program or library) that holds this code.
HINSTANCE OwnModule();

}  // namespace scrivo
