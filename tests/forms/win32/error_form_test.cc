// The error dialog in its real window, as the error handler shows it.

#include "errors/dialog/frm_error_message.h"
#include "tests/doubles/fake_shell.h"
#include "tests/doubles/memory_site.h"
#include "tests/forms/win32/forms_test.h"

namespace scrivo {
namespace {

constexpr char kReport[] = "Error 70: Permission denied\r\n\tin Kestrel.frmMain.Generate";

class ErrorFormTest : public FormsTest {
 protected:
  ErrorFormTest() { TheServices().shell = shell; }

  // Shows the report, lets the user do something and gives the answer.
  std::string Ask(std::function<void()> user, const std::string& support_mail = "") {
    OnceShown(std::move(user));
    return ErrorMessageDialog().Ask(kReport, support_mail);
  }

  std::shared_ptr<FakeShell> shell = std::make_shared<FakeShell>();
};

TEST_F(ErrorFormTest, EachButtonIsAnAnswer) {
  EXPECT_EQ(Ask([] { Press(kErrorTitle, "Abort"); }), "ABORT");
  EXPECT_EQ(Ask([] { Press(kErrorTitle, "Retry"); }), "RETRY");
  EXPECT_EQ(Ask([] { Press(kErrorTitle, "Ignore"); }), "IGNORE");
}

TEST_F(ErrorFormTest, ClosingItOtherwiseIsNoAnswer) {
  EXPECT_EQ(Ask([] { CloseBox(kErrorTitle); }), "");
  EXPECT_EQ(Ask([] { PostMessageA(GetFocus(), WM_KEYDOWN, VK_ESCAPE, 0); }), "");
}

TEST_F(ErrorFormTest, EnterGivesTheFirstAnswer) {
  EXPECT_EQ(Ask([] { PostMessageA(GetFocus(), WM_KEYDOWN, VK_RETURN, 0); }), "ABORT");
}

TEST_F(ErrorFormTest, TheTextTakesEnterAndLetsTabAndEscapePass) {
  const std::string answer = Ask([] {
    HWND text = Edit(kErrorTitle, 0);
    SetFocus(text);
    SendMessageA(text, EM_SETSEL, 0, 0);
    PostMessageA(text, WM_KEYDOWN, VK_RETURN, 0);
    OnceShown([text] {
      EXPECT_EQ(TextOf(text).find("\r\n"), 0U);
      PostMessageA(text, WM_KEYDOWN, VK_TAB, 0);
      OnceShown([text] {
        EXPECT_EQ(GetFocus(), Button(kErrorTitle, "Abort"));
        SetFocus(text);
        PostMessageA(text, WM_KEYDOWN, VK_ESCAPE, 0);
      });
    });
  });
  EXPECT_EQ(answer, "");
}

TEST_F(ErrorFormTest, EnterOnAFocusedButtonPressesThatOne) {
  EXPECT_EQ(Ask([] {
              SetFocus(Button(kErrorTitle, "Ignore"));
              PostMessageA(GetFocus(), WM_KEYDOWN, VK_RETURN, 0);
            }),
            "IGNORE");
}

TEST_F(ErrorFormTest, AnAccessKeyAnswers) {
  EXPECT_EQ(Ask([] { PostMessageA(GetFocus(), WM_SYSCHAR, 'r', 1 << 29); }), "RETRY");
}

TEST_F(ErrorFormTest, ShowsTheReportWithTheHostsVersionAndTheTitle) {
  MemorySite site;
  Globals().HostApplication = site.Host();
  Ask([] {
    EXPECT_EQ(TextOf(Edit(kErrorTitle, 0)),
              std::string(kReport) + "\r\nFrontPage Version: 12.0.0.6211");
    EXPECT_EQ(TextOf(ControlsOf(Window(kErrorTitle), "STATIC").at(1)),
              "An error occurred in Scrivo");
    CloseBox(kErrorTitle);
  });
}

TEST_F(ErrorFormTest, WithoutAnAddressThereIsNoMailButton) {
  Ask([] {
    EXPECT_EQ(Button(kErrorTitle, "Send to support"), nullptr);
    CloseBox(kErrorTitle);
  });
}

TEST_F(ErrorFormTest, SendingMailKeepsTheDialogOpen) {
  const std::string answer = Ask(
      [] {
        Press(kErrorTitle, "Send to support");
        Press(kErrorTitle, "Send to support");
        Press(kErrorTitle, "Retry");
      },
      "help@example.org");
  EXPECT_EQ(answer, "RETRY");
  const std::size_t mails = shell->requests.size() + shell->extended_requests.size();
  EXPECT_EQ(mails, 2U);
}

TEST_F(ErrorFormTest, EveryControlIsReachedByTabAndStaysInsideAtEverySize) {
  Ask(
      [] {
        ExpectTabOrder(kErrorTitle, {Edit(kErrorTitle, 0), Button(kErrorTitle, "Abort"),
                                     Button(kErrorTitle, "Retry"), Button(kErrorTitle, "Ignore"),
                                     Button(kErrorTitle, "Send to support")});
        ExpectAccessKeys(kErrorTitle, 4);
        for (const int width : {1, 1270}) {
          MoveWindow(Window(kErrorTitle), 0, 0, width, width * 3 / 4, TRUE);
          ExpectTidy(kErrorTitle);
        }
        CloseBox(kErrorTitle);
      },
      "help@example.org");
}

}  // namespace
}  // namespace scrivo
