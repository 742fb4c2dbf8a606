#pragma once

#include <memory>
#include <string>

#include "host/host_arguments.h"
#include "host/web_outline.h"
#include "host/win32/bar_menu.h"
#include "host/win32/host_world.h"
#include "ui/win32/native_window.h"

namespace scrivo::host {

// Numbers of the window's controls and of its own commands.
enum HostWindowId : int {
  kTreeId = 101,
  kListId = 102,
  kStatusId = 103,
  kToolbarId = 104,
  kTitleId = 105,
  kLocationId = 106,
  kOpenButtonId = 107,
  kOpenWebId = 1001,
  kCloseWebId = 1002,
  kExitId = 1003,
  kAddinsId = 1004,
  kAboutId = 1005,
  kRefreshId = 1006,
  kFirstRecentId = 1100,
};

// The stand-in's one window: the menus and the toolbar that show the command bars, the active
// web's navigation tree, and the pages outside it. Closing it ends the thread's message loop.
class HostWindow : public NativeWindow {
 public:
  static constexpr char kClass[] = "ScrivoHostWindow";

  // Creates the window, hidden, and puts the host's own buttons on the bars of `world`.
  explicit HostWindow(std::shared_ptr<HostWorld> world);
  ~HostWindow() override;

  // Opens the web in a folder. Tells the user when that fails, and keeps what was open.
  void OpenWeb(const std::string& path);
  // Shows the window and loads the add-ins from the message loop that comes next; `external`: as
  // another program connects them.
  void Start(bool external);
  // Handles the keys that are the window's own: shortcuts, Tab, access keys.
  bool IsKey(MSG* message);

  // Brings menus, toolbar, views and status bar up to date at once.
  void ShowState();

 private:
  LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam) override;
  void MakeControls();
  void MakeFonts();
  void LayOut();
  void MakeMenu();
  void FillFileMenu(HMENU menu);
  void MakeToolbar();
  void ShowWeb();
  void ShowStatus();
  void ShowDetails();
  void StateChanged();
  void ConnectAddins();
  void OfferRegistration();
  void RegisterAddin();

  void ChooseWeb();
  void CloseWeb();
  void OpenSelected();
  void OpenDocument(const std::string& path);
  void ShowAddins();
  void ShowAbout();
  void Tell(const std::string& text, UINT icon);
  bool OnCommand(UINT id);
  LRESULT OnNotify(NMHDR* header);
  void DropDown(const NMTOOLBARA& button);
  void OnDrop(WPARAM drop);
  const OutlineRow* SelectedRow() const;
  std::string AddinText() const;

  const std::shared_ptr<HostWorld> world_;
  ControlIds ids_;
  std::unique_ptr<FaceImages> images_;
  WebOutline outline_;
  std::string shown_url_;  // of the web that the views show
  std::vector<std::string> recent_;
  HFONT font_ = nullptr;
  HICON icon_ = nullptr;
  HACCEL accelerators_ = nullptr;
  HWND toolbar_ = nullptr, status_ = nullptr, tree_ = nullptr, list_ = nullptr;
  HWND tree_heading_ = nullptr, list_heading_ = nullptr;
  HWND title_label_ = nullptr, title_ = nullptr, location_label_ = nullptr, location_ = nullptr;
  HWND hint_ = nullptr, open_button_ = nullptr;
  HWND last_view_ = nullptr;              // the view whose selection the details show
  std::shared_ptr<BarControl> register_;  // the command that registers the add-in; may be null
  bool bars_changed_ = false, web_changed_ = false;
  bool in_menu_ = false;
  bool external_ = false;
};

}  // namespace scrivo::host
