#include "compiler/frm_hhc.h"

#include "platform/registry.h"
#include "site/site.h"
#include "tests/doubles/failing_registry.h"
#include "tests/doubles/fake_error_dialog.h"
#include "tests/doubles/fake_run_view.h"
#include "tests/doubles/fake_services.h"

namespace scrivo {
namespace {

constexpr const char* kWorkshopKey = "Software\\Microsoft\\HTML Help Workshop";

class FrmHHC : public WithFakeServices {
 protected:
  FrmHHC() {
    Globals() = GlobalState(PathStyle::kWindows);
    Globals().views = views;
    frmHHC::Load();
  }
  ~FrmHHC() override {
    frmHHC::Unload();
    Globals() = GlobalState();
  }

  void Install(const std::string& folder) {
    CRegistry keys;
    keys.Init(kHkeyCurrentUser);
    keys.SetValue(kWorkshopKey, "InstallDir", folder, kRegSz);
  }
  // Runs an installed compiler that prints `outputs`.
  std::int32_t Compile(std::deque<std::string> outputs) {
    Install("C:\\HHW");
    processes->outputs = std::move(outputs);
    return frmHHC::Load().Execute("C:\\Webs\\site", "Scr1A2.hhp");
  }
  const ShownRun& Shown() const { return views->run; }

  std::shared_ptr<FakeViews> views = std::make_shared<FakeViews>();
};

TEST_F(FrmHHC, RunsTheCompilerOfTheInstallFolderWithOnlyItsPathQuoted) {
  Compile({});
  ASSERT_EQ(processes->requests.size(), 1u);
  EXPECT_EQ(processes->requests[0].command_line, "\"C:\\HHW\\hhc.exe\" Scr1A2.hhp");
  EXPECT_EQ(processes->requests[0].folder, "C:\\Webs\\site");
}

TEST_F(FrmHHC, PassesArgumentsWithBlanksAsTheyAre) {
  Install("C:\\HHW");
  frmHHC::Load().Execute("C:\\", "my project.hhp");
  EXPECT_EQ(processes->requests[0].command_line, "\"C:\\HHW\\hhc.exe\" my project.hhp");
}

TEST_F(FrmHHC, NamesTheCompilerAsTheSystemDoes) {
  Globals() = GlobalState(PathStyle::kPosix);
  Globals().views = views;
  Install("/usr/bin");
  frmHHC::Load().Execute("/srv/site", "Scr1A2.hhp");
  EXPECT_EQ(processes->requests[0].command_line, "\"/usr/bin/hhc\" Scr1A2.hhp");
}

TEST_F(FrmHHC, ReturnsTheCompilersExitCodeWhenItGaveNoMessage) {
  processes->exit_code = 1;
  EXPECT_EQ(Compile({"Created C:\\a.chm\r\n"}), 1);
  EXPECT_TRUE(desktop->messages.empty());
  EXPECT_EQ(Shown().caption, "100 %");
  EXPECT_EQ(Shown().flood, 100);
}

TEST_F(FrmHHC, TellsTheCompilersMessagesAndReturnsMinusOne) {
  processes->exit_code = 1;
  EXPECT_EQ(Compile({"HHC3004: Warning: a\r\nplain\r\nhhc5003: Error: b\r\n"}), -1);
  ASSERT_EQ(desktop->messages.size(), 1u);
  EXPECT_EQ(desktop->messages[0].text,
            "There are errors and warnings while compiling.\r\nWarning: a\r\nError: b");
  EXPECT_EQ(desktop->messages[0].style, 64u);
  EXPECT_EQ(desktop->messages[0].caption, "Scrivo");
  EXPECT_EQ(Shown().caption, "100 %");
}

TEST_F(FrmHHC, FindsAMessageThatIsCutBetweenTwoReads) {
  EXPECT_EQ(Compile({"01234567890123HH", "C30", "04: Warn", "ing: a\r", "\n"}), -1);
  ASSERT_EQ(desktop->messages.size(), 1u);
  EXPECT_EQ(desktop->messages[0].text,
            "There are errors and warnings while compiling.\r\nWarning: a");
}

TEST_F(FrmHHC, ShowsMessagesBeforeTheBarIsFull) {
  std::string caption_at_message = "none";
  class Watching : public FakeDesktop {
   public:
    Watching(std::string& caption, const ShownRun& shown) : caption_(caption), shown_(shown) {}
    MessageAnswer ShowMessage(const std::string&, std::uint32_t, const std::string&) override {
      caption_ = shown_.caption;
      return MessageAnswer::kOk;
    }

   private:
    std::string& caption_;
    const ShownRun& shown_;
  };
  TheServices().desktop = std::make_shared<Watching>(caption_at_message, Shown());
  frmHHC::Load().FilesCount(90);
  Compile({"\r\nHHC1: a\r\n"});
  EXPECT_EQ(caption_at_message, "3 %");
}

TEST_F(FrmHHC, FramesTheTranscriptWithItsOwnLines) {
  Compile({"one\r\n", "two"});
  const std::string expected =
      "Starting Microsoft HTML Help Workshop compiler\r\none\r\ntwo\r\nDone!";
  EXPECT_EQ(Shown().transcript, expected);
  EXPECT_EQ(frmHHC::Load().Transcript(), expected);
}

TEST_F(FrmHHC, ReplacesTheTranscriptOfAnEarlierRun) {
  Compile({"HHC1: a\r\n"});
  EXPECT_EQ(Compile({"new"}), 0);
  EXPECT_EQ(Shown().transcript, "Starting Microsoft HTML Help Workshop compiler\r\nnew\r\nDone!");
  EXPECT_EQ(desktop->messages.size(), 1u) << "only the first run had one";
}

// A registry that writes down when it is read.
class WatchedRegistry : public MemoryRegistry {
 public:
  explicit WatchedRegistry(std::vector<std::string>& log) : log_(log) {}

