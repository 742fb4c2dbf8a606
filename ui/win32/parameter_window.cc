#include "ui/win32/parameter_window.h"

#include <algorithm>
#include <vector>

#include "ui/access_keys.h"

namespace scrivo {
namespace {

// In twips.
constexpr double kMargin = 120, kStripHeight = 375;

/// The captions of rows and buttons with access keys, rows first.
std::vector<std::string> MarkedCaptions(ItemPanel& panel, ButtonStrip& strip) {
  std::vector<std::string> captions;
  // Buttons choose first: their letters are the ones people remember.
  for (const StripItem& item : strip.Items()) captions.push_back(item.caption);
  for (const Item& item : panel.Rows()) {
    captions.push_back(item.kind == ItemKind::kGroup ? "" : item.caption);
  }
  std::vector<std::string> marked = WithAccessKeys(captions);
  std::rotate(marked.begin(), marked.begin() + static_cast<std::ptrdiff_t>(strip.Items().size()),
              marked.end());
  for (std::size_t i = 0; i < panel.Rows().size(); ++i) {
    if (panel.Rows()[i].kind == ItemKind::kGroup) marked[i] = panel.Rows()[i].caption;
  }
  return marked;
}

bool IsFormOfOurs(HWND window) {
  char name[32] = "";
  return window && GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId() &&
         GetClassNameA(window, name, sizeof name) && lstrcmpA(name, "ScrivoWindow") == 0;
}

}  // namespace

ParameterWindow::ParameterWindow(const ParameterDesign& design, ItemPanel& panel,
                                 ButtonStrip& strip, MainViewEvents& events)
    : design_(design), strip_data_(strip), events_(events) {
  const RECT bounds{0, 0, Pixels(design.width), Pixels(design.smallest_width)};
  Create(design.title, WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, WS_EX_CONTROLPARENT, nullptr, bounds);
  const std::vector<std::string> captions = MarkedCaptions(panel, strip);
  const auto first_button = captions.begin() + static_cast<std::ptrdiff_t>(panel.Rows().size());
  panel_ = std::make_unique<ItemPanelControl>(
      handle(), panel, std::vector<std::string>(captions.begin(), first_button),
      [this](const std::string& key) { events_.ItemChanged(key); },
      [this](const std::string& key) { events_.ItemButtonClicked(key); });
  strip_ = std::make_unique<ButtonStripControl>(
      handle(), strip, std::vector<std::string>(first_button, captions.end()), design.default_key,
      design.cancel_key, [this](const std::string& key) { events_.ButtonClicked(key); });
  MakeFonts();
  RECT place = Place();
  RECT work;
  SystemParametersInfoA(SPI_GETWORKAREA, 0, &work, 0);
  const int width = place.right - place.left, height = NeededHeight();
  place.left = work.left + (work.right - work.left - width) / 2;
  place.top = work.top + (work.bottom - work.top - height) / 3;
  place.right = place.left + width;
  place.bottom = place.top + height;
  MoveTo(place);
}

ParameterWindow::~ParameterWindow() {
  *done_ = true;
  if (font_) DeleteObject(font_);
}

void ParameterWindow::ShowModal() {
  *done_ = false;
  just_shown_ = true;
  HWND owner = GetActiveWindow();
  RunModal(handle(), owner == handle() ? nullptr : owner, done_);  // may destroy this object
}

void ParameterWindow::Hide() {
  *done_ = true;
  ShowWindow(handle(), SW_HIDE);
}

void ParameterWindow::Close() { Hide(); }

WindowHandle ParameterWindow::Window() { return reinterpret_cast<WindowHandle>(handle()); }

float ParameterWindow::Left() { return static_cast<float>(Twips(Place().left)); }

void ParameterWindow::Left(float twips) {
  RECT place = Place();
  OffsetRect(&place, Pixels(twips) - place.left, 0);
  MoveTo(place);
}

float ParameterWindow::Top() { return static_cast<float>(Twips(Place().top)); }

void ParameterWindow::Top(float twips) {
  RECT place = Place();
  OffsetRect(&place, 0, Pixels(twips) - place.top);
  MoveTo(place);
}

float ParameterWindow::Width() { return static_cast<float>(Twips(Place().right - Place().left)); }

void ParameterWindow::Width(float twips) {
  RECT place = Place();
  place.right = place.left + Pixels(twips);
  MoveTo(place);
}

float ParameterWindow::Height() { return static_cast<float>(Twips(Place().bottom - Place().top)); }

void ParameterWindow::Height(float twips) {
  RECT place = Place();
  place.bottom = place.top + Pixels(twips);
  MoveTo(place);
}

void ParameterWindow::ShowItem(const std::string& key) { panel_->ShowItem(key); }

void ParameterWindow::MakeFonts() {
  HFONT font = CreateMessageFont(Dpi());
  panel_->SetFont(font);
  strip_->SetFont(font);
  if (font_) DeleteObject(font_);
  font_ = font;
}

void ParameterWindow::LayOut() {
  RECT client;
  GetClientRect(handle(), &client);
  const int margin = Pixels(kMargin), strip_height = Pixels(kStripHeight);
  const int width = std::max<int>(client.right - 2 * margin, 0);
  const int strip_top = client.bottom - margin - strip_height;
  MoveWindow(panel_->handle(), margin, margin, width, std::max(strip_top - 2 * margin, 0), TRUE);
  MoveWindow(strip_->handle(), margin, strip_top, width, strip_height, TRUE);
  const auto twips = static_cast<float>(Twips(width));
  events_.Resized(twips, twips);
  panel_->LayOut();
  strip_->LayOut();
}

int ParameterWindow::NeededHeight() {
  LayOut();
  RECT outer{0, 0, 0, panel_->NeededHeight() + Pixels(kStripHeight) + 3 * Pixels(kMargin)};
  AdjustWindowRectEx(&outer, WS_OVERLAPPEDWINDOW, FALSE, WS_EX_CONTROLPARENT);
  return outer.bottom - outer.top;
}

RECT ParameterWindow::Place() const {
  RECT place{};
  GetWindowRect(handle(), &place);
  return place;
}

void ParameterWindow::MoveTo(const RECT& place) {
  MoveWindow(handle(), place.left, place.top, place.right - place.left, place.bottom - place.top,
             TRUE);
}

void ParameterWindow::Activate(HWND other) {
  // Coming back from another program or a message box is no activation of the form: the user's last
  // move would be undone.
  if (!just_shown_ && !IsFormOfOurs(other)) return;
  just_shown_ = false;
  events_.Activated();
  PullIntoView();
}

void ParameterWindow::PullIntoView() {
  RECT place = Place();
  if (MonitorFromRect(&place, MONITOR_DEFAULTTONULL)) return;
  MONITORINFO monitor{};
  monitor.cbSize = sizeof monitor;
  GetMonitorInfoA(MonitorFromRect(&place, MONITOR_DEFAULTTONEAREST), &monitor);
  const RECT& work = monitor.rcWork;
  const LONG left =
      std::max(work.left, std::min(place.left, work.right - (place.right - place.left)));
  const LONG top =
      std::max(work.top, std::min(place.top, work.bottom - (place.bottom - place.top)));
  OffsetRect(&place, left - place.left, top - place.top);
  MoveTo(place);
}

bool ParameterWindow::OnKeyCommand(WPARAM wparam, LPARAM lparam) {
  HWND control = reinterpret_cast<HWND>(lparam);
  if (control && GetParent(control) != handle()) {
    // Enter on a focused button: the dialog keys tell the form, the button's own parent knows what
    // to do.
    SendMessageA(GetParent(control), WM_COMMAND, wparam, lparam);
    return true;
  }
  if (LOWORD(wparam) == IDOK) {
    strip_->Click(strip_->DefaultKey());
    return true;
  }
  if (LOWORD(wparam) == IDCANCEL) {
    strip_->Click(strip_->CancelKey());
    return true;
  }
  return false;
}

LRESULT ParameterWindow::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_SIZE:
      if (strip_) LayOut();
      return 0;
    case WM_GETMINMAXINFO:
      if (!strip_) break;
      reinterpret_cast<MINMAXINFO*>(lparam)->ptMinTrackSize = {Pixels(design_.smallest_width),
                                                               Pixels(design_.smallest_width) / 2};
      return 0;
    case WM_DPICHANGED:
      MakeFonts();
      MoveTo(*reinterpret_cast<RECT*>(lparam));
      return 0;
    case WM_ACTIVATE:
      if (LOWORD(wparam) != WA_INACTIVE) Activate(reinterpret_cast<HWND>(lparam));
      break;
    case WM_COMMAND:
      if (OnKeyCommand(wparam, lparam)) return 0;
      break;
    case WM_CLOSE:
      events_.CloseRequested();  // may destroy this object
      return 0;
  }
  return NativeWindow::OnMessage(message, wparam, lparam);
}

}  // namespace scrivo
