#include "ui/win32/run_window.h"

#include <algorithm>

namespace scrivo {
namespace {

constexpr int kTranscriptId = 100;
constexpr double kWidth = 9600, kHeight = 6300, kSmallestWidth = 4200, kSmallestHeight = 3000;
constexpr double kMargin = 120, kProgressHeight = 330, kButtonWidth = 1300, kButtonHeight = 375;

/// While a run lasts the edit control holds the transcript's tail only, between half of this and
/// this many characters, since its cost for each insertion grows with the lines it holds. The whole
/// text comes at the end.
constexpr std::size_t kTail = 16 * 1024;
/// At the end of a run so many characters are shown at most, its last ones: the control needs
/// seconds for more.
constexpr std::size_t kMostShown = 1024 * 1024;
/// A flood of output is shown in steps of this many milliseconds; what comes slower is shown as it
/// comes.
constexpr ULONGLONG kShowInterval = 15;

}  // namespace

RunWindow::RunWindow(std::function<void()> on_close) : on_close_(std::move(on_close)) {
  const RECT bounds{CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT + Pixels(kWidth),
                    CW_USEDEFAULT + Pixels(kHeight)};
  Create("Scrivo - compiler output", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, WS_EX_CONTROLPARENT,
         nullptr, bounds);
  transcript_ = CreateControl(
      "EDIT", "",
      WS_VISIBLE | WS_TABSTOP | WS_VSCROLL | ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL,
      WS_EX_CLIENTEDGE, handle(), kTranscriptId, nullptr);
  SendMessageA(transcript_, EM_SETLIMITTEXT, 0, 0);  // as much as the control can hold
  progress_ = std::make_unique<ProgressPanel>(handle());
  close_ = CreateControl("BUTTON", "&Close", WS_VISIBLE | WS_TABSTOP | BS_PUSHBUTTON, 0, handle(),
                         IDCANCEL, nullptr);
  MakeFonts();
  LayOut();
}

RunWindow::~RunWindow() {
  if (font_) DeleteObject(font_);
}

void RunWindow::ShowModeless() {
  ShowWindow(handle(), SW_SHOW);
  UpdateWindow(handle());
}

void RunWindow::ShowBusy(bool busy) {
  busy_ = busy;
  SetCursor(LoadCursor(nullptr, busy ? IDC_WAIT : IDC_ARROW));
}

void RunWindow::EnableClose(bool enabled) {
  may_close_ = enabled;
  EnableWindow(close_, enabled);
  EnableMenuItem(GetSystemMenu(handle(), FALSE), SC_CLOSE,
                 MF_BYCOMMAND | (enabled ? MF_ENABLED : MF_GRAYED));
  if (!enabled) return;
  ShowEnd();
  SendMessageA(transcript_, EM_SETSEL, kMostShown, kMostShown);
  SendMessageA(transcript_, EM_SCROLLCARET, 0, 0);
  SetFocus(close_);
}

void RunWindow::SetProgress(const std::string& caption, int flood_percent) {
  progress_->Set(caption, flood_percent);
}

void RunWindow::ReplaceTranscript(const std::string& text) {
  text_ = text;
  shown_from_ = 0;
  shown_to_ = text_.size();
  SetWindowTextA(transcript_, text_.c_str());
}

void RunWindow::AppendTranscript(const std::string& text) {
  text_ += text;
  if (GetTickCount64() - shown_at_ >= kShowInterval) ShowNew();
}

void RunWindow::ShowNew() {
  if (text_.size() - shown_from_ > kTail) {
    shown_from_ = text_.size() - kTail / 2;
    const std::size_t line_end = text_.find('\n', shown_from_);
    if (line_end != std::string::npos) shown_from_ = line_end + 1;
    SetWindowTextA(transcript_, text_.c_str() + shown_from_);
    SendMessageA(transcript_, EM_SETSEL, kTail, kTail);
    SendMessageA(transcript_, EM_SCROLLCARET, 0, 0);
  } else {
    SendMessageA(transcript_, EM_SETSEL, kTail, kTail);
    SendMessageA(transcript_, EM_REPLACESEL, FALSE,
                 reinterpret_cast<LPARAM>(text_.c_str() + shown_to_));
  }
  shown_to_ = text_.size();
  shown_at_ = GetTickCount64();
}

void RunWindow::ShowEnd() {
  if (text_.size() <= kMostShown) {
    SetWindowTextA(transcript_, text_.c_str());
    return;
  }
  std::size_t from = text_.find('\n', text_.size() - kMostShown);
  from = from == std::string::npos ? text_.size() - kMostShown : from + 1;
  std::string shown = "[";
  shown += std::to_string(from) + " characters of output before this are not shown]\r\n";
  shown.append(text_, from);
  SetWindowTextA(transcript_, shown.c_str());
}

void RunWindow::Repaint() {
  UpdateWindow(transcript_);
  UpdateWindow(progress_->handle());
  UpdateWindow(handle());
}

void RunWindow::MakeFonts() {
  HFONT font = CreateMessageFont(Dpi());
  SendMessageA(transcript_, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
  SendMessageA(close_, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
  progress_->SetFont(font);
  if (font_) DeleteObject(font_);
  font_ = font;
}

void RunWindow::LayOut() {
  RECT client;
  GetClientRect(handle(), &client);
  const int margin = Pixels(kMargin), button = Pixels(kButtonHeight);
  const int progress = Pixels(kProgressHeight), width = client.right - 2 * margin;
  const int button_top = client.bottom - margin - button;
  const int progress_top = button_top - margin - progress;
  MoveWindow(transcript_, margin, margin, width, progress_top - 2 * margin, TRUE);
  MoveWindow(progress_->handle(), margin, progress_top, width, progress, TRUE);
  MoveWindow(close_, client.right - margin - Pixels(kButtonWidth), button_top, Pixels(kButtonWidth),
             button, TRUE);
}

LRESULT RunWindow::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_SIZE:
      if (close_) LayOut();
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
    case WM_SETCURSOR:
      if (!busy_) break;
      SetCursor(LoadCursor(nullptr, IDC_WAIT));
      return TRUE;
    case WM_COMMAND:
      if (LOWORD(wparam) != IDCANCEL) break;
      [[fallthrough]];
    case WM_CLOSE: {
      if (!may_close_) return 0;
      const auto on_close = on_close_;  // this object is gone once it was called
      on_close();
      return 0;
    }
  }
  return NativeWindow::OnMessage(message, wparam, lparam);
}

}  // namespace scrivo
