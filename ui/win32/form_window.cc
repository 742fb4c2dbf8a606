#include "ui/win32/form_window.h"

#include <commctrl.h>

#include <algorithm>

namespace scrivo {
namespace {

BOOL CALLBACK Collect(HWND window, LPARAM windows) {
  if (IsWindowVisible(window) && IsWindowEnabled(window)) {
    reinterpret_cast<std::vector<HWND>*>(windows)->push_back(window);
  }
  return TRUE;
}

LRESULT CALLBACK TakeFormKeys(int code, WPARAM removed, LPARAM message_address) {
  auto* message = reinterpret_cast<MSG*>(message_address);
  const bool is_key = message->message >= WM_KEYFIRST && message->message <= WM_KEYLAST;
  if (code >= 0 && removed == PM_REMOVE && is_key && IsFormKey(message)) {
    message->message = WM_NULL;
  }
  return CallNextHookEx(nullptr, code, removed, message_address);
}

// Gives a window that belongs to a form, and would be destroyed with it, to the form's own owner.
BOOL CALLBACK HandOver(HWND window, LPARAM form_address) {
  HWND form = reinterpret_cast<HWND>(form_address);
  if (GetWindow(window, GW_OWNER) != form || !IsWindowVisible(window)) return TRUE;
  char class_name[32] = "";
  GetClassNameA(window, class_name, sizeof class_name);
  if (lstrcmpiA(class_name, TOOLTIPS_CLASSA) != 0) {
    SetWindowLongPtrA(window, GWLP_HWNDPARENT,
                      reinterpret_cast<LONG_PTR>(GetWindow(form, GW_OWNER)));
  }
  return TRUE;
}

bool IsPushButton(HWND control) {
  char class_name[16] = "";
  GetClassNameA(control, class_name, sizeof class_name);
  const LONG kind = GetWindowLongA(control, GWL_STYLE) & BS_TYPEMASK;
  return lstrcmpiA(class_name, "BUTTON") == 0 &&
         (kind == BS_PUSHBUTTON || kind == BS_DEFPUSHBUTTON || kind == BS_OWNERDRAW);
}

// Gives a control the keyboard. A field's text is marked, so that typing replaces it.
void GiveFocus(HWND control) {
  SetFocus(control);
  if (SendMessageA(control, WM_GETDLGCODE, 0, 0) & DLGC_HASSETSEL) {
    SendMessageA(control, EM_SETSEL, 0, -1);
  }
}

}  // namespace

OtherWindowsDisabled::OtherWindowsDisabled(HWND window) {
  EnumThreadWindows(GetCurrentThreadId(), &Collect, reinterpret_cast<LPARAM>(&windows_));
  std::erase(windows_, window);
  Enable(false);
}

OtherWindowsDisabled::~OtherWindowsDisabled() { Enable(true); }

void OtherWindowsDisabled::Enable(bool enabled) const {
  for (HWND window : windows_) EnableWindow(window, enabled);
}

FormWindow::~FormWindow() {
  *done_ = true;
  *is_gone_ = true;
  if (font_) DeleteObject(font_);
}

void FormWindow::CreateForm(Kind kind, const std::string& title, double width, double height) {
  const DWORD boxes = kind == Kind::kModal ? WS_MAXIMIZEBOX : WS_MAXIMIZEBOX | WS_MINIMIZEBOX;
  // A form of a host application shows no icon of its own.
  Create(title, WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_CLIPCHILDREN | boxes,
         WS_EX_CONTROLPARENT | WS_EX_DLGMODALFRAME, nullptr,
         RECT{0, 0, Pixels(width), Pixels(height)});
  PlaceOnScreen(Pixels(width), Pixels(height));
}

void FormWindow::BeReady() {
  is_ready_ = true;
  MakeFont();
  LayOut();
}

void FormWindow::DestroyForm() {
  others_.reset();  // or the system would bring another program's window to the front
  // The help viewer's windows run in a thread of its own.
  EnumWindows(&HandOver, reinterpret_cast<LPARAM>(Handle()));
  Destroy();
}

void FormWindow::PlaceOnScreen(int width, int height) {
  HWND active = GetActiveWindow();
  MONITORINFO monitor{};
  monitor.cbSize = sizeof monitor;
  GetMonitorInfoA(MonitorFromWindow(active ? active : Handle(), MONITOR_DEFAULTTOPRIMARY),
                  &monitor);
  const RECT& work = monitor.rcWork;
  MoveWindow(Handle(), work.left + (work.right - work.left - width) / 2,
             work.top + (work.bottom - work.top - height) / 3, width, height, TRUE);
}

int FormWindow::FrameHeight() const {
  RECT frame{};
  AdjustWindowRectEx(&frame, static_cast<DWORD>(GetWindowLongA(Handle(), GWL_STYLE)), FALSE,
                     static_cast<DWORD>(GetWindowLongA(Handle(), GWL_EXSTYLE)));
  return frame.bottom - frame.top;
}

void FormWindow::ShowUntilHidden() {
  *done_ = false;
  HWND owner = GetActiveWindow();
  if (owner == Handle()) owner = nullptr;
  BelongTo(owner);
  others_.emplace(Handle());
  const std::shared_ptr<bool> is_gone = is_gone_;
  RunModal(Handle(), done_);  // may destroy this object
  if (!*is_gone) others_.reset();
}

void FormWindow::HideForm() {
  *done_ = true;
  // The window behind can become the active one only while it can be used.
  if (others_) others_->Enable(true);
  ShowWindow(Handle(), SW_HIDE);
  if (others_) others_->Enable(false);
}

void FormWindow::BelongTo(HWND owner) {
  SetWindowLongPtrA(Handle(), GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(owner));
}

void FormWindow::MakeFont() {
  HFONT font = CreateMessageFont(Dpi());
  UseFont(font);
  if (font_) DeleteObject(font_);
  font_ = font;
}

void FormWindow::KeepFocus(bool is_active) {
  HWND focus = GetFocus();
  if (!is_active) {
    if (focus && IsChild(Handle(), focus)) focus_ = focus;
    return;
  }
  if (IsIconic(Handle()) || (focus && IsChild(Handle(), focus))) return;
  const bool was_here = focus_ && IsChild(Handle(), focus_) && IsWindowEnabled(focus_);
  if (was_here) {
    SetFocus(focus_);
  } else {
    GiveFocus(FirstFocus());
  }
}

bool FormWindow::OnCommand(WPARAM wparam, HWND control) {
  if (control && GetParent(control) != Handle()) {
    // The dialog keys tell the form; the button's own parent knows what to do.
    SendMessageA(GetParent(control), WM_COMMAND, wparam, reinterpret_cast<LPARAM>(control));
  } else if (!control && wparam == IDOK) {
    HWND focus = GetFocus();
    if (IsChild(Handle(), focus) && IsPushButton(focus)) {
      SendMessageA(focus, BM_CLICK, 0, 0);
    } else {
      OnEnter();
    }
  } else if (!control && wparam == IDCANCEL) {
    OnEscape();
  } else {
    return false;
  }
  return true;
}

LRESULT FormWindow::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  if (!is_ready_) return NativeWindow::OnMessage(message, wparam, lparam);
  switch (message) {
    case WM_SIZE:
      LayOut();
      return 0;
    case WM_GETMINMAXINFO: {
      const SIZE smallest = SmallestSize();
      reinterpret_cast<MINMAXINFO*>(lparam)->ptMinTrackSize = {smallest.cx, smallest.cy};
      return 0;
    }
    case WM_DPICHANGED: {
      const RECT& place = *reinterpret_cast<RECT*>(lparam);
      MakeFont();
      MoveWindow(Handle(), place.left, place.top, place.right - place.left,
                 place.bottom - place.top, TRUE);
      return 0;
    }
    case WM_ACTIVATE:
      KeepFocus(LOWORD(wparam) != WA_INACTIVE);
      return 0;
    case WM_SETFOCUS:
      KeepFocus(true);
      return 0;
    case WM_NEXTDLGCTL:
      GiveFocus(LOWORD(lparam) ? reinterpret_cast<HWND>(wparam)
                               : GetNextDlgTabItem(Handle(), GetFocus(), wparam != 0));
      return 0;
    case WM_COMMAND:
      if (OnCommand(wparam, reinterpret_cast<HWND>(lparam))) return 0;
      break;
  }
  return NativeWindow::OnMessage(message, wparam, lparam);
}

FormKeys::FormKeys()
    : hook_(SetWindowsHookExA(WH_GETMESSAGE, &TakeFormKeys, nullptr, GetCurrentThreadId())) {}

FormKeys::~FormKeys() {
  if (hook_) UnhookWindowsHookEx(hook_);
}

}  // namespace scrivo
