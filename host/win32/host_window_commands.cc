// What the window's menus and toolbar show, and what its commands do.

#include <utility>

#include "host/compiler_place.h"
#include "host/session.h"
#include "host/settings.h"
#include "host/win32/host_window.h"
#include "host/win32/wide_controls.h"
#include "platform/win32/shell_api.h"
#include "platform/win32/wide.h"
#include "system/services.h"

namespace scrivo::host {
namespace {

constexpr std::size_t kMenuPathLength = 60;

// A text as a menu shows it, its "&" as they are.
std::string Doubled(const std::string& text) {
  std::string doubled;
  for (const char c : text) {
    doubled += c;
    if (c == '&') doubled += c;
  }
  return doubled;
}

// The number of the command that registers the add-in.
constexpr std::int32_t kRegisterControl = 900;

// The add-in's library beside this program.
std::string AddinLibrary() { return TheServices().system->ModuleFolder() + "\\Scrivo.dll"; }

void AppendCommand(HMENU menu, UINT id, const std::string& text, bool enabled = true) {
  AppendMenuW(menu, enabled ? MF_STRING : MF_STRING | MF_GRAYED, id, Wide(text).c_str());
}

// The picture of a toolbar button; a popup without one of its own shows its first button's.
std::int32_t FaceIdOf(const BarControl& control) {
  if (!control.bar || control.face != 0) return control.face;
  for (const auto& below : control.bar->controls) {
    if (below->visible && below->face != 0) return below->face;
  }
  return 0;
}

// The folder that the user chooses, "" on cancel.
std::string ChosenFolder(HWND owner, const wchar_t* title) {
  BROWSEINFOW browse{};
  browse.hwndOwner = owner;
  browse.lpszTitle = title;
  browse.ulFlags = BIF_RETURNONLYFSDIRS | BIF_NEWDIALOGSTYLE;
  LPITEMIDLIST chosen = SHBrowseForFolderW(&browse);
  wchar_t path[MAX_PATH] = L"";
  if (chosen) SHGetPathFromIDListW(chosen, path);
  CoTaskMemFree(chosen);
  return Narrow(path);
}

void AppendMenu(HMENU bar, HMENU menu, const wchar_t* text) {
  AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(menu), text);
}

}  // namespace

void HostWindow::FillFileMenu(HMENU menu) {
  const auto& active = world_->session.Active();
  AppendCommand(menu, kOpenWebId, "&Open Web...\tCtrl+O");
  AppendCommand(menu, kCloseWebId, "&Close Web\tCtrl+W", active != nullptr);
  AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
  for (std::size_t i = 0; i < recent_.size(); ++i) {
    std::string text = "&";
    text.append(std::to_string(i + 1)).append(" ");
    text.append(Doubled(ShortenedPath(recent_[i], kMenuPathLength)));
    AppendCommand(menu, kFirstRecentId + static_cast<UINT>(i), text);
  }
  if (!recent_.empty()) AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
  AppendCommand(menu, kExitId, "E&xit\tAlt+F4");
}

void HostWindow::MakeMenu() {
  HMENU bar = CreateMenu(), file = CreatePopupMenu(), help = CreatePopupMenu();
  FillFileMenu(file);
  AppendMenu(bar, file, L"&File");
  const auto tools = world_->bars.Find("Tools");
  if (tools && tools->visible) {
    HMENU menu = CreatePopupMenu();
    AppendLines(menu, MenuOf(*tools), &ids_, images_.get());
    AppendMenu(bar, menu, L"&Tools");
  }
  AppendCommand(help, kAddinsId, "A&dd-ins...");
  AppendCommand(help, kAboutId, "&About Scrivo Host...");
  AppendMenu(bar, help, L"&Help");
  HMENU before = GetMenu(Handle());
  SetMenu(Handle(), bar);
  if (before) DestroyMenu(before);
}

