#include "ui/win32/error_window.h"

#include <algorithm>
#include <vector>

#include "ui/access_keys.h"

namespace scrivo {
namespace {

constexpr int kMessageId = 100;
// In twips.
constexpr double kWidth = 8700, kHeight = 5400, kSmallestWidth = 7000, kSmallestHeight = 3000;
constexpr double kMargin = 120, kTitleHeight = 420, kStripHeight = 375, kSmallestSpacer = 15;

RECT CentredOnScreen(int width, int height) {
  RECT work;
  SystemParametersInfoA(SPI_GETWORKAREA, 0, &work, 0);
  const int left = work.left + (work.right - work.left - width) / 2;
  const int top = work.top + (work.bottom - work.top - height) / 3;
  return {left, top, left + width, top + height};
}

/// The system's message font, half as large again and bold.
HFONT CreateTitleFont(HFONT message_font) {
  LOGFONTA description{};
  GetObjectA(message_font, sizeof description, &description);
  description.lfHeight = description.lfHeight * 5 / 4;
  description.lfWeight = FW_BOLD;
  return CreateFontIndirectA(&description);
}

}  // namespace

ErrorWindow::ErrorWindow(ButtonStrip& strip, ErrorViewEvents& events)
    : buttons_(strip), events_(events) {
  Create("Scrivo", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, WS_EX_CONTROLPARENT, nullptr,
         CentredOnScreen(Pixels(kWidth), Pixels(kHeight)));
  title_ = CreateControl("STATIC", "", WS_VISIBLE | SS_CENTERIMAGE | SS_NOPREFIX, 0, handle(), -1,
                         nullptr);
  message_ = CreateControl(
      "EDIT", "", WS_VISIBLE | WS_TABSTOP | WS_VSCROLL | WS_HSCROLL | ES_MULTILINE | ES_AUTOVSCROLL,
      0, handle(), kMessageId, nullptr);
  SetWindowLongPtrA(message_, GWL_EXSTYLE, WS_EX_CLIENTEDGE);
  SendMessageA(message_, EM_SETLIMITTEXT, 0, 0);
  MakeStrip();
  MakeFonts();
  LayOut();
}

ErrorWindow::~ErrorWindow() {
  *done_ = true;
  if (font_) DeleteObject(font_);
  if (title_font_) DeleteObject(title_font_);
}

void ErrorWindow::SetTitle(const std::string& caption) { SetWindowTextA(title_, caption.c_str()); }

void ErrorWindow::SetMessage(const std::string& text) { SetWindowTextA(message_, text.c_str()); }

std::string ErrorWindow::Message() { return TextOf(message_); }

void ErrorWindow::ShowButtons() {
  MakeStrip();
  strip_->SetFont(font_);
  LayOut();
}

void ErrorWindow::MakeStrip() {
  std::vector<std::string> captions;
  for (const StripItem& item : buttons_.Items()) captions.push_back(item.caption);
  strip_.reset();
  strip_ = std::make_unique<ButtonStripControl>(
      handle(), buttons_, WithAccessKeys(captions), "", "",
      [this](const std::string& key) { events_.ButtonClicked(key); });
}

void ErrorWindow::ShowModal() {
  *done_ = false;
  HWND owner = GetActiveWindow();
  RunModal(handle(), owner == handle() ? nullptr : owner, done_);
}

void ErrorWindow::Hide() {
  *done_ = true;
  ShowWindow(handle(), SW_HIDE);
}

void ErrorWindow::MakeFonts() {
  HFONT font = CreateMessageFont(Dpi());
  HFONT title_font = CreateTitleFont(font);
  SendMessageA(title_, WM_SETFONT, reinterpret_cast<WPARAM>(title_font), TRUE);
  SendMessageA(message_, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
  strip_->SetFont(font);
  if (font_) DeleteObject(font_);
  if (title_font_) DeleteObject(title_font_);
  font_ = font;
  title_font_ = title_font;
}

void ErrorWindow::LayOut() {
  RECT client;
  GetClientRect(handle(), &client);
  const int margin = Pixels(kMargin), title = Pixels(kTitleHeight), strip = Pixels(kStripHeight);
  const int width = std::max<int>(client.right - 2 * margin, 0);
  const int strip_top = client.bottom - margin - strip;
  const int message_top = margin + title + margin / 2;
  MoveWindow(title_, margin, margin, width, title, TRUE);
  MoveWindow(message_, margin, message_top, width, std::max(strip_top - margin - message_top, 0),
             TRUE);
  MoveWindow(strip_->handle(), margin, strip_top, width, strip, TRUE);
  // The spacer takes what the buttons leave, so that they stand at the right.
  StripItem& spacer = buttons_["SPACER"];
  spacer.width = static_cast<float>(
      std::max(Twips(width) - (buttons_.ItemsWidth() - spacer.width), kSmallestSpacer));
  strip_->LayOut();
}

LRESULT ErrorWindow::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_SIZE:
      if (strip_) LayOut();
      return 0;
    case WM_GETMINMAXINFO:
      reinterpret_cast<MINMAXINFO*>(lparam)->ptMinTrackSize = {Pixels(kSmallestWidth),
                                                               Pixels(kSmallestHeight)};
      return 0;
    case WM_DPICHANGED: {
      const RECT& place = *reinterpret_cast<RECT*>(lparam);
      MakeFonts();
      MoveWindow(handle(), place.left, place.top, place.right - place.left,
                 place.bottom - place.top, TRUE);
      return 0;
    }
    case WM_SHOWWINDOW:
      if (wparam) events_.Activated();
      break;
    case WM_COMMAND:
      if (LOWORD(wparam) == IDCANCEL) {
        Hide();
        return 0;
      }
      if (lparam && GetParent(reinterpret_cast<HWND>(lparam)) != handle()) {
        SendMessageA(GetParent(reinterpret_cast<HWND>(lparam)), WM_COMMAND, wparam, lparam);
        return 0;
      }
      break;
    case WM_CLOSE:
      Hide();
      return 0;
  }
  return NativeWindow::OnMessage(message, wparam, lparam);
}

}  // namespace scrivo
