#include "ui/win32/parameter_window.h"

#include <gtest/gtest.h>

#include "tests/doubles/real_services.h"
#include "tests/ui/win32/live_window.h"

namespace scrivo {
namespace {

Item MakeItem(const std::string& key, const std::string& caption, ItemKind kind) {
  Item item{};
  item.key = key;
  item.caption = caption;
  item.kind = kind;
  return item;
}

// Hears what the user does, and lays the form out as a presenter would.
class ParameterListener : public ParameterViewEvents {
 public:
  explicit ParameterListener(ItemPanel& panel) : panel_(panel) {}

  void Activated() override { log.push_back("activated"); }
  void Resized(float, float panel_width) override { panel_["PATH"].edit_width = panel_width - 315; }
  void ButtonClicked(const std::string& key) override {
    log.push_back("button " + key);
    if (on_button) on_button(key);
  }
  void ItemChanged(const std::string& key) override { log.push_back("item " + key); }
  void ItemButtonClicked(const std::string& key) override { log.push_back("browse " + key); }
  void CloseRequested() override { log.push_back("close"); }

  std::vector<std::string> log;
  std::function<void(const std::string&)> on_button;

 private:
  ItemPanel& panel_;
};

class ParameterWindowTest : public WithRealServices {
 protected:
  ParameterWindowTest() {
    panel["LIST"].entries = {{"First", "a.htm", 900}, {"Second", "b.htm", 900}};
    panel["LIST"].text = "Second";
    panel["LIST"].data = "b.htm";
    window = std::make_unique<ParameterWindow>(ParameterDesign{"Test", "GO", "CLOSE", 6000, 4500},
                                               panel, strip, listener);
  }

  HWND Edit() { return ControlsOf(window->Handle(), "EDIT").at(0); }
  HWND List() { return ControlsOf(window->Handle(), "COMBOBOX").at(0); }
  HWND Box() { return ButtonOf(window->Handle(), "Keep it"); }
  HWND Button(const std::string& text) { return ButtonOf(window->Handle(), text); }
  // Presses a key while the window is shown, then ends the display.
  void ShowAndPress(WPARAM key) {
    OnceShown([&, key] {
      PostMessageA(Edit(), WM_KEYDOWN, key, 0);
      OnceShown([&] { window->Hide(); });
    });
    window->ShowModal();
  }

