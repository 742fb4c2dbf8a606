#include "ui/win32/progress_panel.h"

#include "system/ansi_text.h"

namespace scrivo {

ProgressPanel::ProgressPanel(HWND parent) {
  Create("", WS_CHILD | WS_VISIBLE, WS_EX_STATICEDGE, parent, RECT{});
}

bool ProgressPanel::Set(const std::string& caption, int flood_percent) {
  // A run tells this for each piece of output.
  if (caption == caption_ && flood_percent == flood_percent_) return false;
  caption_ = caption;
  flood_percent_ = flood_percent;
  ShowText(Handle(), caption);
  InvalidateRect(Handle(), nullptr, FALSE);
  return true;
}

void ProgressPanel::SetFont(HFONT font) {
  font_ = font;
  InvalidateRect(Handle(), nullptr, FALSE);
}

LRESULT ProgressPanel::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_PAINT) {
    Paint();
    return 0;
  }
  if (message == WM_ERASEBKGND) return 1;  // Paint covers everything
  return NativeWindow::OnMessage(message, wparam, lparam);
}

void ProgressPanel::Paint() {
  PAINTSTRUCT paint;
  HDC device = BeginPaint(Handle(), &paint);
  RECT whole;
  GetClientRect(Handle(), &whole);
  RECT filled = whole;
  filled.right = MulDiv(whole.right, flood_percent_, 100);
  RECT rest = whole;
  rest.left = filled.right;
  PaintPart(device, filled, whole, COLOR_HIGHLIGHT, COLOR_HIGHLIGHTTEXT);
  PaintPart(device, rest, whole, COLOR_WINDOW, COLOR_WINDOWTEXT);
  EndPaint(Handle(), &paint);
}

void ProgressPanel::PaintPart(HDC device, const RECT& part, const RECT& whole, int background,
                              int text) const {
  HGDIOBJ old_font = font_ ? SelectObject(device, font_) : nullptr;
  SetBkMode(device, TRANSPARENT);
  SetTextColor(device, GetSysColor(text));
  const int state = SaveDC(device);
  IntersectClipRect(device, part.left, part.top, part.right, part.bottom);
  FillRect(device, &part, GetSysColorBrush(background));
  RECT room = whole;
  const std::string caption = ToAnsi(caption_);
  DrawTextA(device, caption.c_str(), static_cast<int>(caption.size()), &room,
            DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
  RestoreDC(device, state);
  if (old_font) SelectObject(device, old_font);
}

}  // namespace scrivo
