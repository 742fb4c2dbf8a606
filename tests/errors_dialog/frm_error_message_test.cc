#include "errors/dialog/frm_error_message.h"

#include "tests/doubles/fake_form_views.h"
#include "tests/doubles/fake_services.h"
#include "tests/doubles/memory_site.h"

namespace scrivo {
namespace {

constexpr char kReport[] = "21.11.2026 - 14:05:09\r\n\tError: 76, (Path not found)\r\nThe call";

class ErrorMessageTest : public WithFakeServices {
 protected:
  ErrorMessageTest() { Globals().views = views; }
  ~ErrorMessageTest() override { Globals() = GlobalState(); }

  std::shared_ptr<FakeFormViews> views = std::make_shared<FakeFormViews>();
  ShownError& shown = views->error;
  MemorySite site;
};

TEST_F(ErrorMessageTest, WithoutAHostTheReportStandsAlone) {
  frmErrorMessage form;
  form.ErrorMessage(kReport);
  EXPECT_EQ(form.ErrorMessage(), kReport);
}

TEST_F(ErrorMessageTest, WithAHostItsVersionIsAdded) {
  Globals().HostApplication = site.Host();
  frmErrorMessage form;
  form.ErrorMessage(kReport);
  EXPECT_EQ(form.ErrorMessage(), std::string(kReport) + "\r\nFrontPage Version: 12.0.0.6211");
}

TEST_F(ErrorMessageTest, AHostThatFailsLeavesTheReportAlone) {
  Globals().HostApplication = site.Host();
  site.Fail("Version", 1);
  frmErrorMessage form;
  form.ErrorMessage(kReport);
  EXPECT_EQ(form.ErrorMessage(), kReport);
}

TEST_F(ErrorMessageTest, ActivationSetsTheTitleAndBeeps) {
  frmErrorMessage form;
  form.ShowModal();
  EXPECT_EQ(shown.title, "An error occurred in Scrivo");
  EXPECT_EQ(desktop->beeps, 1);
}

TEST_F(ErrorMessageTest, ATextThatCannotBeShownCostsTheReportOnlyThat) {
  Globals().HostApplication = site.Host();
  frmErrorMessage form;
  shown.failing = {"message"};
  EXPECT_NO_THROW(form.ErrorMessage(kReport));
  EXPECT_EQ(form.ErrorMessage(), "\r\nFrontPage Version: 12.0.0.6211");
}

TEST_F(ErrorMessageTest, AFailingStepOfTheActivationIsSkippedAlone) {
  for (const char* failing : {"title", "buttons"}) {
    frmErrorMessage form;
    form.SupportMail("help@example.org");
    shown.failing = {failing};
    desktop->beeps = 0;
    EXPECT_NO_THROW(form.ShowModal()) << failing;
    EXPECT_EQ(shown.title.empty(), failing == std::string("title"));
    EXPECT_EQ(shown.buttons.empty(), failing == std::string("buttons"));
    EXPECT_EQ(desktop->beeps, 1) << failing;
  }
}

TEST_F(ErrorMessageTest, AMailButtonThatIsGoneLeavesTheRestOfTheActivation) {
  frmErrorMessage form;
  form.SupportMail("help@example.org");
  form.suiButtons().Remove("MAIL");
  EXPECT_NO_THROW(form.ShowModal());
  EXPECT_EQ(shown.buttons, (std::vector<std::string>{"SPACER", "ABORT", "RETRY", "IGNORE"}));
  EXPECT_EQ(desktop->beeps, 1);
}

TEST_F(ErrorMessageTest, ABeepThatFailsIsSilent) {
  class Mute : public FakeDesktop {
   public:
    void Beep() override { throw Error(kInternalError, "Mute", "no sound"); }
  };
  TheServices().desktop = std::make_shared<Mute>();
  frmErrorMessage form;
  EXPECT_NO_THROW(form.ShowModal());
  EXPECT_EQ(shown.title, "An error occurred in Scrivo");
  EXPECT_EQ(ErrorLog(), "");
}

TEST_F(ErrorMessageTest, AWindowThatCannotBeHiddenStillGivesItsAnswer) {
  frmErrorMessage form;
  shown.failing = {"hide"};
  shown.on_show = [&] { EXPECT_NO_THROW(shown.events->ButtonClicked("IGNORE")); };
  form.ShowModal();
  EXPECT_EQ(form.Tag(), "IGNORE");
}

TEST_F(ErrorMessageTest, WithoutASupportMailThereIsNoMailButton) {
  frmErrorMessage form;
  form.ShowModal();
  EXPECT_EQ(shown.buttons, (std::vector<std::string>{"SPACER", "ABORT", "RETRY", "IGNORE"}));
}

TEST_F(ErrorMessageTest, WithASupportMailTheMailButtonIsOn) {
  frmErrorMessage form;
  form.SupportMail("help@example.org");
  form.suiButtons()["MAIL"].enabled = false;
  form.ShowModal();
  EXPECT_EQ(shown.buttons,
            (std::vector<std::string>{"SPACER", "ABORT", "RETRY", "IGNORE", "MAIL"}));
  EXPECT_TRUE(form.suiButtons()["MAIL"].enabled);
  EXPECT_EQ(form.suiButtons()["MAIL"].caption, "Send to support");
  EXPECT_EQ(form.suiButtons()["ABORT"].caption, "Abort");
  EXPECT_EQ(form.suiButtons()["RETRY"].caption, "Retry");
  EXPECT_EQ(form.suiButtons()["IGNORE"].caption, "Ignore");
}

TEST_F(ErrorMessageTest, AButtonLeavesItsKeyInTheTagAndHidesTheForm) {
  for (const char* key : {"ABORT", "RETRY", "IGNORE"}) {
    frmErrorMessage form;
    shown.on_show = [&] { shown.events->ButtonClicked(key); };
    form.ShowModal();
    EXPECT_EQ(form.Tag(), key);
    EXPECT_TRUE(shown.is_hidden);
  }
}

TEST_F(ErrorMessageTest, ClosedOtherwiseTheTagIsEmpty) {
  frmErrorMessage form;
  form.ShowModal();
  EXPECT_EQ(form.Tag(), "");
}

TEST_F(ErrorMessageTest, TheMailButtonOpensAMailEachTimeAndTheDialogStays) {
  Globals().HostApplication = site.Host();
  frmErrorMessage form;
  form.ErrorMessage("a\r\n\tb");
  form.SupportMail("help@example.org");
  shown.on_show = [&] {
    shown.events->ButtonClicked("MAIL");
    shown.events->ButtonClicked("MAIL");
  };
  form.ShowModal();
  ASSERT_EQ(shell->requests.size(), 2u);
  EXPECT_EQ(shell->requests[0].verb, "open");
  EXPECT_EQ(shell->requests[0].file,
            "mailto:help@example.org?subject=An error occurred in Scrivo&body="
            "%0A%0A--------------------%0A"
            "a%0A%09b%0AFrontPage Version: 12.0.0.6211"
            "%0A--------------------");
  EXPECT_FALSE(shown.is_hidden);
  EXPECT_EQ(form.Tag(), "");
}

TEST_F(ErrorMessageTest, TheMailHoldsTheTextAsTheUserLeftIt) {
  frmErrorMessage form;
  form.ErrorMessage("the report");
  form.SupportMail("help@example.org");
  shown.on_show = [&] {
    shown.message = "what I did\r\nthe report";
    shown.events->ButtonClicked("MAIL");
  };
  form.ShowModal();
  ASSERT_EQ(shell->requests.size(), 1u);
  EXPECT_NE(shell->requests[0].file.find("%0Awhat I did%0Athe report%0A"), std::string::npos);
}

TEST_F(ErrorMessageTest, AMailProgramThatCannotBeStartedIsSilent) {
  frmErrorMessage form;
  form.SupportMail("help@example.org");
  shell->result = 8;
  shown.on_show = [&] { shown.events->ButtonClicked("MAIL"); };
  form.ShowModal();
  EXPECT_EQ(shell->requests.size(), 1u);
  EXPECT_TRUE(desktop->messages.empty());
}

TEST_F(ErrorMessageTest, OnlyLineEndsAndTabsAreEncoded) {
  EXPECT_EQ(SupportMailAddress("a@b", "S", "x & y? 100% = z\r\n\t\xE9\rq\nr"),
            "mailto:a@b?subject=S&body=%0A%0A--------------------%0A"
            "x & y? 100% = z%0A%09\xE9\rq\nr%0A--------------------");
}

TEST_F(ErrorMessageTest, AMailKeyWithoutASupportMailIsAnAnswer) {
  frmErrorMessage form;
  shown.on_show = [&] { shown.events->ButtonClicked("MAIL"); };
  form.ShowModal();
  EXPECT_EQ(form.Tag(), "MAIL");
  EXPECT_TRUE(shell->requests.empty());
}

TEST_F(ErrorMessageTest, TheErrorHandlerAsksThroughTheDialog) {
  ErrorHandler().ErrorHandlerActions(ehaErrorDialog);
  ErrorHandler().SupportMail("help@example.org");
  ErrorHandler().Dialog(std::make_shared<ErrorMessageDialog>());
  const std::pair<const char*, ErrorHandlerResult> answers[] = {
      {"ABORT", ehrAbort}, {"RETRY", ehrRetry}, {"IGNORE", ehrIgnore}, {"", ehrIgnore}};
  for (const auto& [key, result] : answers) {
    shown.on_show = [&, key = std::string(key)] {
      if (!key.empty()) shown.events->ButtonClicked(key);
    };
    try {
      throw Error(kPathNotFound, "", "Path not found");
    } catch (...) {
      EXPECT_EQ(ErrorHandler().HandleError("Here"), result);
    }
    EXPECT_NE(shown.message.find("\tError: 76, (Path not found)"), std::string::npos);
    EXPECT_EQ(shown.buttons.back(), "MAIL");
  }
}

}  // namespace
}  // namespace scrivo