  ItemPanel panel{{MakeItem("SEP", "", ItemKind::kSeparator),
                   MakeItem("PATH", "Path:", ItemKind::kTextWithButton),
                   MakeItem("LIST", "Page:", ItemKind::kList),
                   MakeItem("GROUP", "Options", ItemKind::kGroup),
                   MakeItem("KEEP", "Keep it", ItemKind::kCheckBox)}};
  ButtonStrip strip{
      {{.key = "SPACE"}, {.key = "GO", .caption = "Go"}, {.key = "CLOSE", .caption = "Close"}}};
  ParameterListener listener{panel};
  std::unique_ptr<ParameterWindow> window;
};

TEST_F(ParameterWindowTest, ShowsWhatTheRowsHold) {
  panel["PATH"].text = "C:\\x.chm";
  panel["KEEP"].checked = true;
  for (const char* key : {"PATH", "LIST", "KEEP"}) window->ShowItem(key);
  EXPECT_EQ(TextOf(Edit()), "C:\\x.chm");
  EXPECT_EQ(SendMessageA(List(), CB_GETCOUNT, 0, 0), 2);
  EXPECT_EQ(TextOf(List()), "Second");
  EXPECT_EQ(SendMessageA(Box(), BM_GETCHECK, 0, 0), BST_CHECKED);
  EXPECT_TRUE(listener.log.empty()) << "showing is not changing";
}

TEST_F(ParameterWindowTest, AmongEntriesOfOneTextTheOneWithTheDataIsChosen) {
  panel["LIST"].entries = {{"Page", "a.htm", 900}, {"Page", "b.htm", 900}};
  panel["LIST"].text = "A label that no entry has";
  window->ShowItem("LIST");
  EXPECT_EQ(SendMessageA(List(), CB_GETCURSEL, 0, 0), 1);
  panel["LIST"].data = "gone.htm";
  window->ShowItem("LIST");
  EXPECT_EQ(SendMessageA(List(), CB_GETCURSEL, 0, 0), CB_ERR);
}

TEST_F(ParameterWindowTest, TypingChangesTheRow) {
  SetWindowTextA(Edit(), "C:\\y.chm");
  EXPECT_EQ(panel["PATH"].text, "C:\\y.chm");
  EXPECT_EQ(listener.log.back(), "item PATH");
}

TEST_F(ParameterWindowTest, ChoosingFromTheListChangesTheRow) {
  SendMessageA(List(), CB_SETCURSEL, 0, 0);
  SendMessageA(GetParent(List()), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(List()), CBN_SELCHANGE),
               reinterpret_cast<LPARAM>(List()));
  EXPECT_EQ(panel["LIST"].text, "First");
  EXPECT_EQ(listener.log.back(), "item LIST");
}

TEST_F(ParameterWindowTest, TickingTheBoxChangesTheRow) {
  SendMessageA(Box(), BM_CLICK, 0, 0);
  EXPECT_TRUE(panel["KEEP"].checked);
  SendMessageA(Box(), BM_CLICK, 0, 0);
  EXPECT_FALSE(panel["KEEP"].checked);
  EXPECT_EQ(listener.log, (std::vector<std::string>{"item KEEP", "item KEEP"}));
}

TEST_F(ParameterWindowTest, TheBrowseButtonIsTold) {
  SendMessageA(Button("..."), BM_CLICK, 0, 0);
  EXPECT_EQ(listener.log, std::vector<std::string>{"browse PATH"});
}

TEST_F(ParameterWindowTest, ButtonsAreTold) {
  SendMessageA(Button("Go"), BM_CLICK, 0, 0);
  SendMessageA(Button("Close"), BM_CLICK, 0, 0);
  EXPECT_EQ(listener.log, (std::vector<std::string>{"button GO", "button CLOSE"}));
}

TEST_F(ParameterWindowTest, TheCloseBoxIsTold) {
  SendMessageA(window->Handle(), WM_CLOSE, 0, 0);
  EXPECT_EQ(listener.log, std::vector<std::string>{"close"});
}

TEST_F(ParameterWindowTest, ShownModallyItIsActivatedOnceAndEndsWhenHidden) {
  OnceShown([&] {
    EXPECT_TRUE(IsWindowVisible(window->Handle()));
    window->Hide();
  });
  window->ShowModal();
  EXPECT_FALSE(IsWindowVisible(window->Handle()));
  EXPECT_EQ(std::count(listener.log.begin(), listener.log.end(), "activated"), 1);
}

// A window of the host's, on view until the end of the test.
class HostWindow : public NativeWindow {
 public:
  HostWindow() {
    Create("Host", WS_OVERLAPPEDWINDOW, 0, nullptr, RECT{0, 0, 300, 200});
    ShowWindow(Handle(), SW_SHOWNOACTIVATE);
  }
};

// Where the user has put the form is undone by no return from elsewhere.
TEST_F(ParameterWindowTest, OnlyAShowingAndAnotherFormOfOursActivateIt) {
  const HostWindow form_of_ours;
  HWND box = CreateWindowA("STATIC", "A message box", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr,
                           nullptr, nullptr);
  const auto activated_by = [&](HWND other) {
    listener.log.clear();
    SendMessageA(window->Handle(), WM_ACTIVATE, WA_ACTIVE, reinterpret_cast<LPARAM>(other));
    return std::count(listener.log.begin(), listener.log.end(), "activated");
  };
  for (const char* showing : {"first", "second"}) {
    OnceShown([&] {
      EXPECT_EQ(std::count(listener.log.begin(), listener.log.end(), "activated"), 1) << showing;
      EXPECT_EQ(activated_by(nullptr), 0) << "another program, " << showing;
      EXPECT_EQ(activated_by(box), 0) << showing;
      EXPECT_EQ(activated_by(form_of_ours.Handle()), 1) << showing;
      EXPECT_EQ(activated_by(form_of_ours.Handle()), 1) << showing;
      window->Hide();
    });
    listener.log.clear();
    window->ShowModal();
  }
  DestroyWindow(box);
}

TEST_F(ParameterWindowTest, NoOtherWindowOfTheThreadCanBeUsedWhileItIsShown) {
  const HostWindow first, second, out_of_use;
  EnableWindow(out_of_use.Handle(), FALSE);
  SetActiveWindow(nullptr);
  OnceShown([&] {
    EXPECT_FALSE(IsWindowEnabled(first.Handle()));
    EXPECT_FALSE(IsWindowEnabled(second.Handle()));
    EXPECT_TRUE(IsWindowEnabled(window->Handle()));
    window->Hide();
    EXPECT_FALSE(IsWindowEnabled(first.Handle())) << "what has hidden it is not done yet";
  });
  window->ShowModal();
  EXPECT_TRUE(IsWindowEnabled(first.Handle()));
  EXPECT_TRUE(IsWindowEnabled(second.Handle()));
  EXPECT_FALSE(IsWindowEnabled(out_of_use.Handle())) << "it was so before";
}

TEST_F(ParameterWindowTest, DestroyedWhileItIsShownItLeavesTheOtherWindowsInUse) {
  const HostWindow host;
  OnceShown([&] { window.reset(); });
  window->ShowModal();
  EXPECT_TRUE(IsWindowEnabled(host.Handle()));
}

TEST_F(ParameterWindowTest, HiddenItLeavesTheFrontToTheWindowBehindIt) {
  const HostWindow host;
  SetForegroundWindow(host.Handle());
  OnceShown([&] { window->Hide(); });
  window->ShowModal();
  EXPECT_EQ(GetActiveWindow(), host.Handle());
}

TEST_F(ParameterWindowTest, OnlyKeysAreTakenFromAMessageLoopOfTheHosts) {
  const FormKeys keys;
  MSG message;
  PostMessageA(window->Handle(), WM_APP, 1, 2);
  ASSERT_TRUE(PeekMessageA(&message, window->Handle(), WM_APP, WM_APP, PM_REMOVE));
  EXPECT_EQ(message.message, static_cast<UINT>(WM_APP));
}

TEST_F(ParameterWindowTest, EnterPressesTheDefaultButtonAndEscapeTheCancelButton) {
  ShowAndPress(VK_RETURN);
  EXPECT_EQ(listener.log.back(), "button GO");
  ShowAndPress(VK_ESCAPE);
  EXPECT_EQ(listener.log.back(), "button CLOSE");
}

TEST_F(ParameterWindowTest, TabGoesFromRowToRowAndOnToTheButtons) {
  std::vector<HWND> order = {Edit(), Button("..."), List(), Box(), Button("Go"), Button("Close")};
  for (std::size_t i = 0; i + 1 < order.size(); ++i) {
    EXPECT_EQ(GetNextDlgTabItem(window->Handle(), order[i], FALSE), order[i + 1]) << i;
  }
}

TEST_F(ParameterWindowTest, TheWindowMayBeDestroyedFromItsOwnButton) {
  listener.on_button = [&](const std::string&) { window.reset(); };
  HWND go = Button("Go");
  OnceShown([go] { PostMessageA(go, BM_CLICK, 0, 0); });
  window->ShowModal();
  EXPECT_EQ(window, nullptr);
}

TEST_F(ParameterWindowTest, PlaceAndSizeAreInTwips) {
  window->Left(1440);
  window->Top(720);
  window->Width(7200);
  window->Height(6480);
  const int dpi = window->Dpi();
  RECT place;
  GetWindowRect(window->Handle(), &place);
  EXPECT_EQ(place.left, dpi);
  EXPECT_EQ(place.top, dpi / 2);
  EXPECT_EQ(place.right - place.left, 5 * dpi);
  EXPECT_EQ(place.bottom - place.top, 9 * dpi / 2);
  EXPECT_EQ(window->Left(), 1440);
  EXPECT_EQ(window->Top(), 720);
  EXPECT_EQ(window->Width(), 7200);
  EXPECT_EQ(window->Height(), 6480);
}

TEST_F(ParameterWindowTest, APlaceThatNoMonitorShowsIsPulledBackIntoView) {
  window->Left(-900000);
  window->Top(900000);
  OnceShown([&] {
    RECT place;
    GetWindowRect(window->Handle(), &place);
    EXPECT_NE(MonitorFromRect(&place, MONITOR_DEFAULTTONULL), nullptr);
    window->Hide();
  });
  window->ShowModal();
}

TEST_F(ParameterWindowTest, APlaceThatLeavesNothingToTakeHoldOfIsPulledBackIntoView) {
  RECT work;
  SystemParametersInfoA(SPI_GETWORKAREA, 0, &work, 0);
  window->Left(static_cast<float>(TwipsFromPixels(work.right - 2, window->Dpi())));
  window->Top(static_cast<float>(TwipsFromPixels(work.bottom - 2, window->Dpi())));
  OnceShown([&] {
    RECT place;
    GetWindowRect(window->Handle(), &place);
    EXPECT_LE(place.right, work.right);
    EXPECT_LE(place.bottom, work.bottom);
    window->Hide();
  });
  window->ShowModal();
}

TEST_F(ParameterWindowTest, AnyNumberIsAPlace) {
  for (const float twips : {1e30F, -1e30F}) {
    window->Left(twips);
    window->Width(twips);
    EXPECT_LE(std::abs(window->Left()), 1e9F);
  }
}

TEST_F(ParameterWindowTest, TheBrowseButtonStaysInsideAtEverySize) {
  for (const float twips : {1.0F, 6000.0F, 12000.0F}) {
    window->Width(twips);
    RECT button, outer;
    GetWindowRect(Button("..."), &button);
    GetWindowRect(window->Handle(), &outer);
    EXPECT_LE(button.right, outer.right);
    EXPECT_GT(button.right, button.left);
  }
}

}  // namespace
}  // namespace scrivo
