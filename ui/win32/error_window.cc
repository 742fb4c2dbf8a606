#include "ui/win32/error_window.h"

#include <algorithm>
#include <vector>

#include "ui/button_strip.h"

namespace scrivo {
namespace {

constexpr int kMessageId = 100;
// What Enter presses: the first answer, as in the system's own box of these three.
constexpr char kDefaultKey[] = "ABORT";
// In twips.
constexpr double kErrorWidth = 8700, kErrorHeight = 5400, kSmallestErrorWidth = 7000,
                 kSmallestErrorHeight = 3000;
constexpr double kTitleHeight = 480, kSmallestSpacer = 15;

}  // namespace

ErrorWindow::ErrorWindow(ButtonStrip& strip, ErrorViewEvents& events)
    : buttons_(strip), events_(events) {
  CreateForm(Kind::kModal, "Scrivo", kErrorWidth, kErrorHeight);
  icon_ =
      CreateControl("STATIC", "", WS_VISIBLE | SS_ICON | SS_CENTERIMAGE, 0, Handle(), -1, nullptr);
  SendMessageA(icon_, STM_SETICON, reinterpret_cast<WPARAM>(LoadIcon(nullptr, IDI_ERROR)), 0);
  title_ = CreateControl("STATIC", "", WS_VISIBLE | SS_CENTERIMAGE | SS_NOPREFIX, 0, Handle(), -1,
                         nullptr);
  message_ = CreateControl("EDIT", "",
                           WS_VISIBLE | WS_TABSTOP | WS_VSCROLL | WS_HSCROLL | ES_MULTILINE |
                               ES_AUTOVSCROLL | ES_WANTRETURN,
                           0, Handle(), kMessageId, nullptr);
  SetWindowLongPtrA(message_, GWL_EXSTYLE, WS_EX_CLIENTEDGE);
  SendMessageA(message_, EM_SETLIMITTEXT, 0, 0);
  MakeStrip();
  BeReady();
}

ErrorWindow::~ErrorWindow() {
  DestroyForm();
  if (title_font_) DeleteObject(title_font_);
}

void ErrorWindow::SetTitle(const std::string& caption) { ShowText(title_, caption); }

void ErrorWindow::SetMessage(const std::string& text) { ShowText(message_, text); }

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
      Handle(), buttons_, WithAccessKeys(captions), kDefaultKey, "",
      [this](const std::string& key) { events_.ButtonClicked(key); });
}

void ErrorWindow::ShowModal() { ShowUntilHidden(); }

void ErrorWindow::Hide() { HideForm(); }

SIZE ErrorWindow::SmallestSize() {
  return {Pixels(kSmallestErrorWidth), Pixels(kSmallestErrorHeight)};
}

HWND ErrorWindow::FirstFocus() { return strip_->FirstButton(); }

void ErrorWindow::UseFont(HFONT font) {
  HFONT title_font = CreateHeadingFont(font, 140);
  SendMessageA(title_, WM_SETFONT, reinterpret_cast<WPARAM>(title_font), TRUE);
  SendMessageA(message_, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
  strip_->SetFont(font);
  if (title_font_) DeleteObject(title_font_);
  font_ = font;
  title_font_ = title_font;
}

void ErrorWindow::LayOut() {
  RECT client;
  GetClientRect(Handle(), &client);
  const int margin = Pixels(kFormMargin), title = Pixels(kTitleHeight);
  const int strip = strip_->NeededHeight();
  const int width = std::max<int>(client.right - 2 * margin, 0);
  const int strip_top = client.bottom - margin - strip;
  const int message_top = margin + title + margin / 2;
  MoveWindow(icon_, margin, margin, title, title, TRUE);
  const int title_left = 2 * margin + title;
  MoveWindow(title_, title_left, margin, std::max<int>(client.right - margin - title_left, 0),
             title, TRUE);
  MoveWindow(message_, margin, message_top, width, std::max(strip_top - margin - message_top, 0),
             TRUE);
  MoveWindow(strip_->Handle(), margin, strip_top, width, strip, TRUE);
  // The spacer takes what the buttons leave, so that they stand at the right.
  StripItem& spacer = buttons_["SPACER"];
  spacer.width = static_cast<float>(
      std::max(Twips(width) - (buttons_.ItemsWidth() - spacer.width), kSmallestSpacer));
  strip_->LayOut();
}

void ErrorWindow::OnEnter() { strip_->Click(strip_->DefaultKey()); }

void ErrorWindow::OnEscape() { Hide(); }

LRESULT ErrorWindow::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_SHOWWINDOW:
      if (wparam) events_.Activated();
      break;
    case WM_CLOSE:
      Hide();
      return 0;
  }
  return FormWindow::OnMessage(message, wparam, lparam);
}

}  // namespace scrivo
