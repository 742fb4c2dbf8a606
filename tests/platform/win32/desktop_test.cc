// Message boxes, windows and messages of the real desktop.

#include <set>
#include <string>

#include "platform/win32/services.h"
#include "tests/doubles/real_services.h"
#include "tests/platform/win32/dialog_answer.h"

namespace scrivo {
namespace {

class Win32DesktopTest : public WithRealServices {
 protected:
  Desktop& desktop = *TheServices().desktop;
};

// A window of a test's own class that counts the messages it gets.
class TestWindow {
 public:
  static constexpr UINT kCounted = WM_APP + 1;

  TestWindow(const char* class_name, const char* caption) : class_name_(class_name) {
    WNDCLASSA window_class{};
    window_class.lpfnWndProc = &TestWindow::Procedure;
    window_class.hInstance = GetModuleHandleA(nullptr);
    window_class.lpszClassName = class_name;
    RegisterClassA(&window_class);
    counted = 0;
    handle = CreateWindowA(class_name, caption, WS_OVERLAPPEDWINDOW, 0, 0, 100, 100, nullptr,
                           nullptr, window_class.hInstance, nullptr);
  }
  ~TestWindow() {
    if (IsWindow(handle)) DestroyWindow(handle);
    UnregisterClassA(class_name_, GetModuleHandleA(nullptr));
  }

  HWND handle;
  static inline int counted = 0;

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == kCounted) ++counted;
    return DefWindowProcA(window, message, wparam, lparam);
  }

  const char* class_name_;
};

std::string TextOf(HWND window) {
  char text[200] = "";
  GetWindowTextA(window, text, sizeof text);
  return text;
}

TEST_F(Win32DesktopTest, AMessageBoxShowsItsTextAndGivesTheButton) {
  const struct {
    int button;
    MessageAnswer answer;
  } cases[] = {{IDABORT, MessageAnswer::kAbort},
               {IDRETRY, MessageAnswer::kRetry},
               {IDIGNORE, MessageAnswer::kIgnore}};
  for (const auto& one : cases) {
    std::string caption, text;
    bool has_ok = true;
    DialogAnswer user([&](HWND dialog) {
      caption = TextOf(dialog);
      text = TextOf(GetDlgItem(dialog, 0xFFFF));
      has_ok = GetDlgItem(dialog, IDOK) != nullptr;
      Press(dialog, one.button);
    });
    EXPECT_EQ(desktop.ShowMessage("The text", kAbortRetryIgnore, "Scrivo"), one.answer);
    EXPECT_EQ(caption, "Scrivo");
    EXPECT_EQ(text, "The text");
    EXPECT_FALSE(has_ok);
  }
}

TEST_F(Win32DesktopTest, AQuestionGivesYesOrNo) {
  {
    DialogAnswer user([](HWND dialog) { Press(dialog, IDYES); });
    EXPECT_EQ(desktop.ShowMessage("?", kYesNo | kQuestion, "Scrivo"), MessageAnswer::kYes);
  }
  DialogAnswer user([](HWND dialog) { Press(dialog, IDNO); });
  EXPECT_EQ(desktop.ShowMessage("?", kYesNo | kQuestion, "Scrivo"), MessageAnswer::kNo);
}

TEST_F(Win32DesktopTest, OnePassHandlesEveryWaitingMessageAndReturns) {
  TestWindow window("ScrivoTestWindow", "");
  for (int i = 0; i < 3; ++i) PostMessageA(window.handle, TestWindow::kCounted, 0, 0);
  desktop.ProcessMessages();
  EXPECT_EQ(TestWindow::counted, 3);
  desktop.ProcessMessages();
  EXPECT_EQ(TestWindow::counted, 3);
}

TEST_F(Win32DesktopTest, TheRequestToEndTheProgramIsLeftForItsOwnLoop) {
  PostQuitMessage(5);
  desktop.ProcessMessages();
  MSG message;
  ASSERT_TRUE(PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE));
  EXPECT_EQ(message.message, WM_QUIT + 0u);
  EXPECT_EQ(message.wParam, 5u);
}

TEST_F(Win32DesktopTest, FindsAHelpViewerByClassAndCaptionAndClosesIt) {
  TestWindow window("HH Parent", "My help file");
  EXPECT_EQ(desktop.FindTopLevelWindow("HH Parent", "Another help file"), 0u);
  EXPECT_EQ(desktop.FindTopLevelWindow("Another class", "My help file"), 0u);
  const WindowHandle found = desktop.FindTopLevelWindow("HH Parent", "My help file");
  EXPECT_EQ(found, reinterpret_cast<WindowHandle>(window.handle));
  desktop.SendToWindow(found, kCloseMessage);
  EXPECT_FALSE(IsWindow(window.handle));
  EXPECT_EQ(desktop.FindTopLevelWindow("HH Parent", "My help file"), 0u);
}

TEST_F(Win32DesktopTest, ABeepReturns) { desktop.Beep(); }

TEST_F(Win32DesktopTest, AMissingHelpFileOrViewerIsSilent) {
  EXPECT_EQ(desktop.HtmlHelp(0, InFolder("none.chm"), kHelpDisplayTopic, "index.html"), 0u);
}

}  // namespace
}  // namespace scrivo