void HostWindow::MakeToolbar() {
  while (SendMessageW(toolbar_, TB_DELETEBUTTON, 0, 0)) {
  }
  const int face = images_->Size();
  SendMessageW(toolbar_, TB_SETBITMAPSIZE, 0, MAKELPARAM(face, face));
  const auto standard = world_->bars.Find("Standard");
  const bool is_shown = standard && standard->visible;
  ShowWindow(toolbar_, is_shown ? SW_SHOWNA : SW_HIDE);
  if (!is_shown) return;
  for (const MenuLine& line : MenuOf(*standard)) {
    TBBUTTON button{};
    const std::wstring caption = line.control ? Wide(line.control->caption) : L"";
    if (!line.control) {
      button.fsStyle = BTNS_SEP;
    } else {
      button.iBitmap = images_->ListIndex(FaceIdOf(*line.control));
      button.idCommand = static_cast<int>(ids_.IdOf(line.control));
      button.fsState = line.control->enabled ? TBSTATE_ENABLED : 0;
      button.fsStyle = static_cast<BYTE>(BTNS_AUTOSIZE | BTNS_SHOWTEXT |
                                         (line.control->bar ? BTNS_WHOLEDROPDOWN : BTNS_BUTTON));
      button.iString = reinterpret_cast<INT_PTR>(caption.c_str());
    }
    SendMessageW(toolbar_, TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&button));
  }
}

void HostWindow::DropDown(const NMTOOLBARA& button) {
  const auto control = ids_.Find(static_cast<UINT>(button.iItem));
  if (!control || !control->bar) return;
  HMENU menu = CreatePopupMenu();
  AppendLines(menu, MenuOf(*control->bar), &ids_, images_.get());
  RECT place = button.rcButton;
  MapWindowPoints(toolbar_, nullptr, reinterpret_cast<POINT*>(&place), 2);
  TPMPARAMS around{sizeof around, place};
  TrackPopupMenuEx(menu, TPM_LEFTALIGN | TPM_VERTICAL, place.left, place.bottom, Handle(), &around);
  DestroyMenu(menu);
}

void HostWindow::Tell(const std::string& text, UINT icon) { TellWide(Handle(), text, icon); }

void HostWindow::OpenWeb(const std::string& path) {
  try {
    const auto web = world_->session.Open(path);
    RecentWebs::Remember(web->Path());
  } catch (const Error& error) {
    Tell(error.description, MB_ICONEXCLAMATION);
    if (!TheServices().files->FolderExists(path)) RecentWebs::Forget(path);
  }
  recent_ = RecentWebs::Read();
  web_changed_ = true;
  ShowState();
}

void HostWindow::ChooseWeb() {
  const std::string path = ChosenFolder(Handle(), L"Choose the folder of the web to open.");
  if (!path.empty()) OpenWeb(path);
}

void HostWindow::CloseWeb() {
  if (const auto web = world_->session.Active()) world_->session.Close(web);
}

void HostWindow::OpenSelected() {
  const OutlineRow* row = SelectedRow();
  if (row && !row->path.empty()) OpenDocument(row->path);
}

void HostWindow::OpenDocument(const std::string& path) {
  ShellRequest request;
  request.owner = reinterpret_cast<WindowHandle>(Handle());
  request.verb = "open";
  request.file = path;
  request.wide = true;
  if (TheServices().shell->Execute(request) > 32) return;
  Tell("The page " + path + " cannot be opened: no program is registered for it.",
       MB_ICONEXCLAMATION);
}

std::string HostWindow::AddinText() const {
  const auto& addins = world_->addins.Addins();
  if (addins.empty()) return "No add-in is registered";
  std::string connected;
  for (const auto& addin : addins) {
    if (!addin->problem.empty()) return addin->problem;
    if (!addin->IsConnected()) continue;
    connected.append(connected.empty() ? "Add-in: " : ", ").append(addin->entry.name);
  }
  return connected.empty() ? "No add-in is connected" : connected;
}

