#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "compiler/frm_hhc.h"
#include "decompile/frm_decompile.h"
#include "generator/frm_main.h"
#include "platform/registry.h"
#include "platform/win32/services.h"
#include "tests/doubles/memory_registry.h"
#include "tests/doubles/real_services.h"
#include "tests/ui/win32/live_window.h"
#include "ui/win32/win32_views.h"

namespace scrivo {

inline constexpr char kMainTitle[] = "Scrivo - compile the open web";
inline constexpr char kRunTitle[] = "Scrivo - compiler output";
inline constexpr char kDecompileTitle[] = "Scrivo - decompile a help file";
inline constexpr char kErrorTitle[] = "Scrivo";

// The desktop, on which somebody looks around after every pass of the message loop.
class WatchedDesktop : public Win32Desktop {
 public:
  std::function<void()> on_pass;

  void ProcessMessages() override {
    Win32Desktop::ProcessMessages();
    if (on_pass) on_pass();
  }
};

// A test of the forms in real windows, with the real system but for a registry in memory, which
// names the folder of the test program as the compiler's.
class FormsTest : public WithRealServices {
 protected:
  FormsTest() {
    TheServices().registry = std::make_shared<MemoryRegistry>();
    TheServices().desktop = desktop;
    Globals().views = std::make_shared<Win32Views>([] { frmHHC::Unload(); });
    SetCompilerFolder(TheServices().system->ModuleFolder());
  }
  ~FormsTest() override {
    frmMain::Unload();
    frmDecompile::Unload();
    frmHHC::Unload();
    Globals() = GlobalState();
  }

  static void SetCompilerFolder(const std::string& folder) {
    CRegistry registry;
    registry.Init(kHkeyCurrentUser);
    registry.SetValue("Software\\Microsoft\\HTML Help Workshop", "InstallDir", folder, kRegSz);
  }
  // The form with this title; null when there is none.
  static HWND Window(const std::string& title) {
    return FindWindowA("ScrivoWindow", title.c_str());
  }
  static HWND Button(const std::string& title, const std::string& caption) {
    return ButtonOf(Window(title), caption);
  }
  static void Press(const std::string& title, const std::string& caption) {
    SendMessageA(Button(title, caption), BM_CLICK, 0, 0);
  }
  static void CloseBox(const std::string& title) { SendMessageA(Window(title), WM_CLOSE, 0, 0); }
  static HWND Edit(const std::string& title, std::size_t number) {
    return ControlsOf(Window(title), "EDIT").at(number);
  }
  static HWND List() { return ControlsOf(Window(kMainTitle), "COMBOBOX").at(0); }
  static bool IsChecked(const std::string& title, const std::string& caption) {
    return SendMessageA(Button(title, caption), BM_GETCHECK, 0, 0) == BST_CHECKED;
  }
  static RECT PlaceOf(HWND window) {
    RECT place{};
    GetWindowRect(window, &place);
    return place;
  }
  // Holds that every control of a form lies inside it, covers no other, and is wide enough for its
  // text.
  static void ExpectTidy(const std::string& title);
  // Holds that Tab goes through these controls in this order and round again.
  static void ExpectTabOrder(const std::string& title, const std::vector<HWND>& order);
  // Holds that the captions of these many controls have an access key each, all different.
  static void ExpectAccessKeys(const std::string& title, int count);
  static int ScreenDpi() {
    HDC screen = GetDC(nullptr);
    const int dpi = GetDeviceCaps(screen, LOGPIXELSX);
    ReleaseDC(nullptr, screen);
    return dpi;
  }
  static int WidthOf(HWND window) { return PlaceOf(window).right - PlaceOf(window).left; }

  std::shared_ptr<WatchedDesktop> desktop = std::make_shared<WatchedDesktop>();
};

}  // namespace scrivo