  RegistryStatus QueryValue(RegistryHandle key, const std::string& name, std::uint32_t* type,
                            std::uint8_t* data, std::uint32_t* size) override {
    if (log_.empty() || log_.back() != "registry") log_.push_back("registry");
    return MemoryRegistry::QueryValue(key, name, type, data, size);
  }

 private:
  std::vector<std::string>& log_;
};

TEST_F(FrmHHC, GoesThroughBusyAndBackInOrder) {
  TheServices().registry = std::make_shared<WatchedRegistry>(views->run.log);
  Install("C:\\HHW");
  views->run.log.clear();
  desktop->on_pass = [&] { views->run.log.push_back("messages"); };
  processes->on_start = [&] { views->run.log.push_back("start"); };
  processes->outputs = {"a"};
  frmHHC::Load().Execute("C:\\Webs\\site", "Scr1A2.hhp");
  const std::vector<std::string> expected = {"progress |0",
                                             "busy 1",
                                             "show",
                                             "close 0",
                                             "repaint",
                                             "messages",
                                             "registry",
                                             "start",
                                             "progress 5 %|5",
                                             "replace",
                                             "repaint",  // the child was started
                                             "progress 10 %|10",
                                             "append",
                                             "repaint",  // its output
                                             "messages",
                                             "messages",  // the runner's
                                             "progress 10 %|10",
                                             "append",
                                             "repaint",  // the end of it
                                             "messages",
                                             "messages",
                                             "append",  // Done!
                                             "progress 100 %|100",
                                             "close 1",
                                             "busy 0"};
  EXPECT_EQ(Shown().log, expected);
  EXPECT_TRUE(Shown().is_shown);
}

TEST_F(FrmHHC, LetsPendingMessagesBeProcessedBeforeItStarts) {
  frmHHC::Load().Execute("C:\\", "a.hhp");  // no compiler: nothing else passes
  EXPECT_EQ(desktop->message_passes, 1);
}

TEST_F(FrmHHC, CountsTheLinesBeforeTheNewOutputIsAppended) {
  frmHHC::Load().FilesCount(90);
  Compile({"a\r\nb\r\n", "c"});
  std::vector<std::string> captions;
  for (const std::string& entry : Shown().log) {
    if (entry.starts_with("progress")) captions.push_back(entry.substr(9));
  }
  EXPECT_EQ(captions,
            (std::vector<std::string>{"|0", "5 %|5", "1 %|1", "3 %|3", "3 %|3", "100 %|100"}));
}

TEST_F(FrmHHC, HoldsTheEstimateAt99) {
  std::string lines;
  for (int i = 0; i < 24; ++i) lines += "\r\n";
  Compile({lines});
  EXPECT_NE(std::find(Shown().log.begin(), Shown().log.end(), "progress 99 %|99"),
            Shown().log.end());
}

TEST_F(FrmHHC, SaysThatNoCompilerIsInstalledAndRunsNothing) {
  EXPECT_EQ(frmHHC::Load().Execute("C:\\", "a.hhp"), 0);
  ASSERT_EQ(desktop->messages.size(), 1u);
  EXPECT_EQ(desktop->messages[0].text, "Microsoft HTML Help WorkShop must be installed");
  EXPECT_EQ(desktop->messages[0].style, 0u);
  EXPECT_EQ(desktop->messages[0].caption, "Scrivo");
  EXPECT_TRUE(processes->requests.empty());
  EXPECT_EQ(Shown().caption, "");
  EXPECT_EQ(Shown().transcript, "");
  EXPECT_FALSE(Shown().is_busy);
  EXPECT_TRUE(Shown().may_close);
}

// A user whose registry cannot be read, and who ignores that.
class IgnoredRegistryFailure : public FrmHHC {
 protected:
  IgnoredRegistryFailure() {
    Install("C:\\HHW");
    const auto failing = std::make_shared<FailingRegistry>(registry);
    failing->call = "OpenKey";
    failing->throws = true;
    TheServices().registry = failing;
    dialog->answers = {"IGNORE"};
    ErrorHandler().ErrorHandlerActions(ehaErrorDialog);
    ErrorHandler().Dialog(dialog);
    processes->exit_code = 3;
  }
  ~IgnoredRegistryFailure() override { ErrorHandler().Dialog(nullptr); }