void HostWindow::ShowAddins() {
  const auto& addins = world_->addins.Addins();
  std::string text;
  for (const auto& addin : addins) {
    if (!text.empty()) text += "\n\n";
    text += addin->entry.name + " (" + addin->entry.prog_id + ")\n";
    text += !addin->problem.empty()       ? addin->problem
            : addin->IsConnected()        ? "Connected"
            : addin->entry.LoadsAtStart() ? "Not connected"
                                          : "Not connected; not set to load at start";
  }
  if (text.empty()) {
    text =
        "No add-in is registered for SharePoint Designer.\n\nRegister one with regsvr32, for "
        "example \"regsvr32 Scrivo.dll\", and start Scrivo Host again.";
  }
  Tell(text, MB_ICONINFORMATION);
}

void HostWindow::OfferRegistration() {
  const auto tools = world_->bars.Find("Tools");
  if (!tools || !world_->addins.Addins().empty() ||
      !TheServices().files->FileExists(AddinLibrary())) {
    return;
  }
  register_ = BarModel::AddCommand(tools.get(), kRegisterControl, "Register &add-in", 0,
                                   [this] { RegisterAddin(); });
  register_->begin_group = true;
  world_->bars.Changed();
}

void HostWindow::RegisterAddin() {
  using Function = HRESULT(WINAPI*)();
  HMODULE library = LoadLibraryW(Wide(AddinLibrary()).c_str());
  const auto function = library ? reinterpret_cast<Function>(reinterpret_cast<void*>(
                                      GetProcAddress(library, "DllRegisterServer")))
                                : nullptr;
  const bool is_registered = function && SUCCEEDED(function());
  if (library) FreeLibrary(library);
  if (!is_registered) {
    Tell("The add-in " + AddinLibrary() + " cannot be registered.", MB_ICONEXCLAMATION);
    return;
  }
  SetCompilerWhereNoneIs(TheServices().system->ModuleFolder());
  Remove(register_.get());
  world_->addins.Read();
  world_->addins.ConnectAtStart(kAfterStartup);
  world_->bars.Changed();
}

void HostWindow::ShowAbout() {
  Tell("Scrivo Host " SCRIVO_VERSION
       "\n\nOpens FrontPage webs and loads add-ins for SharePoint Designer where neither "
       "application is available.",
       MB_ICONINFORMATION);
}

void HostWindow::OnDrop(WPARAM given) {
  HDROP drop = reinterpret_cast<HDROP>(given);
  wchar_t path[MAX_PATH] = L"";
  DragQueryFileW(drop, 0, path, MAX_PATH);
  DragFinish(drop);
  OpenWeb(Narrow(path));
}

bool HostWindow::OnCommand(UINT id) {
  if (id >= ControlIds::kFirst) {
    const auto control = ids_.Find(id);
    if (!control) return false;
    try {
      world_->Press(control);
    } catch (const Error& error) {
      Tell(error.description, MB_ICONEXCLAMATION);
    }
    return true;
  }
  if (id >= kFirstRecentId && id < kFirstRecentId + recent_.size()) {
    OpenWeb(std::string(recent_[id - kFirstRecentId]));
    return true;
  }
  switch (id) {
    case kOpenWebId:
    case kOpenButtonId:
      ChooseWeb();
      return true;
    case kCloseWebId:
      CloseWeb();
      return true;
    case kRefreshId:
      if (const auto web = world_->session.Active()) world_->session.Refresh(web.get());
      return true;
    case kExitId:
      PostMessageW(Handle(), WM_CLOSE, 0, 0);
      return true;
    case kAddinsId:
      ShowAddins();
      return true;
    case kAboutId:
      ShowAbout();
      return true;
    case IDOK:  // Enter
      if (GetFocus() == open_button_) {
        ChooseWeb();
      } else {
        OpenSelected();
      }
      return true;
    default:
      return false;
  }
}

}  // namespace scrivo::host
