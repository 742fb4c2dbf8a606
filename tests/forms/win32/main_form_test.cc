// The compile dialog in its real window.

#include <algorithm>

#include "platform/settings.h"
#include "tests/doubles/memory_site.h"
#include "tests/forms/win32/forms_test.h"

namespace scrivo {

namespace {

class MainFormTest : public FormsTest {
 protected:
  MainFormTest() {
    home = site.AddNode(nullptr, "The handbook", site.AddPage("index.htm"));
    site.home = home;
    site.AddNode(nullptr, "Words & signs", site.AddPage("words.htm"));
    Globals().HostApplication = site.Host();
  }

  // Opens the dialog on the open web, lets the user do something and returns when it is closed.
  void Open(std::function<void()> user) {
    ASSERT_TRUE(frmMain::Load()->BuildUI());
    OnceShown(std::move(user));
    frmMain::Load()->ShowModal();
  }
  static std::string Chosen() {
    const auto at = SendMessageA(List(), CB_GETCURSEL, 0, 0);
    char text[64] = "";
    SendMessageA(List(), CB_GETLBTEXT, static_cast<WPARAM>(at), reinterpret_cast<LPARAM>(text));
    return text;
  }
  static void Choose(WPARAM entry) {
    SendMessageA(List(), CB_SETCURSEL, entry, 0);
    SendMessageA(GetParent(List()), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(List()), CBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(List()));
  }
  static void Key(WPARAM key) { PostMessageA(GetFocus(), WM_KEYDOWN, key, 0); }
  static void AltKey(char letter) {
    PostMessageA(GetFocus(), WM_SYSCHAR, static_cast<WPARAM>(letter), 1 << 29);
  }
  // Does something once the keys pressed so far have been taken.
  static void Then(std::function<void()> user) { OnceShown(std::move(user)); }

