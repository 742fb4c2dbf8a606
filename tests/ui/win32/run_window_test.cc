#include "ui/win32/run_window.h"

#include <gtest/gtest.h>

#include "tests/doubles/real_services.h"
#include "tests/ui/win32/live_window.h"

namespace scrivo {
namespace {

class RunWindowTest : public WithRealServices {
 protected:
  std::string Transcript() { return TextOf(ControlsOf(window.Handle(), "EDIT").at(0)); }
  HWND Close() { return ButtonOf(window.Handle(), "Close"); }

  int closes = 0;
  RunWindow window{[this] { ++closes; }};
};

TEST_F(RunWindowTest, ShowsTheTranscriptAsItGrows) {
  window.ShowModeless();
  EXPECT_TRUE(IsWindowVisible(window.Handle()));
  window.ReplaceTranscript("Starting\r\n");
  window.AppendTranscript("a.htm\r\nb.h");
  window.AppendTranscript("tm\r\n");
  window.EnableClose(true);
  EXPECT_EQ(Transcript(), "Starting\r\na.htm\r\nb.htm\r\n");
}

TEST_F(RunWindowTest, TheTranscriptCannotBeTypedInto) {
  HWND edit = ControlsOf(window.Handle(), "EDIT").at(0);
  EXPECT_TRUE(GetWindowLongA(edit, GWL_STYLE) & ES_READONLY);
  EXPECT_TRUE(GetWindowLongA(edit, GWL_STYLE) & ES_MULTILINE);
}

TEST_F(RunWindowTest, ALongRunShowsItsTailAndAtTheEndTheWhole) {
  window.ShowModeless();
  window.EnableClose(false);
  std::string all = "Starting\r\n";
  window.ReplaceTranscript(all);
  for (int i = 0; i < 20000; ++i) {
    const std::string chunk = "page" + std::to_string(i) + ".htm\r\n";
    all += chunk;
    window.AppendTranscript(chunk);
  }
  window.ShowHeldBack();
  const std::string tail = Transcript();
  EXPECT_LE(tail.size(), 16u * 1024);
  EXPECT_GT(tail.size(), 7u * 1024);
  EXPECT_TRUE(all.ends_with(tail));
  window.EnableClose(true);
  EXPECT_EQ(Transcript(), all);
}

TEST_F(RunWindowTest, WhatAFloodHasHeldBackIsShownBeforeTheToolIsWaitedFor) {
  window.ShowModeless();
  window.EnableClose(false);
  int line = 0;
  bool is_held_back = false;
  while (!is_held_back) {
    // Looking costs time too, and after a pause new output is shown at once.
    std::string last;
    for (int i = 0; i < 1000; ++i) {
      last = "page" + std::to_string(++line) + ".htm\r\n";
      window.AppendTranscript(last);
    }
    is_held_back = !Transcript().ends_with(last);
  }
  const std::string last = "page" + std::to_string(line) + ".htm\r\n";
  window.ShowHeldBack();
  EXPECT_TRUE(Transcript().ends_with(last));
}

TEST_F(RunWindowTest, OfAnEnormousRunTheEndIsShownAndItIsSaidSo) {
  window.ShowModeless();
  window.EnableClose(false);
  std::string all;
  for (int i = 0; all.size() < 3 * 1024 * 1024; ++i) {
    all += std::to_string(1000000 + i) + std::string(503, 'x') + "\r\n";
  }
  window.AppendTranscript(all);
  window.EnableClose(true);
  const std::string shown = Transcript();
  EXPECT_LE(shown.size(), 1024u * 1024 + 100);
  const std::string head = "[2097664 characters of output before this are not shown]\r\n";
  EXPECT_EQ(shown.substr(0, head.size()), head);
  EXPECT_EQ(shown.substr(head.size()), all.substr(2097664));
}

TEST_F(RunWindowTest, TheWindowCannotBeClosedWhileARunLasts) {
  window.ShowModeless();
  window.EnableClose(false);
  EXPECT_FALSE(IsWindowEnabled(Close()));
  EXPECT_TRUE(GetMenuState(GetSystemMenu(window.Handle(), FALSE), SC_CLOSE, MF_BYCOMMAND) &
              MF_GRAYED);
  SendMessageA(window.Handle(), WM_CLOSE, 0, 0);
  EXPECT_EQ(closes, 0);
  window.EnableClose(true);
  EXPECT_TRUE(IsWindowEnabled(Close()));
  SendMessageA(window.Handle(), WM_CLOSE, 0, 0);
  EXPECT_EQ(closes, 1);
}

TEST_F(RunWindowTest, TheCloseButtonAndEscapeClose) {
  window.ShowModeless();
  SendMessageA(Close(), BM_CLICK, 0, 0);
  EXPECT_EQ(closes, 1);
  PostMessageA(window.Handle(), WM_KEYDOWN, VK_ESCAPE, 0);
  PumpMessages();
  EXPECT_EQ(closes, 2);
}

TEST_F(RunWindowTest, TheProgressPanelShowsTheCaption) {
  window.SetProgress("37 %", 37);
  bool found = false;
  for (HWND panel : ControlsOf(window.Handle(), "ScrivoWindow")) found |= TextOf(panel) == "37 %";
  EXPECT_TRUE(found);
}

TEST_F(RunWindowTest, TheProgressPanelIsFilledFromTheLeft) {
  window.ShowModeless();
  window.SetProgress("", 50);
  window.Repaint();
  HWND panel = ControlsOf(window.Handle(), "ScrivoWindow").at(0);
  RECT client;
  GetClientRect(panel, &client);
  HDC device = GetDC(panel);
  const COLORREF left = GetPixel(device, client.right / 4, client.bottom / 2);
  const COLORREF right = GetPixel(device, client.right * 3 / 4, client.bottom / 2);
  ReleaseDC(panel, device);
  EXPECT_EQ(left, GetSysColor(COLOR_HIGHLIGHT));
  EXPECT_EQ(right, GetSysColor(COLOR_WINDOW));
}

TEST_F(RunWindowTest, EveryControlStaysInsideAtItsSmallestAndAtALargeSize) {
  window.ShowModeless();
  for (const SIZE size : {SIZE{1, 1}, SIZE{1000, 700}}) {
    MoveWindow(window.Handle(), 0, 0, size.cx, size.cy, TRUE);
    RECT outer;
    GetWindowRect(window.Handle(), &outer);
    for (const char* kind : {"EDIT", "BUTTON", "ScrivoWindow"}) {
      for (HWND control : ControlsOf(window.Handle(), kind)) {
        RECT place;
        GetWindowRect(control, &place);
        EXPECT_GE(place.left, outer.left);
        EXPECT_LE(place.right, outer.right);
        EXPECT_GE(place.top, outer.top);
        EXPECT_LE(place.bottom, outer.bottom);
        EXPECT_GT(place.bottom, place.top);
      }
    }
  }
}

}  // namespace
}  // namespace scrivo
