#include "ui/win32/run_window.h"

#include <algorithm>
#include <utility>

#include "system/system_services.h"

namespace scrivo {
namespace {

constexpr int kTranscriptId = 100;
constexpr double kRunWidth = 9600, kRunHeight = 6300, kSmallestRunWidth = 4200,
                 kSmallestRunHeight = 3000;
constexpr double kProgressHeight = 330, kRunButtonWidth = 1350, kRunButtonHeight = 345,
                 kAroundText = 150;

// While a run lasts the edit control holds the transcript's tail only, between half of this and
// this many characters, since its cost for each insertion grows with the lines it holds. The whole
// text comes at the end.
constexpr std::size_t kTail = 16 * 1024;
// At the end of a run so many characters are shown at most, its last ones: the control needs
// seconds for more.
constexpr std::size_t kMostShown = 1024 * 1024;
// Each piece of output is shown as it comes while that takes no more than this many microseconds
// and, beyond them, one in kShowShare of all that pass: a flood costs more to show than to make.
// What is held back comes on view when the tool falls silent.
constexpr LONGLONG kShowCredit = 1000000, kShowShare = 8;

// A clock in microseconds.
LONGLONG Now() {
  LARGE_INTEGER ticks, per_second;
  QueryPerformanceCounter(&ticks);
  QueryPerformanceFrequency(&per_second);
  return static_cast<LONGLONG>(static_cast<double>(ticks.QuadPart) * 1e6 /
                               static_cast<double>(per_second.QuadPart));
}

}  // namespace

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

RunWindow::RunWindow(std::function<void()> on_close) : on_close_(std::move(on_close)) {
  CreateForm(Kind::kModeless, "Scrivo - compiler output", kRunWidth, kRunHeight);
  transcript_ = CreateControl(
      "EDIT", "",
      WS_VISIBLE | WS_TABSTOP | WS_VSCROLL | ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL,
      WS_EX_CLIENTEDGE, Handle(), kTranscriptId, nullptr);
  SendMessageA(transcript_, EM_SETLIMITTEXT, 0, 0);  // as much as the control can hold
  progress_ = std::make_unique<ProgressPanel>(Handle());
  close_ = CreateControl("BUTTON", "&Close", WS_VISIBLE | WS_TABSTOP | BS_PUSHBUTTON, 0, Handle(),
                         IDCANCEL, nullptr);
  BeReady();
}

RunWindow::~RunWindow() { DestroyForm(); }

void RunWindow::ShowModeless() {
  // The form that starts a run goes when the run is over; this window stays with the host.
  HWND active = GetActiveWindow();
  HWND host = active ? GetAncestor(active, GA_ROOTOWNER) : nullptr;
  BelongTo(IsOwnWindow(host) ? nullptr : host);
  EnableWindow(Handle(), TRUE);  // it may have stayed from an earlier run, behind a modal form
  ShowWindow(Handle(), SW_SHOW);
  UpdateWindow(Handle());
}

void RunWindow::ShowBusy(bool busy) {
  busy_ = busy;
  SetCursor(LoadCursor(nullptr, busy ? IDC_WAIT : IDC_ARROW));
}

void RunWindow::EnableClose(bool enabled) {
  may_close_ = enabled;
  EnableWindow(close_, enabled);
  EnableMenuItem(GetSystemMenu(Handle(), FALSE), SC_CLOSE,
                 MF_BYCOMMAND | (enabled ? MF_ENABLED : MF_GRAYED));
  if (!enabled) return;
  ShowEnd();
  SendMessageA(transcript_, EM_SETSEL, kMostShown, kMostShown);
  SendMessageA(transcript_, EM_SCROLLCARET, 0, 0);
  SetFocus(close_);
}

void RunWindow::SetProgress(const std::string& caption, int flood_percent) {
  has_news_ |= progress_->Set(caption, flood_percent);
}

void RunWindow::ReplaceTranscript(const std::string& text) {
  text_ = ToAnsi(text);
  shown_from_ = 0;
  shown_to_ = text_.size();
  SetWindowTextA(transcript_, text_.c_str());
  has_news_ = true;
}

void RunWindow::AppendTranscript(const std::string& text) {
  text_ += ToAnsi(text);
  const LONGLONG start = Now();
  show_credit_ = std::min(show_credit_ + (start - counted_at_) / kShowShare, kShowCredit);
  if (show_credit_ > 0) {
    ShowNew();
    show_credit_ -= Now() - start;
  }
  counted_at_ = start;
}

void RunWindow::ShowHeldBack() {
  if (shown_to_ < text_.size()) ShowNew();
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
  has_news_ = true;
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
  if (!std::exchange(has_news_, false)) return;  // asked for each piece of output
  UpdateWindow(transcript_);
  UpdateWindow(progress_->Handle());
  UpdateWindow(Handle());
}

void RunWindow::UseFont(HFONT font) {
  SendMessageA(transcript_, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
  SendMessageA(close_, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
  progress_->SetFont(font);
  line_height_ = TextSize(Handle(), font, "Ag").cy;
}

SIZE RunWindow::SmallestSize() { return {Pixels(kSmallestRunWidth), Pixels(kSmallestRunHeight)}; }

HWND RunWindow::FirstFocus() { return may_close_ ? close_ : transcript_; }

void RunWindow::LayOut() {
  RECT client;
  GetClientRect(Handle(), &client);
  const int margin = Pixels(kFormMargin), text = line_height_ + Pixels(kAroundText);
  const int button = std::max(Pixels(kRunButtonHeight), text);
  const int progress = std::max(Pixels(kProgressHeight), text);
  const int width = client.right - 2 * margin;
  const int button_top = client.bottom - margin - button;
  const int progress_top = button_top - margin - progress;
  MoveWindow(transcript_, margin, margin, width, progress_top - 2 * margin, TRUE);
  MoveWindow(progress_->Handle(), margin, progress_top, width, progress, TRUE);
  MoveWindow(close_, client.right - margin - Pixels(kRunButtonWidth), button_top,
             Pixels(kRunButtonWidth), button, TRUE);
}

void RunWindow::OnEscape() {
  if (!may_close_) return;
  const auto on_close = on_close_;  // this object is gone once it was called
  on_close();
}

LRESULT RunWindow::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_CTLCOLORSTATIC:
      if (reinterpret_cast<HWND>(lparam) != transcript_) break;
      // A text to read, not a field out of use: on the background of a text.
      SetTextColor(reinterpret_cast<HDC>(wparam), GetSysColor(COLOR_WINDOWTEXT));
      SetBkColor(reinterpret_cast<HDC>(wparam), GetSysColor(COLOR_WINDOW));
      return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_WINDOW));
    case WM_SETCURSOR:
      if (!busy_) break;
      SetCursor(LoadCursor(nullptr, IDC_WAIT));
      return TRUE;
    case WM_COMMAND:
      if (LOWORD(wparam) != IDCANCEL) break;
      OnEscape();  // the button's identifier is that of Escape
      return 0;
    case WM_CLOSE:
      OnEscape();
      return 0;
  }
  return FormWindow::OnMessage(message, wparam, lparam);
}

}  // namespace scrivo
