#include "host/settings.h"
#include "platform/win32/shell_api.h"
#include "tests/host/win32/window_test.h"
#include "tests/platform/win32/dialog_answer.h"

namespace scrivo::host {
namespace {

class HostWindowTest : public WindowTest {
 protected:
  HostWindowTest() {
    for (const std::string& path : RecentWebs::Read()) RecentWebs::Forget(path);
  }
  // Lets the user close the next message box and gives its text.
  std::string Told(const std::function<void()>& action) {
    std::string text;
    {
      DialogAnswer answer([&](HWND box) {
        for (HWND label : ControlsOf(box, "STATIC")) text += scrivo::TextOf(label);
        PostMessageA(box, WM_CLOSE, 0, 0);
      });
      action();
    }
    return text;
  }
};

TEST_F(HostWindowTest, WithoutAWebItSaysHowToOpenOne) {
  window->Start(false);
  PumpMessages();
  EXPECT_EQ(TextOf(window->Handle()), "Scrivo Host");
  EXPECT_TRUE(IsWindowVisible(Control(kOpenButtonId)));
  EXPECT_FALSE(IsWindowVisible(Control(kTreeId)));
  EXPECT_EQ(StatusText(0), "No web is open");
  EXPECT_EQ(GetMenuState(Menu("File"), kCloseWebId, MF_BYCOMMAND) & MF_GRAYED, UINT{MF_GRAYED});
}

TEST_F(HostWindowTest, ShowsTheNavigationAndThePagesOutsideIt) {
  window->OpenWeb(web_path);
  EXPECT_EQ(TextOf(window->Handle()), "my web - Scrivo Host");
  EXPECT_EQ(DrawnTree(), "Home\n-First\n-Second\nHeading\n");
  ASSERT_EQ(SendMessageA(Control(kListId), LVM_GETITEMCOUNT, 0, 0), 2);
  EXPECT_EQ(ListText(0, 0), "Loose");
  EXPECT_EQ(ListText(0, 1), "loose.htm");
  EXPECT_EQ(ListText(1, 1), "sub/inner.htm");
  EXPECT_EQ(StatusText(0), "5 pages, 2 outside the navigation");
  EXPECT_EQ(StatusText(1), web_path);
}

TEST_F(HostWindowTest, ShowsLabelsAndPagesInEveryScript) {
  // 目录, Дом, Κήπος: no code page of a Western system holds them.
  const std::string contents = "\xE7\x9B\xAE\xE5\xBD\x95", house = "\xD0\x94\xD0\xBE\xD0\xBC";
  const std::string garden = "\xCE\x9A\xCE\xAE\xCF\x80\xCE\xBF\xCF\x82";
  Files& files = *TheServices().files;
  const std::string folder = web_path + "\\" + garden;
  files.MakeFolder(folder);
  files.MakeFolder(folder + "\\_vti_pvt");
  files.Write(folder + "\\" + contents + ".htm",
              "<meta charset=utf-8><title>" + contents + "</title>");
  files.Write(folder + "\\" + house + ".htm", "<meta charset=utf-8><title>" + house + "</title>");
  files.Write(
      folder + "\\_vti_pvt\\structure.cnf",
      "3.0.0.507\r\n2000\r\n1000," + contents + ".htm,0," + contents + " " + garden + ",0,1,0\r\n");
  window->OpenWeb(folder);
  EXPECT_EQ(WideTextOf(window->Handle()), garden + " - Scrivo Host");
  EXPECT_EQ(DrawnTree(), contents + " " + garden + "\n");
  EXPECT_EQ(WideTextOf(Control(kTitleId)), contents);
  EXPECT_EQ(WideTextOf(Control(kLocationId)), contents + ".htm");
  EXPECT_EQ(ListText(0, 0), house);
  EXPECT_EQ(ListText(0, 1), house + ".htm");
  EXPECT_EQ(StatusText(1), folder);
  ASSERT_FALSE(RecentWebs::Read().empty());
  EXPECT_EQ(RecentWebs::Read()[0], folder);
  RecentWebs::Forget(folder);
}

TEST_F(HostWindowTest, ShowsTitleAndLocationOfTheSelectedPage) {
  window->OpenWeb(web_path);
  EXPECT_EQ(TextOf(Control(kTitleId)), "Home page");
  EXPECT_EQ(TextOf(Control(kLocationId)), "index.htm");
  HTREEITEM home = Next(nullptr, TVGN_ROOT);
  SendMessageA(Control(kTreeId), TVM_SELECTITEM, TVGN_CARET,
               reinterpret_cast<LPARAM>(Next(home, TVGN_CHILD)));
  EXPECT_EQ(TextOf(Control(kTitleId)), "My page");
  EXPECT_EQ(TextOf(Control(kLocationId)), "docs/my page.htm");
  SendMessageA(Control(kTreeId), TVM_SELECTITEM, TVGN_CARET,
               reinterpret_cast<LPARAM>(Next(home, TVGN_NEXT)));
  EXPECT_EQ(TextOf(Control(kLocationId)), "(no page)");
}

TEST_F(HostWindowTest, AWebThatCannotBeOpenedIsNamedAndTheFormerOneStays) {
  window->OpenWeb(web_path);
  std::filesystem::create_directories(InFolder("empty"));
  const std::string text = Told([&] { window->OpenWeb(InFolder("empty")); });
  EXPECT_NE(text.find(InFolder("empty")), std::string::npos) << text;
  EXPECT_EQ(TextOf(window->Handle()), "my web - Scrivo Host");
  EXPECT_EQ(DrawnTree(), "Home\n-First\n-Second\nHeading\n");
}

TEST_F(HostWindowTest, RemembersTheWebsThatWereOpened) {
  window->OpenWeb(web_path);
  EXPECT_EQ(RecentWebs::Read(), std::vector<std::string>{web_path});
  EXPECT_EQ(CommandIn(Menu("File"), "1 " + ShortenedPath(web_path, 60)), UINT{kFirstRecentId});
  Choose(Menu("File"), "Close Web\tCtrl+W");
  PumpMessages();
  EXPECT_EQ(TextOf(window->Handle()), "Scrivo Host");
  SendMessageA(window->Handle(), WM_COMMAND, kFirstRecentId, 0);
  EXPECT_EQ(TextOf(window->Handle()), "my web - Scrivo Host");
  // One that is gone is told of and forgotten.
  Choose(Menu("File"), "Close Web\tCtrl+W");
  std::filesystem::remove_all(web_path);
  EXPECT_NE(Told([&] {
              SendMessageA(window->Handle(), WM_COMMAND, kFirstRecentId, 0);
            }).find("does not exist"),
            std::string::npos);
  EXPECT_TRUE(RecentWebs::Read().empty());
}

TEST_F(HostWindowTest, RefreshReadsTheWebAnewAndKeepsTheSelection) {
  window->OpenWeb(web_path);
  HTREEITEM second = Next(Next(Next(nullptr, TVGN_ROOT), TVGN_CHILD), TVGN_NEXT);
  SendMessageA(Control(kTreeId), TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(second));
  Put("new.htm", "<title>New</title>");
  Choose(Menu("Tools"), "Refresh\tF5");
  PumpMessages();
  EXPECT_EQ(StatusText(0), "6 pages, 3 outside the navigation");
  EXPECT_EQ(TextOf(Control(kLocationId)), "docs/b.htm");
}

TEST_F(HostWindowTest, ToolsShowsTheBarWithPopupsAndSeparators) {
  const LateBound tools = Item(Object(application, L"CommandBars"), Variant::Text("Tools"));
  const LateBound popup =
      ObjectOf(Object(tools, L"Controls")
                   .Get(L"Add", Variant::Long(kBarPopup), Variant::Omitted(), Variant::Omitted(),
                        Variant::Omitted(), Variant::Boolean(true)));
  popup.Put(L"Caption", Variant::Text("Mine"));
  for (const char* caption : {"One", "Two", "Hidden"}) {
    const LateBound button = ObjectOf(Object(popup, L"Controls").Get(L"Add", Variant::Long(1)));
    button.Put(L"BeginGroup", Variant::Boolean(std::string(caption) != "Hidden"));
    button.Put(L"Caption", Variant::Text(caption));
    button.Put(L"Visible", Variant::Boolean(std::string(caption) != "Hidden"));
    button.Put(L"Enabled", Variant::Boolean(std::string(caption) != "Two"));
  }
  PumpMessages();
  EXPECT_EQ(Drawn(Menu("Tools")), "Refresh\tF5\nMine\n  One\n  -\n  Two\n");
  HMENU mine = SubMenu(Menu("Tools"), "Mine");
  EXPECT_EQ(GetMenuState(mine, CommandIn(mine, "Two"), MF_BYCOMMAND) & MF_GRAYED, UINT{MF_GRAYED});
  popup.Call(L"Delete", Variant::Omitted());
  PumpMessages();
  EXPECT_EQ(Drawn(Menu("Tools")), "Refresh\tF5\n");
}

TEST_F(HostWindowTest, ThePopupOnTheToolbarIsADropDownButton) {
  const auto popup = world->bars.Find("Standard")->Add(kBarPopup);
  popup->caption = "Mine";
  world->bars.Changed();
  PumpMessages();
  HWND toolbar = Control(kToolbarId);
  ASSERT_EQ(SendMessageA(toolbar, TB_BUTTONCOUNT, 0, 0), 3);
  TBBUTTON button{};
  SendMessageA(toolbar, TB_GETBUTTON, 2, reinterpret_cast<LPARAM>(&button));
  EXPECT_EQ(button.fsStyle & BTNS_WHOLEDROPDOWN, BTNS_WHOLEDROPDOWN);
  char text[64] = "";
  SendMessageA(toolbar, TB_GETBUTTONTEXTA, static_cast<WPARAM>(button.idCommand),
               reinterpret_cast<LPARAM>(text));
  EXPECT_STREQ(text, "Mine");
}

TEST_F(HostWindowTest, AMissingBarIsNotShown) {
  std::erase(world->bars.bars, world->bars.Find("Tools"));
  std::erase(world->bars.bars, world->bars.Find("Standard"));
  world->bars.Changed();
  window->Start(false);
  PumpMessages();
  EXPECT_EQ(Menu("Tools"), nullptr);
  EXPECT_FALSE(IsWindowVisible(Control(kToolbarId)));
}

TEST_F(HostWindowTest, AMenuCommandRunsTheButtonsCommandOnce) {
  int runs = 0;
  const auto tools = world->bars.Find("Tools");
  BarModel::AddCommand(tools.get(), 7, "Count", 0, [&] { ++runs; });
  world->bars.Changed();
  PumpMessages();
  const UINT command = CommandIn(Menu("Tools"), "Count");
  Choose(Menu("Tools"), "Count");
  EXPECT_EQ(runs, 1);
  // A command on its way keeps its meaning when the menus are made anew.
  world->bars.Changed();
  PumpMessages();
  EXPECT_EQ(CommandIn(Menu("Tools"), "Count"), command);
}

TEST_F(HostWindowTest, TabGoesThroughTheViews) {
  window->OpenWeb(web_path);
  window->Start(false);
  PumpMessages();
  EXPECT_EQ(GetNextDlgTabItem(window->Handle(), Control(kTreeId), FALSE), Control(kListId));
  EXPECT_EQ(GetNextDlgTabItem(window->Handle(), Control(kListId), FALSE), Control(kTreeId));
}

TEST_F(HostWindowTest, EveryControlStaysInsideAtEverySizeAndResolution) {
  window->OpenWeb(web_path);
  window->Start(false);
  PumpMessages();
  const auto expect_inside = [&](const std::string& when) {
    RECT client, common;
    GetWindowRect(window->Handle(), &client);
    for (const int id : {kTreeId, kListId, kTitleId, kLocationId, kStatusId}) {
      RECT place;
      GetWindowRect(Control(id), &place);
      IntersectRect(&common, &client, &place);
      EXPECT_TRUE(EqualRect(&common, &place)) << id << " " << when;
      EXPECT_GT(place.right - place.left, 20) << id << " " << when;
      EXPECT_GT(place.bottom - place.top, 10) << id << " " << when;
    }
    RECT tree, title;
    GetWindowRect(Control(kTreeId), &tree);
    GetWindowRect(Control(kTitleId), &title);
    EXPECT_LE(tree.bottom, title.top) << when;
  };
  for (const int width : {1, 900, 1270}) {
    MoveWindow(window->Handle(), 0, 0, width, width * 3 / 4, TRUE);
    expect_inside("at width " + std::to_string(width));
  }
  for (const int dpi : {96, 144, 192}) {
    RECT place{0, 0, 1200, 900};
    SendMessageA(window->Handle(), WM_DPICHANGED, MAKEWPARAM(dpi, dpi),
                 reinterpret_cast<LPARAM>(&place));
    expect_inside("at " + std::to_string(dpi));
  }
}

TEST_F(HostWindowTest, AccessKeysLeadToTheViews) {
  window->OpenWeb(web_path);
  window->Start(false);
  PumpMessages();
  EXPECT_EQ(GetFocus(), Control(kTreeId));
  MSG key{Control(kTreeId), WM_SYSCHAR, 'p', 1 << 29, 0, {}};
  EXPECT_TRUE(window->IsKey(&key));
  EXPECT_EQ(GetFocus(), Control(kListId));
  key = {Control(kListId), WM_SYSCHAR, 'n', 1 << 29, 0, {}};
  EXPECT_TRUE(window->IsKey(&key));
  EXPECT_EQ(GetFocus(), Control(kTreeId));
}

TEST_F(HostWindowTest, AFolderDroppedOnTheWindowIsOpened) {
  const std::size_t size = sizeof(DROPFILES) + web_path.size() + 2;
  HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, size);
  auto* files = static_cast<DROPFILES*>(GlobalLock(memory));
  files->pFiles = sizeof(DROPFILES);
  std::copy(web_path.begin(), web_path.end(), reinterpret_cast<char*>(files + 1));
  GlobalUnlock(memory);
  SendMessageA(window->Handle(), WM_DROPFILES, reinterpret_cast<WPARAM>(memory), 0);
  EXPECT_EQ(TextOf(window->Handle()), "my web - Scrivo Host");
}

// Remembers what the shell was asked to open.
struct RecordingShell : public ShellServices {
  std::string opened;
  WindowHandle DesktopWindow() override { return 0; }
  std::int32_t Execute(const ShellRequest& request) override {
    opened = request.verb + " " + request.file;
    return 33;
  }
  std::int32_t ExecuteExtended(const ExtendedShellRequest&) override { return 0; }
  std::int32_t SpecialFolderLocation(WindowHandle, std::int32_t, std::uintptr_t*) override {
    return 1;
  }
  void FreeItemList(std::uintptr_t) override {}
};

TEST_F(HostWindowTest, EnterOpensTheSelectedPage) {
  const auto shell = std::make_shared<RecordingShell>();
  TheServices().shell = shell;
  window->OpenWeb(web_path);
  window->Start(false);
  PumpMessages();
  SetFocus(Control(kListId));
  LVITEMA item{};
  item.state = item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
  SendMessageA(Control(kListId), LVM_SETITEMSTATE, 0, reinterpret_cast<LPARAM>(&item));
  EXPECT_EQ(TextOf(Control(kLocationId)), "loose.htm");
  MSG key{Control(kListId), WM_KEYDOWN, VK_RETURN, 1, 0, {}};
  EXPECT_TRUE(window->IsKey(&key));
  EXPECT_EQ(shell->opened, "open " + web_path + "\\loose.htm");
}

TEST_F(HostWindowTest, ADoubleClickOpensThePageInItsProgram) {
  const auto shell = std::make_shared<RecordingShell>();
  TheServices().shell = shell;
  window->OpenWeb(web_path);
  NMHDR header{Control(kTreeId), kTreeId, static_cast<UINT>(NM_DBLCLK)};
  SendMessageA(window->Handle(), WM_NOTIFY, kTreeId, reinterpret_cast<LPARAM>(&header));
  EXPECT_EQ(shell->opened, "open " + web_path + "\\index.htm");
}

TEST_F(HostWindowTest, AddInsAreListedWithTheirState) {
  EXPECT_NE(Told([&] { Choose(Menu("Help"), "Add-ins..."); }), "");
}

TEST_F(HostWindowTest, ClosingTakesTemporaryControlsAway) {
  const auto tools = world->bars.Find("Tools");
  tools->Add(kBarButton)->temporary = true;
  SendMessageA(window->Handle(), WM_CLOSE, 0, 0);
  EXPECT_EQ(tools->controls.size(), 1u);  // "Refresh", the window's own
  EXPECT_EQ(window->Handle(), nullptr);
  MSG message;
  EXPECT_TRUE(PeekMessageA(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
}

}  // namespace
}  // namespace scrivo::host