  std::shared_ptr<FakeErrorDialog> dialog = std::make_shared<FakeErrorDialog>();
};

TEST_F(IgnoredRegistryFailure, DoesNotStopADecompile) {
  frmHHC::Load().Decompile(true);
  EXPECT_EQ(frmHHC::Load().Execute("C:\\out", "-decompile C:\\out C:\\a.chm"), 3);
  EXPECT_EQ(dialog->reports.size(), 1u);
  ASSERT_EQ(processes->requests.size(), 1u);
  EXPECT_EQ(processes->requests[0].command_line, "\"hh.exe\" -decompile C:\\out C:\\a.chm");
  EXPECT_TRUE(desktop->messages.empty());
}

TEST_F(IgnoredRegistryFailure, LeavesACompileWithoutACompiler) {
  EXPECT_EQ(frmHHC::Load().Execute("C:\\", "a.hhp"), 0);
  EXPECT_EQ(dialog->reports.size(), 1u);
  ASSERT_EQ(desktop->messages.size(), 1u);
  EXPECT_EQ(desktop->messages[0].text, "Microsoft HTML Help WorkShop must be installed");
  EXPECT_TRUE(processes->requests.empty());
  EXPECT_TRUE(Shown().may_close);
}

TEST_F(FrmHHC, AMessageThatNoCompilerIsInstalledMayFailAndBeIgnored) {
  const auto dialog = std::make_shared<FakeErrorDialog>();
  dialog->answers = {"IGNORE"};
  ErrorHandler().ErrorHandlerActions(ehaErrorDialog);
  ErrorHandler().Dialog(dialog);
  desktop->on_message = [] { throw Error(kOutOfMemory, "test", "no box"); };
  EXPECT_EQ(frmHHC::Load().Execute("C:\\", "a.hhp"), 0);
  EXPECT_EQ(dialog->reports.size(), 1u);
  EXPECT_TRUE(processes->requests.empty());
  EXPECT_TRUE(Shown().may_close);
  EXPECT_FALSE(Shown().is_busy);
  ErrorHandler().Dialog(nullptr);
}

TEST_F(FrmHHC, AMessageThatNoCompilerIsInstalledIsShownAgainOnRetry) {
  const auto dialog = std::make_shared<FakeErrorDialog>();
  dialog->answers = {"RETRY"};
  ErrorHandler().ErrorHandlerActions(ehaErrorDialog);
  ErrorHandler().Dialog(dialog);
  desktop->on_message = [&] {
    if (desktop->messages.size() == 1) throw Error(kOutOfMemory, "test", "no box");
  };
  EXPECT_EQ(frmHHC::Load().Execute("C:\\", "a.hhp"), 0);
  EXPECT_EQ(dialog->reports.size(), 1u);
  EXPECT_EQ(desktop->messages.size(), 2u);
  ErrorHandler().Dialog(nullptr);
}

TEST_F(FrmHHC, TakesAFolderThatIsNoTextForNone) {
  CRegistry keys;
  keys.Init(kHkeyCurrentUser);
  keys.SetValue(kWorkshopKey, "InstallDir", std::int32_t{7}, kRegDword);
  EXPECT_EQ(frmHHC::Load().Execute("C:\\", "a.hhp"), 0);
  EXPECT_TRUE(processes->requests.empty());
}

TEST_F(FrmHHC, DecompilesThroughTheSearchPathWithoutAnInstalledCompiler) {
  frmHHC::Load().Decompile(true);
  frmHHC::Load().Execute("C:\\out", "-decompile C:\\out C:\\a.chm");
  ASSERT_EQ(processes->requests.size(), 1u);
  EXPECT_EQ(processes->requests[0].command_line, "\"hh.exe\" -decompile C:\\out C:\\a.chm");
  EXPECT_TRUE(desktop->messages.empty());
  EXPECT_TRUE(Shown().transcript.starts_with("Starting Microsoft HTML Help Workshop compiler\r\n"))
      << "the same words for either tool";
}

TEST_F(FrmHHC, ReportsAToolThatCannotBeStartedAndFinishesTheRun) {
  processes->starts = false;
  processes->error = 2;
  EXPECT_EQ(Compile({}), 0);
  EXPECT_NE(ErrorLog().find("CreateProcess failed. Error: 2"), std::string::npos);
  EXPECT_EQ(Shown().transcript, "\r\nDone!");
  EXPECT_EQ(Shown().caption, "100 %");
  EXPECT_TRUE(Shown().may_close);
}

TEST_F(FrmHHC, ShowsAnErrorThatReachesItInTheTranscript) {
  // An error handler that fails itself lets its error through.
  files->failures.emplace("append /log/errors.txt", Error(kDiskFull, "test", "full"));
  processes->starts = false;
  EXPECT_EQ(Compile({}), 0);
  EXPECT_EQ(Shown().transcript, "\r\nError: CErrorHandler component failure\r\nDone!");
  EXPECT_FALSE(Shown().is_busy);
}

TEST_F(FrmHHC, HasARunnerForTheTimeOfTheRunOnly) {
  bool had_runner = false;
  processes->on_start = [&] { had_runner = frmHHC::Load().HasRunner(); };
  EXPECT_FALSE(frmHHC::Load().HasRunner());
  Compile({"a"});
  EXPECT_TRUE(had_runner);
  EXPECT_FALSE(frmHHC::Load().HasRunner());
}

TEST_F(FrmHHC, HasNoRunnerAfterARunThatFailed) {
  files->failures.emplace("append /log/errors.txt", Error(kDiskFull, "test", "full"));
  processes->starts = false;
  Compile({});
  EXPECT_FALSE(frmHHC::Load().HasRunner());
}

TEST_F(FrmHHC, ShowsWhatIsHeldBackBeforeItWaitsForOutput) {
  processes->waits = {false, true, false};
  Compile({"a", "b"});
  const std::vector<std::string> expected = {"append",         "repaint",  // "a"
                                             "show held back", "repaint", "progress 10 %|10",
                                             "append",         "repaint"};
  const auto& log = Shown().log;
  EXPECT_EQ(std::count(log.begin(), log.end(), "show held back"), 1);
  EXPECT_NE(std::search(log.begin(), log.end(), expected.begin(), expected.end()), log.end());
}

// A run view that fails in one of the things that it does with the output "a".
class Stumbling : public FakeRunView {
 public:
  Stumbling(ShownRun& shown, const std::string& failing) : FakeRunView(shown), failing_(failing) {}