  MemorySite site;
  std::shared_ptr<SiteNode> home;
};

TEST_F(MainFormTest, ShowsTheWebsValuesWhenNothingIsSaved) {
  Open([] {
    EXPECT_EQ(TextOf(Edit(kMainTitle, 0)), "The handbook");
    EXPECT_EQ(SendMessageA(List(), CB_GETCOUNT, 0, 0), 2);
    EXPECT_EQ(Chosen(), "The handbook");
    EXPECT_EQ(TextOf(Edit(kMainTitle, 1)), "C:\\Webs\\site\\The handbook.CHM");
    EXPECT_TRUE(IsChecked(kMainTitle, "Generate index by keywords"));
    EXPECT_TRUE(IsChecked(kMainTitle, "Favorites tab"));
    EXPECT_TRUE(IsChecked(kMainTitle, "Open CHM after compilation"));
    EXPECT_TRUE(IsChecked(kMainTitle, "Don't close compilation log on success"));
    EXPECT_FALSE(IsChecked(kMainTitle, "Don't remove HTML Workshop project file"));
    Press(kMainTitle, "Close");
  });
  EXPECT_FALSE(frmMain::IsLoaded());
  EXPECT_EQ(Window(kMainTitle), nullptr);
}

TEST_F(MainFormTest, PlaceSizeAndValuesAreBackAfterClosing) {
  RECT place{};
  Open([&] {
    MoveWindow(Window(kMainTitle), 40, 50, 640, 520, TRUE);
    place = PlaceOf(Window(kMainTitle));
    SetWindowTextA(Edit(kMainTitle, 0), "Changed");
    SetWindowTextA(Edit(kMainTitle, 1), "D:\\out.chm");
    Choose(1);
    Press(kMainTitle, "Favorites tab");
    Press(kMainTitle, "Don't remove HTML Workshop project file");
    CloseBox(kMainTitle);
  });
  ASSERT_FALSE(frmMain::IsLoaded());
  Open([&] {
    const RECT again = PlaceOf(Window(kMainTitle));
    EXPECT_TRUE(EqualRect(&again, &place));
    EXPECT_EQ(TextOf(Edit(kMainTitle, 0)), "Changed");
    EXPECT_EQ(TextOf(Edit(kMainTitle, 1)), "D:\\out.chm");
    EXPECT_EQ(Chosen(), "Words & signs");
    EXPECT_EQ(frmMain::Load()->suiParams()["DEFAULTPAGE"].data, "file:///C:/Webs/site/words.htm");
    EXPECT_TRUE(IsChecked(kMainTitle, "Generate index by keywords"));
    EXPECT_FALSE(IsChecked(kMainTitle, "Favorites tab"));
    EXPECT_TRUE(IsChecked(kMainTitle, "Don't remove HTML Workshop project file"));
    CloseBox(kMainTitle);
  });
}

TEST_F(MainFormTest, TwoWebsKeepSeparateValues) {
  Open([] {
    SetWindowTextA(Edit(kMainTitle, 0), "One");
    CloseBox(kMainTitle);
  });
  MemorySite other("file:///C:/Webs/other", "C:\\Webs\\other");
  Globals().HostApplication = other.Host();
  Open([] {
    EXPECT_EQ(TextOf(Edit(kMainTitle, 0)), "other");
    EXPECT_EQ(TextOf(Edit(kMainTitle, 1)), "C:\\Webs\\other\\other.CHM");
    SetWindowTextA(Edit(kMainTitle, 0), "Two");
    CloseBox(kMainTitle);
  });
  Globals().HostApplication = site.Host();
  Open([] {
    EXPECT_EQ(TextOf(Edit(kMainTitle, 0)), "One");
    CloseBox(kMainTitle);
  });
}

TEST_F(MainFormTest, ASavedPlaceThatNoMonitorShowsIsPulledBackIntoView) {
  SaveSetting("Scrivo", site.url, "LEFT", "900000");
  SaveSetting("Scrivo", site.url, "TOP", "-900000");
  Open([] {
    RECT work;
    SystemParametersInfoA(SPI_GETWORKAREA, 0, &work, 0);
    const RECT place = PlaceOf(Window(kMainTitle));
    EXPECT_GE(place.left, work.left);
    EXPECT_GE(place.top, work.top);
    EXPECT_LE(place.right, work.right);
    EXPECT_LE(place.bottom, work.bottom);
    CloseBox(kMainTitle);
  });
}

TEST_F(MainFormTest, TheLayoutFollowsTheWindowFromTheSmallestToTheLargestSize) {
  Open([] {
    HWND window = Window(kMainTitle);
    const int dpi = ScreenDpi();
    for (const int width : {1, 640, 1270}) {
      MoveWindow(window, 0, 0, width, width, TRUE);
      HWND panel = GetParent(List()), strip = GetParent(Button(kMainTitle, "Generate"));
      const auto expected = [&](float beside) {
        return PixelsFromTwips(static_cast<float>(TwipsFromPixels(WidthOf(panel), dpi)) - beside,
                               dpi);
      };
      EXPECT_EQ(WidthOf(Edit(kMainTitle, 0)), expected(780)) << width;
      EXPECT_EQ(WidthOf(List()), expected(150)) << width;
      EXPECT_EQ(WidthOf(Edit(kMainTitle, 1)), expected(315)) << width;

      ButtonStrip& items = frmMain::Load()->suiButtons();
      const float strip_width = static_cast<float>(TwipsFromPixels(WidthOf(strip), dpi));
      const float rest = strip_width - (items.ItemsWidth() - items["SPACE"].width) - 90;
      EXPECT_EQ(items["SPACE"].width, std::max(rest, 15.0F)) << width;

      ExpectTidy(kMainTitle);
    }
    CloseBox(kMainTitle);
  });
}

TEST_F(MainFormTest, TheListTakesManyPages) {
  for (int i = 0; i < 10000; ++i) {
    const std::string number = std::to_string(i);
    site.AddNode(nullptr, "Page " + number, site.AddPage("page" + number + ".htm"));
  }
  Open([] {
    EXPECT_EQ(SendMessageA(List(), CB_GETCOUNT, 0, 0), 10002);
    Choose(7779);
    EXPECT_EQ(Chosen(), "Page 7777");
    CloseBox(kMainTitle);
  });
  EXPECT_EQ(GetSetting("Scrivo", site.url, "DEFAULTPAGE"), "file:///C:/Webs/site/page7777.htm");
}

TEST_F(MainFormTest, TheKeyboardReachesEveryControlInReadingOrder) {
  Open([] {
    const std::vector<HWND> order = {Edit(kMainTitle, 0),
                                     List(),
                                     Edit(kMainTitle, 1),
                                     Button(kMainTitle, "..."),
                                     Button(kMainTitle, "Generate index by keywords"),
                                     Button(kMainTitle, "Favorites tab"),
                                     Button(kMainTitle, "Open CHM after compilation"),
                                     Button(kMainTitle, "Don't close compilation log on success"),
                                     Button(kMainTitle, "Don't remove HTML Workshop project file"),
                                     Button(kMainTitle, "Generate"),
                                     Button(kMainTitle, "Help"),
                                     Button(kMainTitle, "Close")};
    EXPECT_EQ(GetFocus(), order[0]);
    ExpectTabOrder(kMainTitle, order);
    CloseBox(kMainTitle);
  });
}

TEST_F(MainFormTest, TabMovesTheFocus) {
  Open([] {
    Key(VK_TAB);
    Then([] {
      EXPECT_EQ(GetFocus(), List());
      CloseBox(kMainTitle);
    });
  });
}

TEST_F(MainFormTest, EveryControlHasAnAccessKeyOfItsOwn) {
  Open([] {
    ExpectAccessKeys(kMainTitle, 11);
    CloseBox(kMainTitle);
  });
}

TEST_F(MainFormTest, AnAccessKeyTicksItsBoxAndACaptionsLeadsToItsField) {
  Open([] {
    AltKey('f');
    Then([] {
      EXPECT_FALSE(IsChecked(kMainTitle, "Favorites tab"));
      EXPECT_EQ(GetFocus(), Button(kMainTitle, "Favorites tab"));
      AltKey('t');
      Then([] {
        EXPECT_EQ(GetFocus(), Edit(kMainTitle, 0));
        CloseBox(kMainTitle);
      });
    });
  });
  EXPECT_EQ(GetSetting("Scrivo", site.url, "FAVORITES"), "0");
}

TEST_F(MainFormTest, EscapeClosesAndSaves) {
  Open([] {
    SetWindowTextA(Edit(kMainTitle, 0), "Left by Escape");
    Key(VK_ESCAPE);
  });
  EXPECT_FALSE(frmMain::IsLoaded());
  EXPECT_EQ(GetSetting("Scrivo", site.url, "TITLE"), "Left by Escape");
}

TEST_F(MainFormTest, EnterOnAButtonPressesThatButton) {
  Open([] {
    SetFocus(Button(kMainTitle, "Close"));
    Key(VK_RETURN);
  });
  EXPECT_FALSE(frmMain::IsLoaded());
}

TEST_F(MainFormTest, TheKeyboardComesBackToWhereItWas) {
  Open([] {
    SetFocus(Button(kMainTitle, "Help"));
    HWND window = Window(kMainTitle);
    SendMessageA(window, WM_ACTIVATE, WA_INACTIVE, 0);
    SetFocus(nullptr);
    SendMessageA(window, WM_ACTIVATE, WA_ACTIVE, 0);
    EXPECT_EQ(GetFocus(), Button(kMainTitle, "Help"));
    CloseBox(kMainTitle);
  });
}

TEST_F(MainFormTest, MaximizedItKeepsThePlaceThatItHadBefore) {
  RECT place{};
  Open([&] {
    MoveWindow(Window(kMainTitle), 80, 90, 640, 520, TRUE);
    place = PlaceOf(Window(kMainTitle));
    ShowWindow(Window(kMainTitle), SW_MAXIMIZE);
    CloseBox(kMainTitle);
  });
  Open([&] {
    const RECT again = PlaceOf(Window(kMainTitle));
    EXPECT_TRUE(EqualRect(&again, &place));
    CloseBox(kMainTitle);
  });
}

// A host application's window.
class Host : public NativeWindow {
 public:
  Host() {
    CreateWide("HostWindow", "Host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0);
    SetWindowPos(Handle(), nullptr, 0, 0, 300, 200, SWP_NOZORDER);
    SetForegroundWindow(Handle());
  }
};

TEST_F(MainFormTest, AViewerThatWasOpenedForTheDialogOutlivesIt) {
  const Host host;
  HWND viewer = nullptr;
  Open([&] {
    viewer = CreateWindowA("STATIC", "The help viewer", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50,
                           Window(kMainTitle), nullptr, nullptr, nullptr);
    CloseBox(kMainTitle);
  });
  ASSERT_EQ(Window(kMainTitle), nullptr);
  EXPECT_TRUE(IsWindowVisible(viewer));
  EXPECT_EQ(GetWindow(viewer, GW_OWNER), host.Handle());
  DestroyWindow(viewer);
}

TEST_F(MainFormTest, TheHostWaitsForTheDialogAndIsBackAfterwards) {
  const Host host;
  Open([&] {
    EXPECT_FALSE(IsWindowEnabled(host.Handle()));
    EXPECT_EQ(GetWindow(Window(kMainTitle), GW_OWNER), host.Handle());
    CloseBox(kMainTitle);
  });
  EXPECT_TRUE(IsWindowEnabled(host.Handle()));
  EXPECT_EQ(GetActiveWindow(), host.Handle());
}

}  // namespace
}  // namespace scrivo
