#include "host/win32/host_window.h"

#include <algorithm>
#include <utility>

#include "host/settings.h"
#include "host/win32/page_views.h"
#include "host/win32/wide_controls.h"
#include "platform/win32/wide.h"

namespace scrivo::host {
namespace {

constexpr double kMargin = 120, kGap = 60, kLineHeight = 270, kLabelWidth = 900;  // twips
constexpr double kFaceSize = 240, kIndent = 285, kWidth = 12600, kHeight = 8400;
constexpr double kSmallestWidth = 6600, kSmallestHeight = 4500;
constexpr UINT kChangedMessage = WM_APP + 1, kConnectMessage = WM_APP + 2;

constexpr char kHint[] =
    "No web is open. Open the folder of a FrontPage web, or drop it on this window.";

RECT StartPlace(int width, int height) {
  RECT work;
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
  width = std::min<int>(width, work.right - work.left);
  height = std::min<int>(height, work.bottom - work.top);
  const int left = work.left + (work.right - work.left - width) / 2;
  const int top = work.top + (work.bottom - work.top - height) / 3;
  return {left, top, left + width, top + height};
}

void Place(HWND control, int left, int top, int width, int height) {
  MoveWindow(control, left, top, std::max(width, 0), std::max(height, 0), TRUE);
}

int HeightOf(HWND control) {
  RECT bounds;
  GetWindowRect(control, &bounds);
  return bounds.bottom - bounds.top;
}

}  // namespace

HostWindow::HostWindow(std::shared_ptr<HostWorld> world) : world_(std::move(world)) {
  INITCOMMONCONTROLSEX controls{sizeof controls, ICC_BAR_CLASSES | ICC_TREEVIEW_CLASSES |
                                                     ICC_LISTVIEW_CLASSES | ICC_STANDARD_CLASSES};
  InitCommonControlsEx(&controls);
  CreateWide(kClass, "Scrivo Host", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, WS_EX_ACCEPTFILES);
  ACCEL keys[] = {{FVIRTKEY | FCONTROL, 'O', kOpenWebId},
                  {FVIRTKEY | FCONTROL, 'W', kCloseWebId},
                  {FVIRTKEY, VK_F5, kRefreshId}};
  accelerators_ = CreateAcceleratorTableW(keys, 3);
  const auto tools = world_->bars.Find("Tools"), standard = world_->bars.Find("Standard");
  if (tools) {
    const auto refresh =
        BarModel::AddCommand(tools.get(), 459, "&Refresh", 459, [this] { OnCommand(kRefreshId); });
    refresh->shortcut = "F5";
  }
  if (standard) {
    BarModel::AddCommand(standard.get(), 23, "Open Web", 23, [this] { ChooseWeb(); });
    BarModel::AddCommand(standard.get(), 459, "Refresh", 459, [this] { OnCommand(kRefreshId); });
  }
  MakeControls();
  MakeFonts();
  const RECT place = StartPlace(Pixels(kWidth), Pixels(kHeight));
  MoveWindow(Handle(), place.left, place.top, place.right - place.left, place.bottom - place.top,
             FALSE);
  world_->bars.on_change = [this] {
    bars_changed_ = true;
    StateChanged();
  };
  world_->session.on_change = [this] {
    web_changed_ = true;
    StateChanged();
  };
  world_->open_document = [this](const std::string& path) { OpenDocument(path); };
  world_->quit = [this] { PostMessageW(Handle(), WM_CLOSE, 0, 0); };
  recent_ = RecentWebs::Read();
  bars_changed_ = web_changed_ = true;
  ShowState();
}

HostWindow::~HostWindow() {
  world_->bars.on_change = nullptr;
  world_->session.on_change = nullptr;
  world_->open_document = nullptr;
  world_->quit = nullptr;
  Destroy();
  if (icon_) DestroyIcon(icon_);
  if (accelerators_) DestroyAcceleratorTable(accelerators_);
  if (font_) DeleteObject(font_);
}

void HostWindow::MakeControls() {
  const DWORD view = WS_TABSTOP | WS_BORDER;
  const auto make = [&](const wchar_t* kind, const char* text, DWORD style, int id) {
    return CreateWideControl(kind, text, style, Handle(), id);
  };
  toolbar_ =
      make(TOOLBARCLASSNAMEW, "",
           WS_VISIBLE | TBSTYLE_FLAT | TBSTYLE_LIST | TBSTYLE_TOOLTIPS | CCS_TOP | CCS_NODIVIDER,
           kToolbarId);
  SendMessageW(toolbar_, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
  SendMessageW(toolbar_, TB_SETEXTENDEDSTYLE, 0, TBSTYLE_EX_DRAWDDARROWS);
  tree_heading_ = make(L"STATIC", "&Navigation", 0, -1);
  tree_ =
      make(WC_TREEVIEWW, "",
           view | TVS_HASLINES | TVS_HASBUTTONS | TVS_LINESATROOT | TVS_SHOWSELALWAYS | TVS_INFOTIP,
           kTreeId);
  list_heading_ = make(L"STATIC", "&Pages outside the navigation", 0, -1);
  list_ = make(WC_LISTVIEWW, "", view | LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS, kListId);
  MakeListColumns(list_);
  title_label_ = make(L"STATIC", "Title:", 0, -1);
  title_ = make(L"STATIC", "", SS_NOPREFIX | SS_ENDELLIPSIS, kTitleId);
  location_label_ = make(L"STATIC", "Location:", 0, -1);
  location_ = make(L"STATIC", "", SS_NOPREFIX | SS_PATHELLIPSIS, kLocationId);
  hint_ = make(L"STATIC", kHint, SS_CENTER, -1);
  open_button_ = make(L"BUTTON", "&Open Web...", WS_TABSTOP | BS_DEFPUSHBUTTON, kOpenButtonId);
  status_ = make(STATUSCLASSNAMEW, "", WS_VISIBLE | SBARS_SIZEGRIP, kStatusId);
  last_view_ = tree_;
}

void HostWindow::MakeFonts() {
  HFONT font = CreateMessageFont(Dpi());
  for (HWND control : {toolbar_, status_, tree_, list_, tree_heading_, list_heading_, title_label_,
                       title_, location_label_, location_, hint_, open_button_}) {
    SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
  }
  if (font_) DeleteObject(font_);
  font_ = font;
  TreeView_SetIndent(tree_, Pixels(kIndent));
  HICON icon = MakeIcon(Face::kBook, 2 * Pixels(kFaceSize));
  for (const WPARAM size : {ICON_SMALL, ICON_BIG}) {
    SendMessageW(Handle(), WM_SETICON, size, reinterpret_cast<LPARAM>(icon));
  }
  if (icon_) DestroyIcon(icon_);
  icon_ = icon;
  images_ = std::make_unique<FaceImages>(Pixels(kFaceSize));
  SendMessageW(toolbar_, TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(images_->List()));
  bars_changed_ = true;
}

void HostWindow::LayOut() {
  SendMessageW(toolbar_, TB_AUTOSIZE, 0, 0);
  SendMessageW(status_, WM_SIZE, 0, 0);
  RECT client;
  GetClientRect(Handle(), &client);
  const int margin = Pixels(kMargin), gap = Pixels(kGap), line = Pixels(kLineHeight);
  const int label = Pixels(kLabelWidth), width = client.right - 2 * margin;
  const int top = (world_->bars.Find("Standard") ? HeightOf(toolbar_) : 0) + gap;
  const int bottom = client.bottom - HeightOf(status_) - gap;

  const int button_width = Pixels(1800), button_height = Pixels(420);
  const int middle = top + (bottom - top) / 2;
  Place(hint_, margin, middle - 3 * line, width, 2 * line);
  Place(open_button_, (client.right - button_width) / 2, middle - line / 2, button_width,
        button_height);

  const int details = bottom - 2 * line;
  Place(title_label_, margin, details, label, line);
  Place(title_, margin + label, details, width - label, line);
  Place(location_label_, margin, details + line, label, line);
  Place(location_, margin + label, details + line, width - label, line);

  const int views = top + line, height = details - gap - views;
  const int tree_width = (width - margin) / 2;
  const int list_left = margin + tree_width + margin;
  Place(tree_heading_, margin, top, tree_width, line);
  Place(tree_, margin, views, tree_width, height);
  Place(list_heading_, list_left, top, client.right - margin - list_left, line);
  Place(list_, list_left, views, client.right - margin - list_left, height);
  FitListColumns(list_);

  const int parts[] = {Pixels(3450), client.right - Pixels(2850), -1};
  SendMessageW(status_, SB_SETPARTS, 3, reinterpret_cast<LPARAM>(parts));
}

void HostWindow::StateChanged() { PostMessageW(Handle(), kChangedMessage, 0, 0); }

void HostWindow::ShowState() {
  if (in_menu_) return;  // the menus are in use; they are made anew when they close
  const bool had_bars = bars_changed_;
  if (std::exchange(web_changed_, false)) ShowWeb();
  if (std::exchange(bars_changed_, false)) MakeToolbar();
  MakeMenu();
  ShowStatus();
  if (had_bars) LayOut();
}

void HostWindow::ShowWeb() {
  const auto& web = world_->session.Active();
  const OutlineRow* before = SelectedRow();
  const std::string selected = before ? before->location : "";
  outline_ = {};
  std::string problem;
  if (web) {
    try {
      outline_ = OutlineOf(web.get());
    } catch (const Error& error) {
      problem = error.description;
    }
  }
  const std::string url = web ? web->Url() : "";
  const bool is_same = url == shown_url_;
  shown_url_ = url;
  ShowWideText(Handle(), web ? web->Title() + " - Scrivo Host" : "Scrivo Host");
  FillTree(tree_, outline_.navigation, is_same ? selected : "");
  FillList(list_, outline_.outside, is_same ? selected : "");
  ShowWideText(list_heading_, outline_.outside.empty() ? "&Pages outside the navigation: none"
                                                       : "&Pages outside the navigation");
  for (HWND control : {tree_heading_, tree_, list_heading_, list_, title_label_, title_,
                       location_label_, location_}) {
    ShowWindow(control, web ? SW_SHOW : SW_HIDE);
  }
  for (HWND control : {hint_, open_button_}) ShowWindow(control, web ? SW_HIDE : SW_SHOW);
  if (!is_same && IsWindowVisible(Handle()) && GetActiveWindow() == Handle()) {
    SetFocus(web ? tree_ : open_button_);
  }
  last_view_ = tree_;
  ShowDetails();
  LayOut();
  InvalidateRect(Handle(), nullptr, TRUE);
  if (!problem.empty()) Tell("The web cannot be read.\n\n" + problem, MB_ICONEXCLAMATION);
}

void HostWindow::ShowStatus() {
  const auto& web = world_->session.Active();
  const std::string texts[] = {web ? outline_.PageCountText() : "No web is open",
                               web ? web->Path() : "", AddinText()};
  for (WPARAM part = 0; part < 3; ++part) {
    SendMessageW(status_, SB_SETTEXTW, part, reinterpret_cast<LPARAM>(Wide(texts[part]).c_str()));
  }
}

const OutlineRow* HostWindow::SelectedRow() const {
  const bool in_tree = last_view_ == tree_;
  const int index = in_tree ? SelectedInTree(tree_) : SelectedInList(list_);
  const auto& rows = in_tree ? outline_.navigation : outline_.outside;
  return index >= 0 && static_cast<std::size_t>(index) < rows.size()
             ? &rows[static_cast<std::size_t>(index)]
             : nullptr;
}

void HostWindow::ShowDetails() {
  const OutlineRow* row = SelectedRow();
  const std::string location = row && row->location.empty() ? "(no page)" : "";
  ShowWideText(title_, row ? row->title : "");
  ShowWideText(location_, row && location.empty() ? row->location : location);
}

void HostWindow::Start(bool external) {
  external_ = external;
  ShowWindow(Handle(), SW_SHOWDEFAULT);
  UpdateWindow(Handle());
  SetFocus(world_->session.Active() ? tree_ : open_button_);
  PostMessageW(Handle(), kConnectMessage, 0, 0);
}

void HostWindow::ConnectAddins() {
  world_->addins.Read();
  world_->addins.ConnectAtStart(external_ ? kExternal : kAtStartup);
  OfferRegistration();
  ShowState();
}

bool HostWindow::IsKey(MSG* message) {
  if (!IsWindowEnabled(Handle())) return false;
  return TranslateAcceleratorW(Handle(), accelerators_, message) != 0 ||
         IsDialogMessageW(Handle(), message) != FALSE;
}

LRESULT HostWindow::OnNotify(NMHDR* header) {
  switch (header->code) {
    case TVN_SELCHANGEDA:
    case TVN_SELCHANGEDW:
    case LVN_ITEMCHANGED:
    case NM_SETFOCUS:
      if (header->hwndFrom == tree_ || header->hwndFrom == list_) {
        if (GetFocus() == header->hwndFrom) last_view_ = header->hwndFrom;
        ShowDetails();
      }
      return 0;
    case NM_DBLCLK:
      if (header->hwndFrom == tree_ || header->hwndFrom == list_) {
        last_view_ = header->hwndFrom;
        OpenSelected();
        return 1;  // a tree's branches do not open and close at this
      }
      return 0;
    case TBN_DROPDOWN:
      DropDown(*reinterpret_cast<NMTOOLBARA*>(header));
      return TBDDRET_DEFAULT;
    default:
      return 0;
  }
}

LRESULT HostWindow::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_SIZE:
      if (status_ && wparam != SIZE_MINIMIZED) LayOut();
      return 0;
    case WM_GETMINMAXINFO:
      reinterpret_cast<MINMAXINFO*>(lparam)->ptMinTrackSize = {Pixels(kSmallestWidth),
                                                               Pixels(kSmallestHeight)};
      return 0;
    case WM_DPICHANGED: {
      const RECT& place = *reinterpret_cast<RECT*>(lparam);
      MakeFonts();
      MoveWindow(Handle(), place.left, place.top, place.right - place.left,
                 place.bottom - place.top, TRUE);
      ShowState();
      return 0;
    }
    case WM_SETFOCUS:
      SetFocus(world_->session.Active() ? last_view_ : open_button_);
      return 0;
    case WM_NEXTDLGCTL:  // the dialog keys ask whose window it is to move the focus
      SetFocus(LOWORD(lparam) ? reinterpret_cast<HWND>(wparam)
                              : GetNextDlgTabItem(Handle(), GetFocus(), wparam != 0));
      return 0;
    case WM_ENTERMENULOOP:
      in_menu_ = true;
      break;
    case WM_EXITMENULOOP:
      in_menu_ = false;
      StateChanged();
      break;
    case kChangedMessage:
      ShowState();
      return 0;
    case kConnectMessage:
      ConnectAddins();
      return 0;
    case WM_COMMAND:
      if (OnCommand(LOWORD(wparam))) return 0;
      break;
    case WM_NOTIFY:
      return OnNotify(reinterpret_cast<NMHDR*>(lparam));
    case WM_DROPFILES:
      OnDrop(wparam);
      return 0;
    case WM_CLOSE:
      world_->ShutDown();
      DestroyWindow(Handle());
      return 0;
    case WM_ENDSESSION:
      if (wparam) world_->ShutDown();
      return 0;
    case WM_DESTROY:
      PostQuitMessage(0);
      return 0;
  }
  return NativeWindow::OnMessage(message, wparam, lparam);
}

}  // namespace scrivo::host
