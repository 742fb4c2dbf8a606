#include "ui/win32/parameter_window.h"

#include <algorithm>
#include <vector>

#include "ui/button_strip.h"

namespace scrivo {
namespace {

// The captions of rows and buttons with access keys, rows first.
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
  return window && GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId() &&
         IsOwnWindow(window);
}

}  // namespace

ParameterWindow::ParameterWindow(const ParameterDesign& design, ItemPanel& panel,
                                 ButtonStrip& strip, ParameterViewEvents& events)
    : design_(design), strip_data_(strip), events_(events) {
  CreateForm(Kind::kModal, design.title, design.width, design.width);
  const std::vector<std::string> captions = MarkedCaptions(panel, strip);
  const auto first_button = captions.begin() + static_cast<std::ptrdiff_t>(panel.Rows().size());
  panel_ = std::make_unique<ItemPanelControl>(
      Handle(), panel, std::vector<std::string>(captions.begin(), first_button),
      [this](const std::string& key) { events_.ItemChanged(key); },
      [this](const std::string& key) { events_.ItemButtonClicked(key); });
  strip_ = std::make_unique<ButtonStripControl>(
      Handle(), strip, std::vector<std::string>(first_button, captions.end()), design.default_key,
      design.cancel_key, [this](const std::string& key) { events_.ButtonClicked(key); });
  BeReady();
  PlaceOnScreen(Pixels(design.width), NeededHeight());
}

ParameterWindow::~ParameterWindow() { DestroyForm(); }

void ParameterWindow::ShowModal() {
  just_shown_ = true;
  ShowUntilHidden();  // may destroy this object
}

void ParameterWindow::Hide() { HideForm(); }

void ParameterWindow::Close() { Hide(); }

WindowHandle ParameterWindow::Window() { return reinterpret_cast<WindowHandle>(Handle()); }

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

void ParameterWindow::Enable(bool enabled) { EnableWindow(Handle(), enabled); }

void ParameterWindow::UseFont(HFONT font) {
  panel_->SetFont(font);
  strip_->SetFont(font);
}

HWND ParameterWindow::FirstFocus() { return panel_->FirstEdit(); }

SIZE ParameterWindow::SmallestSize() {
  // A screen too low for all items still shows the buttons.
  RECT work;
  SystemParametersInfoA(SPI_GETWORKAREA, 0, &work, 0);
  return {Pixels(design_.smallest_width), std::min<LONG>(NeededHeight(), work.bottom - work.top)};
}

void ParameterWindow::LayOut() {
  RECT client;
  GetClientRect(Handle(), &client);
  const int margin = Pixels(kFormMargin), strip_height = strip_->NeededHeight();
  const int width = std::max<int>(client.right - 2 * margin, 0);
  const int strip_top = client.bottom - margin - strip_height;
  MoveWindow(panel_->Handle(), margin, margin, width, std::max(strip_top - 2 * margin, 0), TRUE);
  MoveWindow(strip_->Handle(), margin, strip_top, width, strip_height, TRUE);
  const auto twips = static_cast<float>(Twips(width));
  events_.Resized(twips, twips);
  panel_->LayOut();
  strip_->LayOut();
}

int ParameterWindow::NeededHeight() {
  const int inner = panel_->NeededHeight() + strip_->NeededHeight() + 3 * Pixels(kFormMargin);
  return inner + FrameHeight();
}

RECT ParameterWindow::Place() const {
  if (IsZoomed(Handle())) {
    WINDOWPLACEMENT placement{};
    placement.length = sizeof placement;
    GetWindowPlacement(Handle(), &placement);
    return placement.rcNormalPosition;
  }
  RECT place{};
  GetWindowRect(Handle(), &place);
  return place;
}

void ParameterWindow::MoveTo(const RECT& place) {
  MoveWindow(Handle(), place.left, place.top, place.right - place.left, place.bottom - place.top,
             TRUE);
}

void ParameterWindow::Activate(HWND other) {
  // Coming back from another program or a message box is not an activation of the form: the user's
  // last move would be undone.
  if (!just_shown_ && !IsFormOfOurs(other)) return;
  just_shown_ = false;
  events_.Activated();
  PullIntoView();
}

void ParameterWindow::PullIntoView() {
  RECT place = Place();
  MONITORINFO monitor{};
  monitor.cbSize = sizeof monitor;
  GetMonitorInfoA(MonitorFromRect(&place, MONITOR_DEFAULTTONEAREST), &monitor);
  const RECT& work = monitor.rcWork;
  // Who can take hold of the title bar can move the window.
  const int grip = GetSystemMetrics(SM_CYCAPTION);
  const RECT title_bar{place.left, place.top, place.right, place.top + grip};
  RECT seen;
  if (IntersectRect(&seen, &title_bar, &work) && seen.bottom - seen.top >= grip / 2 &&
      seen.right - seen.left >= 3 * grip) {
    return;
  }
  const LONG left =
      std::max(work.left, std::min(place.left, work.right - (place.right - place.left)));
  const LONG top =
      std::max(work.top, std::min(place.top, work.bottom - (place.bottom - place.top)));
  OffsetRect(&place, left - place.left, top - place.top);
  MoveTo(place);
}

void ParameterWindow::OnEnter() { strip_->Click(strip_->DefaultKey()); }

void ParameterWindow::OnEscape() { strip_->Click(strip_->CancelKey()); }

LRESULT ParameterWindow::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_ACTIVATE:
      if (LOWORD(wparam) != WA_INACTIVE) Activate(reinterpret_cast<HWND>(lparam));
      break;
    case WM_CLOSE:
      events_.CloseRequested();  // may destroy this object
      return 0;
  }
  return FormWindow::OnMessage(message, wparam, lparam);
}

}  // namespace scrivo
