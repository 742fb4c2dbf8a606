#include "tests/addin/addin_test.h"
#include "tests/doubles/fake_error_dialog.h"

namespace scrivo {
namespace {

class HostCommandsTest : public AddinTest {
 protected:
  void SetUp() override { ConnectWith(0); }
};

TEST_F(HostCommandsTest, CompileShowsTheDialogAndUnloadsIt) {
  host->web = site.Web();
  for (FakeControl* bar : {&Tools(), &Standard()}) {
    EXPECT_TRUE(Button(*bar, "Compile").Click());
    EXPECT_FALSE(frmMain::IsLoaded());
  }
  EXPECT_EQ(CountOf(views->main, "show"), 2);
}

TEST_F(HostCommandsTest, CompileWithoutAnOpenWebTellsToOpenOneAndShowsNoDialog) {
  Button(Tools(), "Compile").Click();
  ASSERT_EQ(desktop->messages.size(), 1u);
  EXPECT_EQ(desktop->messages[0].text, "Open site first");
  EXPECT_EQ(CountOf(views->main, "show"), 0);
  EXPECT_FALSE(frmMain::IsLoaded());
}

TEST_F(HostCommandsTest, ADialogThatCannotBePreparedIsNotShownAndUnloadedAllTheSame) {
  host->web = site.Web();
  host->on_current_web = [] { throw Error(kInternalError, "", "The host is in a bad way"); };
  // The failure reaches the command because the error dialog fails as well.
  const auto failing = std::make_shared<FakeErrorDialog>();
  failing->answers = {"THROW"};
  ErrorHandler().Dialog(failing);
  connect->ShowKestrel();
  EXPECT_EQ(failing->reports.size(), 1u);
  EXPECT_EQ(CountOf(views->main, "show"), 0);
  EXPECT_EQ(CountOf(views->main, "close"), 1);
  EXPECT_FALSE(frmMain::IsLoaded());
}

TEST_F(HostCommandsTest, AHostThatDisconnectsWhileTheDialogIsPreparedSeesNone) {
  host->web = site.Web();
  host->on_current_web = [&] { connect->AddinInstance_OnDisconnection(); };
  connect->ShowKestrel();
  EXPECT_EQ(CountOf(views->main, "show"), 0);
  EXPECT_FALSE(frmMain::IsLoaded());
}

TEST_F(HostCommandsTest, HidingTheCompileDialogCreatesItFirst) {
  connect->HideKestrel();
  EXPECT_TRUE(frmMain::IsLoaded());
  EXPECT_EQ(CountOf(views->main, "hide"), 1);
}

TEST_F(HostCommandsTest, DecompileShowsItsDialogAndKeepsItLoaded) {
  for (FakeControl* bar : {&Tools(), &Standard()}) EXPECT_TRUE(Button(*bar, "Decompile").Click());
  EXPECT_EQ(CountOf(views->decompile, "show"), 2);
  EXPECT_TRUE(frmDecompile::IsLoaded());
  connect->HideDecompile();
  EXPECT_EQ(CountOf(views->decompile, "hide"), 1);
}

TEST_F(HostCommandsTest, TheDecompileDialogKeepsItsValuesBetweenShowings) {
  connect->ShowDecompile();
  frmDecompile::Load()->suiParams()["FILE"].text = "C:\\a.chm";
  connect->HideDecompile();
  connect->ShowDecompile();
  EXPECT_EQ(frmDecompile::Load()->suiParams()["FILE"].text, "C:\\a.chm");
}

TEST_F(HostCommandsTest, TheSampleWebIsOpenedFromTheDocumentsFolderAndBroughtForward) {
  desktop->browse_path = "C:\\Users\\Ann\\Documents";
  views->main.window = 0x77;
  for (FakeControl* bar : {&Tools(), &Standard()}) {
    EXPECT_TRUE(Button(*bar, "Scrivo Builder Sample Web").Click());
  }
  EXPECT_EQ(shell->asked_folders, (std::vector<std::int32_t>{5, 5}));
  EXPECT_EQ(shell->folder_owners, (std::vector<WindowHandle>{0x77, 0x77}));
  const std::string opened = "C:\\Users\\Ann\\Documents\\Scrivo Builder sample web|||0";
  EXPECT_EQ(host->opened, (std::vector<std::string>{opened, opened}));
  EXPECT_EQ(host->activations, 2);
  EXPECT_TRUE(frmMain::IsLoaded()) << "asking for its window creates the dialog";
  EXPECT_EQ(CountOf(views->main, "show"), 0);
}

TEST_F(HostCommandsTest, WithoutADocumentsFolderTheNameIsTriedAsItIs) {
  desktop->browse_path = "";
  connect->ShowExample();
  EXPECT_EQ(host->opened, std::vector<std::string>{"\\Scrivo Builder sample web|||0"});
  EXPECT_TRUE(desktop->messages.empty());
}

TEST_F(HostCommandsTest, WithoutADialogToOwnTheQuestionTheSampleWebIsOpenedByItsNameAlone) {
  desktop->browse_path = "C:\\Users\\Ann\\Documents";
  views->main_fails = true;
  connect->ShowExample();
  EXPECT_TRUE(shell->asked_folders.empty());
  EXPECT_EQ(host->opened, std::vector<std::string>{"\\Scrivo Builder sample web|||0"});
  EXPECT_EQ(host->activations, 1);
}

TEST_F(HostCommandsTest, ASampleWebThatCannotBeBroughtForwardIsSilent) {
  host->fail_every = host->calls + 2;  // the call behind the opening
  connect->ShowExample();
  EXPECT_EQ(host->opened.size(), 1u);
  EXPECT_EQ(host->activations, 0);
  EXPECT_TRUE(desktop->messages.empty());
}

TEST_F(HostCommandsTest, AMissingSampleWebIsSilent) {
  host->opens_webs = false;
  connect->ShowExample();
  EXPECT_EQ(host->activations, 0);
  EXPECT_TRUE(desktop->messages.empty());
}

TEST_F(HostCommandsTest, HelpOpensTheHelpFileBesideTheLibrary) {
  for (FakeControl* bar : {&Tools(), &Standard()}) EXPECT_TRUE(Button(*bar, "Help").Click());
  ASSERT_EQ(desktop->help_calls.size(), 2u);
  EXPECT_EQ(desktop->help_calls[0].file, "C:\\Scrivo\\Scrivo.CHM");
  EXPECT_EQ(desktop->help_calls[0].command, kHelpDisplayTopic);
  EXPECT_EQ(desktop->help_calls[0].data, "index.html");
  EXPECT_EQ(desktop->help_calls[0].owner, views->main.window);
  EXPECT_TRUE(frmMain::IsLoaded()) << "asking for its window creates the dialog";
  EXPECT_EQ(CountOf(views->main, "show"), 0);
}

TEST_F(HostCommandsTest, TheHomePageIsOpenedThroughTheShell) {
  for (FakeControl* bar : {&Tools(), &Standard()}) {
    EXPECT_TRUE(Button(*bar, "Scrivo Builder Web site").Click());
  }
  ASSERT_EQ(shell->requests.size(), 2u);
  EXPECT_EQ(shell->requests[0].file, "http://www.scrivo.example/");
  EXPECT_EQ(shell->requests[0].verb, "open");
}

TEST_F(HostCommandsTest, AFailingShellIsSilent) {
  shell->result = 8;
  Button(Tools(), "Scrivo Builder Web site").Click();
  EXPECT_TRUE(desktop->messages.empty());
}

// Writes down what the version check does, and fails in one of its steps.
class RecordingChecker : public VersionChecker {
 public:
  explicit RecordingChecker(std::vector<std::string>& log, std::size_t failing_step = 99)
      : log_(log), failing_step_(failing_step) {}
  ~RecordingChecker() override { log_.push_back("released"); }