  void SetProgress(const std::string& caption, int flood_percent) override {
    if (caption == "10 %") FailAs("progress");
    FakeRunView::SetProgress(caption, flood_percent);
  }
  void AppendTranscript(const std::string& text) override {
    if (text == "a") FailAs("append");
    has_output_ = has_output_ || text == "a";
    FakeRunView::AppendTranscript(text);
  }
  void ShowHeldBack() override {
    FailAs("show held back");
    FakeRunView::ShowHeldBack();
  }
  void Repaint() override {
    if (has_output_) FailAs("repaint");
    FakeRunView::Repaint();
  }

 private:
  void FailAs(const std::string& what) {
    if (failing_ == what) throw Error(kInternalError, "test", "It cannot be shown");
  }

  std::string failing_;
  bool has_output_ = false;
};

class StumblingViews : public FormViews {
 public:
  StumblingViews(ShownRun& run, const std::string& failing) : run_(run), failing_(failing) {}

  std::unique_ptr<RunView> MakeRunView() override {
    return std::make_unique<Stumbling>(run_, failing_);
  }

 private:
  ShownRun& run_;
  std::string failing_;
};

class ShowingOutput : public FrmHHC, public testing::WithParamInterface<const char*> {};

TEST_P(ShowingOutput, MayFailAndTheRunGoesOn) {
  frmHHC::Unload();
  Globals().views = std::make_shared<StumblingViews>(views->run, GetParam());
  processes->exit_code = 1;
  processes->waits = {true, true};
  EXPECT_EQ(Compile({"a"}), 1);
  EXPECT_EQ(ErrorLog(), "");
  EXPECT_TRUE(frmHHC::Load().Transcript().ends_with("a\r\nDone!"));
  EXPECT_EQ(Shown().caption, "100 %");
}
INSTANTIATE_TEST_SUITE_P(Steps, ShowingOutput,
                         testing::Values("progress", "append", "repaint", "show held back"));

TEST_F(FrmHHC, IgnoringAWindowThatCannotBeShownStillLocksItForTheRun) {
  class Invisible : public FakeRunView {
   public:
    using FakeRunView::FakeRunView;
    void ShowModeless() override { throw Error(kOutOfMemory, "test", "no window"); }
  };
  class InvisibleViews : public FormViews {
   public:
    explicit InvisibleViews(ShownRun& run) : run_(run) {}
    std::unique_ptr<RunView> MakeRunView() override { return std::make_unique<Invisible>(run_); }

   private:
    ShownRun& run_;
  };
  const auto dialog = std::make_shared<FakeErrorDialog>();
  dialog->answers = {"IGNORE"};
  ErrorHandler().ErrorHandlerActions(ehaErrorDialog);
  ErrorHandler().Dialog(dialog);
  frmHHC::Unload();
  Globals().views = std::make_shared<InvisibleViews>(views->run);
  bool could_be_closed = true;
  processes->on_start = [&] { could_be_closed = Shown().may_close; };
  Compile({"a"});
  EXPECT_FALSE(could_be_closed);
  EXPECT_EQ(dialog->reports.size(), 1u);
  ErrorHandler().Dialog(nullptr);
}

TEST_F(FrmHHC, LetsPendingMessagesBeProcessedWithEachPieceOfOutput) {
  Compile({"a", "b"});
  EXPECT_EQ(desktop->message_passes, 1 + 2 * 3)
      << "one at the start; the window's and the runner's for each piece and the empty last one";
}

TEST_F(FrmHHC, CanBeClosedAfterARunThatWasLeft) {
  // The message box fails, and the error handler's answer leaves the procedure.
  class NoBoxes : public FakeDesktop {
   public:
    MessageAnswer ShowMessage(const std::string&, std::uint32_t, const std::string&) override {
      throw Error(kOutOfMemory, "test", "no box");
    }
  };
  TheServices().desktop = std::make_shared<NoBoxes>();
  EXPECT_EQ(Compile({"HHC1: a"}), 0) << "the result reached so far is the exit code";
  EXPECT_TRUE(Shown().may_close);
  EXPECT_FALSE(Shown().is_busy);
  frmHHC::Unload();
  EXPECT_FALSE(frmHHC::IsLoaded());
}

TEST_F(FrmHHC, StaysLoadedWhileARunLasts) {
  class Impatient : public FakeDesktop {
   public:
    void ProcessMessages() override { frmHHC::Unload(); }
  };
  TheServices().desktop = std::make_shared<Impatient>();
  processes->exit_code = 1;
  EXPECT_EQ(Compile({"a", "b"}), 1);
  EXPECT_TRUE(frmHHC::IsLoaded());
}

TEST_F(FrmHHC, IsTracedUnderItsQualifiedName) {
  ErrorHandler().TracingEnabled(true);
  Compile({});
  EXPECT_NE(files->files["/log/trace.txt"].find("Entered routine: Kestrel.frmHHC.Execute\r\n"),
            std::string::npos);
}

TEST_F(FrmHHC, LoadsWithItsValuesReset) {
  frmHHC& form = frmHHC::Load();
  form.Decompile(true);
  form.FilesCount(7);
  form.ProjectPath("C:\\a.hhp");
  EXPECT_EQ(&frmHHC::Load(), &form) << "loading twice keeps the window";
  EXPECT_TRUE(form.Decompile());
  EXPECT_EQ(form.ProjectPath(), "C:\\a.hhp");
  frmHHC::Unload();
  EXPECT_FALSE(Shown().exists);
  EXPECT_FALSE(frmHHC::Load().Decompile());
  EXPECT_EQ(frmHHC::Load().FilesCount(), 0);
  EXPECT_EQ(frmHHC::Load().ProjectPath(), "");
}

// A host with one web, or none, that counts its refreshes.
class CountingHost : public HostApplication {
 public:
  class Web : public SiteWeb {
   public:
    int refreshes = 0;
    bool fails = false;
    std::string Url() override { return ""; }
    std::shared_ptr<SiteFolder> BaseFolder() override { return nullptr; }
    std::shared_ptr<SiteNode> NavigationRoot() override { return nullptr; }
    std::shared_ptr<SiteNode> HomeNode() override { return nullptr; }
    scrivo::OpenPages OpenPages() override { return {}; }
    void Refresh() override {
      ++refreshes;
      if (fails) throw Error(kInternalError, "test", "no refresh");
    }
  };
  std::shared_ptr<Web> web;

  std::shared_ptr<SiteWeb> CurrentWeb() override { return web; }
  std::string RelativeLocation(SiteWeb&, const std::string&) override { return ""; }
  std::string Version() override { return ""; }
};

TEST_F(FrmHHC, RefreshesTheHostsWebWhenItIsUnloaded) {
  auto host = std::make_shared<CountingHost>();
  host->web = std::make_shared<CountingHost::Web>();
  Globals().HostApplication = host;
  frmHHC::Unload();
  EXPECT_EQ(host->web->refreshes, 1);
  frmHHC::Unload();
  EXPECT_EQ(host->web->refreshes, 1) << "it is not loaded any more";
}

TEST_F(FrmHHC, IsUnloadedWithoutAWebOrWithOneThatCannotBeRefreshed) {
  auto host = std::make_shared<CountingHost>();
  Globals().HostApplication = host;
  frmHHC::Unload();
  EXPECT_FALSE(frmHHC::IsLoaded());
  frmHHC::Load();
  host->web = std::make_shared<CountingHost::Web>();
  host->web->fails = true;
  frmHHC::Unload();
  EXPECT_FALSE(frmHHC::IsLoaded());
}

}  // namespace
}  // namespace scrivo
