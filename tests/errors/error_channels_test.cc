#include "tests/doubles/expect_error.h"
#include "tests/doubles/fake_services.h"

namespace scrivo {
namespace {

// A dialog that answers with a key and remembers what it was shown.
class RecordingErrorDialog : public ErrorDialog {
 public:
  std::string answer;
  bool fails = false;
  std::vector<std::string> reports;
  std::vector<std::string> mails;
  std::size_t messages_before = 0;  // message boxes shown when it came
  const FakeDesktop* desktop = nullptr;

  std::string Ask(const std::string& report, const std::string& support_mail) override {
    reports.push_back(report);
    mails.push_back(support_mail);
    messages_before = desktop->messages.size();
    if (fails) throw Error(1, "", "no dialog");
    return answer;
  }
};

class ErrorChannels : public WithFakeServices {
 protected:
  ErrorChannels() {
    dialog->desktop = desktop.get();
    handler.Dialog(dialog);
  }

  ErrorHandlerResult Handle(std::int32_t actions) {
    handler.Init(actions, "/e", true, false, trfLogFile, "/t");
    try {
      throw Error(5, "", "bad");
    } catch (...) {
      return handler.HandleError("P");
    }
  }

  const std::string report =
      "21.11.2026 - 14:05:09\r\n\tError: 5, (bad)\r\n\tin P at line 0\r\n\r\n"
      "The call stack is:\r\n";
  std::shared_ptr<RecordingErrorDialog> dialog = std::make_shared<RecordingErrorDialog>();
  CErrorHandler handler;
};

TEST_F(ErrorChannels, TheLogAloneAbortsWithoutAskingAnybody) {
  EXPECT_EQ(Handle(ehaLogFile), ehrAbort);
  EXPECT_EQ(files->log, std::vector<std::string>{"append /e"});
  EXPECT_EQ(files->files["/e"], report + "\r\n");
  EXPECT_TRUE(desktop->messages.empty());
  EXPECT_TRUE(system->events.empty());
  EXPECT_TRUE(dialog->reports.empty());
}

TEST_F(ErrorChannels, TheEventLogGetsOneEntryUnderTheComponentsName) {
  EXPECT_EQ(Handle(ehaEventLog), ehrAbort);
  EXPECT_EQ(system->events, std::vector<std::string>{"Scrivo: " + report});
  EXPECT_TRUE(files->log.empty());
}

TEST_F(ErrorChannels, TheEventLogOfAnotherPlatformGetsNothing) {
  system->platform_id = 1;
  CErrorHandler other;
  other.ErrorHandlerActions(ehaEventLog);
  EXPECT_EQ(other.HandleError("P"), ehrAbort);
  EXPECT_TRUE(system->events.empty());
}

TEST_F(ErrorChannels, TheMessageBoxHasThreeButtonsNoIconAndTheTitle) {
  Handle(ehaMessageBox);
  ASSERT_EQ(desktop->messages.size(), 1u);
  EXPECT_EQ(desktop->messages[0].text, report);
  EXPECT_EQ(desktop->messages[0].style, 2u);
  EXPECT_EQ(desktop->messages[0].caption, "Scrivo");
  EXPECT_TRUE(files->log.empty());
}

TEST_F(ErrorChannels, TheMessageBoxesAnswerIsTheResult) {
  const std::pair<MessageAnswer, ErrorHandlerResult> answers[] = {
      {MessageAnswer::kAbort, ehrAbort},   {MessageAnswer::kRetry, ehrRetry},
      {MessageAnswer::kIgnore, ehrIgnore}, {MessageAnswer::kOk, ehrIgnore},
      {MessageAnswer::kNone, ehrIgnore},   {MessageAnswer::kCancel, ehrIgnore},
  };
  for (const auto& [answer, result] : answers) {
    desktop->answers = {answer};
    EXPECT_EQ(Handle(ehaMessageBox), result) << static_cast<int>(answer);
  }
}

TEST_F(ErrorChannels, TheDialogGetsTheReportAndTheSupportMail) {
  handler.SupportMail("help@example.org");
  Handle(ehaErrorDialog);
  EXPECT_EQ(dialog->reports, std::vector<std::string>{report});
  EXPECT_EQ(dialog->mails, std::vector<std::string>{"help@example.org"});
}

TEST_F(ErrorChannels, TheDialogsKeyIsTheResult) {
  const std::pair<const char*, ErrorHandlerResult> answers[] = {
      {"ABORT", ehrAbort}, {"RETRY", ehrRetry},  {"IGNORE", ehrIgnore},
      {"", ehrIgnore},     {"abort", ehrIgnore}, {"CLOSE", ehrIgnore},
  };
  for (const auto& [key, result] : answers) {
    dialog->answer = key;
    EXPECT_EQ(Handle(ehaErrorDialog), result) << key;
  }
}

TEST_F(ErrorChannels, WithoutADialogTheErrorIsIgnored) {
  handler.Dialog(nullptr);
  EXPECT_EQ(Handle(ehaErrorDialog), ehrIgnore);
}

TEST_F(ErrorChannels, TheDialogComesAfterTheMessageBoxAndWins) {
  desktop->answers = {MessageAnswer::kIgnore};
  dialog->answer = "RETRY";
  EXPECT_EQ(Handle(ehaMessageBox | ehaErrorDialog), ehrRetry);
  EXPECT_EQ(dialog->messages_before, 1u);

  desktop->answers = {MessageAnswer::kRetry};
  dialog->answer = "ABORT";
  EXPECT_EQ(Handle(ehaMessageBox | ehaErrorDialog), ehrAbort);
}

TEST_F(ErrorChannels, AllFourCarryTheSameReport) {
  dialog->answer = "IGNORE";
  EXPECT_EQ(Handle(15), ehrIgnore);
  EXPECT_EQ(files->files["/e"], report + "\r\n");
  EXPECT_EQ(system->events, std::vector<std::string>{"Scrivo: " + report});
  EXPECT_EQ(desktop->messages.at(0).text, report);
  EXPECT_EQ(dialog->reports, std::vector<std::string>{report});
}

class FailingSystem : public FakeSystem {
 public:
  void WriteErrorEvent(const std::string&, const std::string&) override {
    throw Error(1, "", "no event log");
  }
};

class FailingDesktop : public FakeDesktop {
 public:
  MessageAnswer ShowMessage(const std::string&, std::uint32_t, const std::string&) override {
    throw Error(1, "", "no message box");
  }
};

// Holds that handling an error through all channels ends with the component failure.
#define EXPECT_COMPONENT_FAILURE()                                                      \
  ExpectError([&] { Handle(15); }, kComponentErrorBase + 17404, "Scrivo.CErrorHandler", \
              "CErrorHandler component failure")

TEST_F(ErrorChannels, AFailingLogEndsTheHandlerAndSkipsTheOthers) {
  files->failures.emplace("append /e", Error(kPathNotFound, "", "Path not found"));
  EXPECT_COMPONENT_FAILURE();
  EXPECT_TRUE(system->events.empty());
  EXPECT_TRUE(desktop->messages.empty());
  EXPECT_TRUE(dialog->reports.empty());
}

TEST_F(ErrorChannels, AFailingEventLogEndsTheHandlerAfterTheLog) {
  TheServices().system = std::make_shared<FailingSystem>();
  EXPECT_COMPONENT_FAILURE();
  EXPECT_EQ(files->files.count("/e"), 1u);
  EXPECT_TRUE(desktop->messages.empty());
  EXPECT_TRUE(dialog->reports.empty());
}

TEST_F(ErrorChannels, AFailingMessageBoxEndsTheHandlerBeforeTheDialog) {
  TheServices().desktop = std::make_shared<FailingDesktop>();
  EXPECT_COMPONENT_FAILURE();
  EXPECT_EQ(system->events.size(), 1u);
  EXPECT_TRUE(dialog->reports.empty());
}

TEST_F(ErrorChannels, AFailingDialogEndsTheHandler) {
  dialog->fails = true;
  EXPECT_COMPONENT_FAILURE();
  EXPECT_EQ(desktop->messages.size(), 1u);
}

TEST_F(ErrorChannels, TheErrorStaysReadableAfterAFailure) {
  dialog->fails = true;
  EXPECT_COMPONENT_FAILURE();
  EXPECT_EQ(handler.ErrorNumber(), 5);
  EXPECT_EQ(handler.ErrorDescription(), "bad");
}

TEST_F(ErrorChannels, ClearRemovesTheChosenLogs) {
  for (const bool error_log : {false, true}) {
    for (const bool trace_log : {false, true}) {
      handler.Init(ehaLogFile, "/e", true, false, trfLogFile, "/t");
      files->files = {{"/e", "x"}, {"/t", "y"}};
      handler.Clear(error_log, trace_log);
      EXPECT_EQ(files->FileExists("/e"), !error_log);
      EXPECT_EQ(files->FileExists("/t"), !trace_log);
    }
  }
}

TEST_F(ErrorChannels, ClearIgnoresLogsThatAreMissingOrInUse) {
  handler.Init(ehaLogFile, "/e", true, false, trfLogFile, "/t");
  files->files = {{"/e", "x"}, {"/t", "y"}};
  files->locked = {"/e"};
  handler.Clear(true, true);
  EXPECT_TRUE(files->FileExists("/e"));
  EXPECT_FALSE(files->FileExists("/t"));
  handler.Clear(true, true);
  EXPECT_TRUE(files->FileExists("/e"));
}

TEST_F(ErrorChannels, TheNextErrorMakesAClearedLogAnew) {
  Handle(ehaLogFile);
  Handle(ehaLogFile);
  handler.Clear(true, true);
  Handle(ehaLogFile);
  EXPECT_EQ(files->files["/e"], report + "\r\n");
}

}  // namespace
}  // namespace scrivo