  void ProductName(const std::string& name) override { Do("product " + name); }
  void Server(const std::string& host_name) override { Do("server " + host_name); }
  std::string Result() override {
    Do("result");
    return "newer";
  }
  void Check() override { Do("check"); }

 private:
  void Do(const std::string& what) {
    log_.push_back(what);
    if (step_++ == failing_step_) throw Error(kInternalError, "RecordingChecker", "It failed");
  }

  std::vector<std::string>& log_;
  std::size_t step_ = 0, failing_step_;
};

TEST_F(HostCommandsTest, TheVersionCheckAsksTheComponentStepByStep) {
  std::vector<std::string> log;
  Connect checking([&] { return std::make_shared<RecordingChecker>(log); });
  FakeControl untouched;
  bool cancel = false;
  untouched.handlers[0] = [&](CommandBarControl& control, bool& flag) {
    checking.cbBtnCheckVersion_Click(control, flag);
    cancel = flag;
  };
  EXPECT_TRUE(untouched.Click());
  EXPECT_EQ(log, (std::vector<std::string>{"product ScrivoBuilder", "server www.scrivo.example",
                                           "result", "check", "released"}));
  untouched.handlers[0] = [&](CommandBarControl& control, bool& flag) {
    checking.cbBtnPanelCheckVersion_Click(control, flag);
  };
  EXPECT_TRUE(untouched.Click());
  EXPECT_EQ(log.size(), 10u);
}

TEST_F(HostCommandsTest, AFailingStepOfTheVersionCheckIsSkippedAlone) {
  for (std::size_t step = 0; step < 4; ++step) {
    std::vector<std::string> log;
    Connect checking([&] { return std::make_shared<RecordingChecker>(log, step); });
    FakeControl button;
    button.handlers[0] = [&](CommandBarControl& control, bool& flag) {
      checking.cbBtnCheckVersion_Click(control, flag);
    };
    EXPECT_NO_THROW(button.Click());
    EXPECT_EQ(log, (std::vector<std::string>{"product ScrivoBuilder", "server www.scrivo.example",
                                             "result", "check", "released"}))
        << step;
  }
  EXPECT_TRUE(desktop->messages.empty());
}

TEST_F(HostCommandsTest, AMissingVersionCheckComponentIsSilent) {
  FakeControl untouched;
  untouched.handlers[0] = [&](CommandBarControl& control, bool& flag) {
    connect->cbBtnCheckVersion_Click(control, flag);
  };
  EXPECT_TRUE(untouched.Click());
  EXPECT_TRUE(desktop->messages.empty());
}

}  // namespace
}  // namespace scrivo
