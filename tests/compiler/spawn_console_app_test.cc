#include "compiler/spawn_console_app.h"

#include "tests/doubles/fake_services.h"

namespace scrivo {
namespace {

class SpawnConsoleApp : public WithFakeServices {
 protected:
  SpawnConsoleApp() {
    app.OnProcessStarted = [this] { events.push_back("started"); };
    app.OnProcessOutputs = [this](const std::string& output) { events.push_back(output); };
  }
  std::int32_t Run() { return app.ExecuteApp("\"tool\" a b", "/work dir"); }

  CSpawnConsoleApp app;
  std::vector<std::string> events;
};

// Answers every error report with one button and keeps the reports.
class AnsweringDialog : public ErrorDialog {
 public:
  explicit AnsweringDialog(std::string answer) : answer_(std::move(answer)) {}
  std::string Ask(const std::string& report, const std::string&) override {
    reports.push_back(report);
    if (on_ask) on_ask();
    return answer_;
  }
  std::vector<std::string> reports;
  std::function<void()> on_ask;

 private:
  std::string answer_;
};

TEST_F(SpawnConsoleApp, StartsTheProgramHiddenWithBothOutputsInOnePipe) {
  Run();
  ASSERT_EQ(processes->requests.size(), 1u);
  const StartRequest& request = processes->requests[0];
  EXPECT_EQ(request.command_line, "\"tool\" a b");
  EXPECT_EQ(request.folder, "/work dir");
  EXPECT_EQ(request.start_flags, 257u);
  EXPECT_EQ(request.show_window, 0);
  EXPECT_EQ(request.creation_flags, 32u);
  EXPECT_TRUE(request.inherit_handles);
  EXPECT_EQ(request.standard_input, 0u);
  EXPECT_NE(request.standard_output, 0u);
  EXPECT_EQ(request.standard_error, request.standard_output);
}

TEST_F(SpawnConsoleApp, ClosesItsWriteEndBeforeItReads) {
  Run();
  const std::vector<std::string> expected = {"pipe",      "start",   "close 2", "read",
                                             "exit code", "close 3", "close 4", "close 1"};
  EXPECT_EQ(processes->log, expected);
  EXPECT_TRUE(processes->open_handles.empty());
}

TEST_F(SpawnConsoleApp, GivesOneEmptyOutputForASilentProgram) {
  processes->exit_code = 3;
  EXPECT_EQ(Run(), 3);
  EXPECT_EQ(events, (std::vector<std::string>{"started", ""}));
}

TEST_F(SpawnConsoleApp, GivesFortyBytesAs16And16And8AndAnEmptyOutput) {
  processes->outputs = {std::string(40, 'x')};
  Run();
  EXPECT_EQ(events, (std::vector<std::string>{"started", std::string(16, 'x'), std::string(16, 'x'),
                                              std::string(8, 'x'), ""}));
}

TEST_F(SpawnConsoleApp, HandsOnTextAsItComesEvenASplitLineBreak) {
  const std::string bytes("0123456789abcde\r\n\0\xE4", 19);
  processes->outputs = {bytes};
  Run();
  EXPECT_EQ(events, (std::vector<std::string>{"started", "0123456789abcde\r",
                                              std::string("\n\0\xC3\xA4", 4), ""}));
}

TEST_F(SpawnConsoleApp, JoinsACharacterThatIsCutBetweenTwoReads) {
  system->code_page = 936;
  // Fifteen letters and the two bytes of U+76EE, the first of which is the last that is read.
  processes->outputs = {"0123456789abcde\xC4\xBF!"};
  Run();
  EXPECT_EQ(events, (std::vector<std::string>{"started", "0123456789abcde", "\xE7\x9B\xAE!", ""}));
}

TEST_F(SpawnConsoleApp, ShowsThatACharacterIsMissingItsEnd) {
  system->code_page = 936;
  processes->outputs = {"a\xC4"};
  Run();
  EXPECT_EQ(events, (std::vector<std::string>{"started", "a", "\xEF\xBF\xBD"}));
}

TEST_F(SpawnConsoleApp, GivesTheUserInterfaceAPassAfterEachOutput) {
  processes->outputs = {"a", "b"};
  std::vector<int> passes;
  app.OnProcessOutputs = [&](const std::string&) { passes.push_back(desktop->message_passes); };
  Run();
  EXPECT_EQ(passes, (std::vector<int>{0, 1, 2}));
  EXPECT_EQ(desktop->message_passes, 3);
}

TEST_F(SpawnConsoleApp, SaysSoBeforeAReadThatWouldWait) {
  app.BeforeWaiting = [this] { events.push_back("waiting"); };
  processes->outputs = {"a", "b", "c"};
  processes->waits = {true, false, true, false};
  Run();
  EXPECT_EQ(events, (std::vector<std::string>{"started", "waiting", "a", "b", "waiting", "c", ""}));
}

TEST_F(SpawnConsoleApp, ReturnsStillActiveForAProgramThatLivesOn) {
  processes->exit_code = kStillActive;
  EXPECT_EQ(Run(), 259);
  EXPECT_EQ(std::count(processes->log.begin(), processes->log.end(), "exit code"), 1);
}

TEST_F(SpawnConsoleApp, ReturnsTheCodeOfACrashAsASignedNumber) {
  processes->exit_code = 0xC0000005;
  EXPECT_EQ(Run(), -1073741819);
}

TEST_F(SpawnConsoleApp, RunsWithoutAListener) {
  processes->outputs = {"a"};
  processes->exit_code = 1;
  EXPECT_EQ(CSpawnConsoleApp().ExecuteApp("tool", ""), 1);
}

TEST_F(SpawnConsoleApp, ReportsAPipeThatCannotBeMade) {
  processes->opens_pipes = false;
  processes->error = 24;
  auto dialog = std::make_shared<AnsweringDialog>("ABORT");
  ErrorHandler().Dialog(dialog);
  ErrorHandler().ErrorHandlerActions(ehaErrorDialog);
  EXPECT_EQ(Run(), 0);
  ASSERT_EQ(dialog->reports.size(), 1u);
  EXPECT_NE(dialog->reports[0].find("-2147220992, (CreatePipe failed. Error: 24)"),
            std::string::npos);
  EXPECT_NE(dialog->reports[0].find("in Kestrel.CSpawnConsoleApp.ExecuteApp at"),
            std::string::npos);
  EXPECT_EQ(events, std::vector<std::string>{});
  EXPECT_EQ(processes->log, std::vector<std::string>{"pipe"});
}

TEST_F(SpawnConsoleApp, ReportsAProgramThatCannotBeStartedAndLeavesThePipeOpen) {
  processes->starts = false;
  processes->error = 2;
  auto dialog = std::make_shared<AnsweringDialog>("ABORT");
  ErrorHandler().Dialog(dialog);
  ErrorHandler().ErrorHandlerActions(ehaErrorDialog);
  EXPECT_EQ(Run(), 0);
  EXPECT_EQ(ErrorHandler().ErrorNumber(), -2147220991);
  EXPECT_EQ(ErrorHandler().ErrorDescription(), "CreateProcess failed. Error: 2");
  EXPECT_EQ(events, std::vector<std::string>{});
  EXPECT_EQ(processes->open_handles, (std::vector<SystemHandle>{1, 2}));
}

TEST_F(SpawnConsoleApp, StartsTheProgramAgainOnRetry) {
  processes->starts = false;
  auto dialog = std::make_shared<AnsweringDialog>("RETRY");
  dialog->on_ask = [this] { processes->starts = true; };
  ErrorHandler().Dialog(dialog);
  ErrorHandler().ErrorHandlerActions(ehaErrorDialog);
  processes->exit_code = 1;
  EXPECT_EQ(Run(), 1);
  EXPECT_EQ(processes->requests.size(), 2u);
  EXPECT_EQ(events, (std::vector<std::string>{"started", ""}));
}

// Fails as a system does that has neither pipes nor processes, and keeps what was thrown.
TEST_F(SpawnConsoleApp, NamesTheSourcesOfItsErrorsAsUsersKnowThem) {
  std::vector<std::string> sources;
  class SourceReader : public ErrorDialog {
   public:
    explicit SourceReader(std::vector<std::string>& sources) : sources_(sources) {}
    std::string Ask(const std::string&, const std::string&) override {
      sources_.push_back(ErrorFrom(std::current_exception()).source);
      return "ABORT";
    }

   private:
    std::vector<std::string>& sources_;
  };
  ErrorHandler().Dialog(std::make_shared<SourceReader>(sources));
  ErrorHandler().ErrorHandlerActions(ehaErrorDialog);
  processes->starts = false;
  Run();
  processes->opens_pipes = false;
  Run();
  EXPECT_EQ(sources, (std::vector<std::string>{"CSpawnColsoleApp", "CSpawnConsoleApp"}));
}

TEST_F(SpawnConsoleApp, TracesItsEntryAndExit) {
  ErrorHandler().TracingEnabled(true);
  Run();
  const std::string& trace = files->files["/log/trace.txt"];
  EXPECT_NE(trace.find("Entered routine: Kestrel.CSpawnConsoleApp.ExecuteApp\r\n"),
            std::string::npos);
  EXPECT_NE(trace.find("Exited routine: Kestrel.CSpawnConsoleApp.ExecuteApp\r\n"),
            std::string::npos);
}

TEST_F(SpawnConsoleApp, EndsTheReadLoopWhenReadingItselfFailsAndIsIgnored) {
  class FailingProcesses : public FakeProcesses {
   public:
    bool Read(SystemHandle, char*, std::uint32_t, std::uint32_t*) override {
      throw Error(kDeviceIoError, "test", "no reading");
    }
  };
  TheServices().processes = std::make_shared<FailingProcesses>();
  auto dialog = std::make_shared<AnsweringDialog>("IGNORE");
  ErrorHandler().Dialog(dialog);
  ErrorHandler().ErrorHandlerActions(ehaErrorDialog);
  Run();
  EXPECT_EQ(dialog->reports.size(), 1u);
  EXPECT_EQ(events, (std::vector<std::string>{"started", ""}));
}

}  // namespace
}  // namespace scrivo
