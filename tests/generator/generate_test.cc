#include "compiler/frm_hhc.h"
#include "tests/generator/generator_test.h"

namespace scrivo {
namespace {

constexpr char kOutput[] = "C:\\Webs\\site\\site.CHM";

// A web of one page with a keyword, and a compiler that makes the output file.
class GenerateTest : public GeneratorTest {
 protected:
  GenerateTest() {
    site.AddNode(nullptr, "Start", site.AddPage("start.htm", "Start", "word"));
    InstallCompiler();
    processes->on_start = [&] { files->files[kOutput] = "compiled"; };
  }

  ItemPanel& Params() { return Form()->suiParams(); }
  void Generate() { Form()->Generate(); }
  bool HasCompiled() const { return !processes->requests.empty(); }
  bool ProjectFilesAreLeft() const {
    for (const auto& [path, content] : files->files) {
      if (path.find("\\Scr") != std::string::npos) return true;
    }
    return false;
  }
  // Whether any source was begun, cleaned up since or not.
  bool HasMadeFiles() const {
    return std::any_of(files->log.begin(), files->log.end(), [](const std::string& entry) {
      return entry.starts_with("unique ") || entry.starts_with("write ");
    });
  }
  // The run ended as every run does: with a refreshed host and without the dialog.
  void ExpectEnded() {
    EXPECT_GE(site.CountOf("Refresh"), 1);
    EXPECT_FALSE(frmMain::IsLoaded());
  }
  std::vector<std::string> Removals() const {
    std::vector<std::string> removals;
    for (const std::string& entry : files->log) {
      if (entry.compare(0, 8, "remove! ") == 0 && entry.find(".tmp") + 4 != entry.size()) {
        removals.push_back(entry.substr(8));
      }
    }
    return removals;
  }
};

TEST_F(GenerateTest, OneWholeRun) {
  Generate();
  ASSERT_EQ(processes->requests.size(), 1U);
  EXPECT_EQ(processes->requests[0].command_line, "\"C:\\HHW\\hhc.exe\" Scr1A5.hhp");
  EXPECT_EQ(processes->requests[0].folder, "C:\\Webs\\site");
  EXPECT_FALSE(ProjectFilesAreLeft());
  ASSERT_EQ(desktop->help_calls.size(), 1U);
  EXPECT_EQ(desktop->help_calls[0].owner, 77U);
  EXPECT_EQ(desktop->help_calls[0].file, kOutput);
  EXPECT_EQ(desktop->help_calls[0].command, 1U);
  EXPECT_EQ(desktop->help_calls[0].data, "start.htm");
  EXPECT_TRUE(desktop->messages.empty());
  EXPECT_EQ(Reports(), 0);
  ExpectEnded();
}

TEST_F(GenerateTest, TheDialogStandsStillWhileTheCompilerRunsAndNoLonger) {
  const auto told = [&](const char* what) {
    return std::count(views->main.log.begin(), views->main.log.end(), what);
  };
  processes->on_start = [&] {
    EXPECT_EQ(told("disable"), 1);
    EXPECT_EQ(told("enable"), 0);
  };
  desktop->on_message = [&] {
    EXPECT_EQ(told("disable"), told("enable")) << "a box needs its owner";
  };
  site.open.push_back({"a.htm", true});
  Generate();
  EXPECT_EQ(told("enable"), 1);
}

TEST_F(GenerateTest, ARunWindowThatStayedFromADecompileCompilesAllTheSame) {
  frmHHC::Load().Decompile(true);
  Generate();
  ASSERT_EQ(processes->requests.size(), 1U);
  EXPECT_EQ(processes->requests[0].command_line, "\"C:\\HHW\\hhc.exe\" Scr1A5.hhp");
}

TEST_F(GenerateTest, TheRunWindowExpectsAsManyFilesAsTheWebHas) {
  site.AddPage("image.gif");
  site.AddPage("sub/page.htm");
  Generate();
  EXPECT_EQ(frmHHC::Load().FilesCount(), 3);
}

TEST_F(GenerateTest, ProjectFilesAreWrittenBeforeTheCompilerRuns) {
  std::vector<std::string> seen;
  processes->on_start = [&] {
    for (const auto& [path, content] : files->files) seen.push_back(path);
  };
  Generate();
  EXPECT_EQ(seen,
            (std::vector<std::string>{
                "C:\\HHW\\hhc.exe", "C:\\Webs\\site\\Scr1A2.hhk", "C:\\Webs\\site\\Scr1A3.hhc",
                "C:\\Webs\\site\\Scr1A4.tmp.htm", "C:\\Webs\\site\\Scr1A5.hhp"}));
}

TEST_F(GenerateTest, CleaningUpRemovesReadOnlyFilesTooInItsOrder) {
  processes->on_start = [&] {
    for (const auto& [path, content] : files->files) files->read_only.insert(path);
  };
  Generate();
  EXPECT_FALSE(ProjectFilesAreLeft());
  EXPECT_EQ(Removals(), (std::vector<std::string>{
                            "C:\\Webs\\site\\Scr1A5.hhp", "C:\\Webs\\site\\Scr1A3.hhc",
                            "C:\\Webs\\site\\Scr1A2.hhk", "C:\\Webs\\site\\Scr1A4.tmp.htm"}));
}

TEST_F(GenerateTest, AFileThatCannotBeRemovedIsLeftQuietly) {
  processes->on_start = [&] { files->locked.insert("C:\\Webs\\site\\Scr1A5.hhp"); };
  Generate();
  EXPECT_TRUE(files->FileExists("C:\\Webs\\site\\Scr1A5.hhp"));
  EXPECT_FALSE(files->FileExists("C:\\Webs\\site\\Scr1A3.hhc"));
  EXPECT_EQ(Reports(), 0);
}

TEST_F(GenerateTest, ProjectFilesAreKeptOnRequest) {
  Params()["LEAVEPROJECTFILE"].checked = true;
  Generate();
  for (const char* name : {"Scr1A2.hhk", "Scr1A3.hhc", "Scr1A4.tmp.htm", "Scr1A5.hhp"}) {
    EXPECT_TRUE(files->FileExists(std::string("C:\\Webs\\site\\") + name)) << name;
  }
  ExpectEnded();
}

TEST_F(GenerateTest, TheHostIsRefreshedOnceByARunThatLeavesItsWindow) {
  Generate();
  ASSERT_TRUE(frmHHC::IsLoaded());  // closing it refreshes the host too
  EXPECT_EQ(site.CountOf("Refresh"), 1);
}

TEST_F(GenerateTest, TheHostIsRefreshedAfterTheCleanUp) {
  Form();
  site.Fail("Refresh", 1);
  Generate();
  EXPECT_TRUE(HasCompiled());
  EXPECT_FALSE(ProjectFilesAreLeft()) << "the aborted run had cleaned up before";
}

TEST_F(GenerateTest, TheRunWindowIsClosedBeforeTheResultIsShown) {
  Params()["CLOSELOG"].checked = false;
  processes->on_start = [&] {
    files->files[kOutput] = "compiled";
    site.Fail("RelativeLocation file:///C:/Webs/site/start.htm", 1);
  };
  Generate();
  EXPECT_EQ(Reports(), 1);
  EXPECT_TRUE(desktop->help_calls.empty());
  EXPECT_FALSE(frmHHC::IsLoaded());
}

TEST_F(GenerateTest, TheRunWindowStaysOpenOnRequest) {
  Generate();
  EXPECT_TRUE(frmHHC::IsLoaded());
}

TEST_F(GenerateTest, TheRunWindowIsClosedOtherwise) {
  Params()["CLOSELOG"].checked = false;
  Generate();
  EXPECT_FALSE(frmHHC::IsLoaded());
}

TEST_F(GenerateTest, TheResultIsShownOnRequestOnly) {
  Params()["VIEWRESULT"].checked = false;
  Generate();
  EXPECT_TRUE(desktop->help_calls.empty());
}

TEST_F(GenerateTest, AStartPageThatTheHostCannotTellIsAnsweredByTheUserBeforeTheResultIsShown) {
  const std::string location = "RelativeLocation file:///C:/Webs/site/start.htm";
  processes->on_start = [&] {
    files->files[kOutput] = "compiled";
    site.Fail(location, 1);
  };
  dialog->answers = {"RETRY"};
  Generate();
  EXPECT_EQ(Reports(), 1);
  EXPECT_TRUE(LastReportIsFrom("Generate"));
  ASSERT_EQ(desktop->help_calls.size(), 1U);
  EXPECT_EQ(desktop->help_calls[0].data, "start.htm");

  desktop->help_calls.clear();
  dialog->answers = {"IGNORE"};
  Generate();
  EXPECT_EQ(Reports(), 2);
  EXPECT_TRUE(desktop->help_calls.empty());
  EXPECT_FALSE(ProjectFilesAreLeft());
  ExpectEnded();
}

TEST_F(GenerateTest, WithoutAStartPageTheResultIsShownWithoutAskingTheHostForOne) {
  Params()["DEFAULTPAGE"].data.clear();
  site.Fail("RelativeLocation", 9);  // the call for an empty address
  Generate();
  EXPECT_EQ(Reports(), 0);
  ASSERT_EQ(desktop->help_calls.size(), 1U);
  EXPECT_EQ(desktop->help_calls[0].data, "");
}

TEST_F(GenerateTest, NoCompilerRunsOnAProjectWhosePagesTheHostCannotPlace) {
  Params()["USEKEYWORDS"].checked = false;
  site.AddPage("other.htm");
  Form();
  site.Fail("RelativeLocation file:///C:/Webs/site/other.htm", 1);
  Generate();
  EXPECT_TRUE(LastReportIsFrom("BuildProjectFile"));
  EXPECT_FALSE(HasCompiled());
  EXPECT_FALSE(ProjectFilesAreLeft());
  ExpectEnded();
}

TEST_F(GenerateTest, AResultThatIsNotThereIsNotShown) {
  processes->on_start = nullptr;
  Generate();
  EXPECT_TRUE(HasCompiled());
  EXPECT_TRUE(desktop->help_calls.empty());
}

TEST_F(GenerateTest, CompilerMessagesKeepTheRunWindowAndShowNoResult) {
  Params()["CLOSELOG"].checked = false;
  processes->outputs = {"HHC5003: Error: Compilation failed\r\n"};
  Generate();
  EXPECT_TRUE(frmHHC::IsLoaded());
  EXPECT_TRUE(desktop->help_calls.empty());
  EXPECT_FALSE(ProjectFilesAreLeft());
  ExpectEnded();
}

TEST_F(GenerateTest, CompilerMessagesLeaveTheProjectFilesOnRequest) {
  Params()["LEAVEPROJECTFILE"].checked = true;
  processes->outputs = {"HHC5003: Error: Compilation failed\r\n"};
  Generate();
  EXPECT_TRUE(ProjectFilesAreLeft());
}

TEST_F(GenerateTest, ACompilersExitCodeAloneIsNoFailure) {
  processes->exit_code = 1;
  Generate();
  EXPECT_EQ(desktop->help_calls.size(), 1U);
}

TEST_F(GenerateTest, WithoutACompilerNothingIsWrittenAndTheDialogCloses) {
  registry->tree = {};
  files->files[kOutput] = "old";
  Generate();
  ASSERT_EQ(desktop->messages.size(), 1U);
  EXPECT_FALSE(HasMadeFiles());
  EXPECT_FALSE(HasCompiled());
  EXPECT_EQ(files->files[kOutput], "old");
  ExpectEnded();
}

TEST_F(GenerateTest, PagesAreSavedBeforeAnythingElse) {
  registry->tree = {};
  files->files[kOutput] = "old";
  site.open = {{"a", true}};
  desktop->answers = {MessageAnswer::kYes};
  Form();
  files->log.clear();
  desktop->on_message = [&] {
    EXPECT_TRUE(files->log.empty());
    EXPECT_EQ(site.CountOf("Save a overwrite"), static_cast<int>(desktop->messages.size()) - 1);
  };
  Generate();
  ASSERT_EQ(desktop->messages.size(), 2U);
  EXPECT_EQ(desktop->messages[0].caption, "Save documents");
  EXPECT_EQ(desktop->messages[1].text, "Microsoft HTML Help WorkShop must be installed");
}

TEST_F(GenerateTest, AWronglyNamedCompilerStopsTheRun) {
  InstallCompiler("C:\\gone");
  files->files.erase("C:\\gone\\hhc.exe");
  desktop->file_result = 1;
  desktop->file_answer.file_buffer = std::string("C:\\HHW\\HHC.EXE\0", 15);
  Generate();
  ASSERT_EQ(desktop->messages.size(), 1U);
  EXPECT_EQ(desktop->messages[0].text, "Wrong file name!");
  EXPECT_FALSE(HasCompiled());
  ExpectEnded();
}

TEST_F(GenerateTest, TheOldOutputIsRemovedFirst) {
  files->files[kOutput] = "old";
  processes->on_start = [&] { EXPECT_FALSE(files->FileExists(kOutput)); };
  Generate();
  EXPECT_TRUE(HasCompiled());
  EXPECT_TRUE(desktop->messages.empty());
}

TEST_F(GenerateTest, AnyOtherFailureToRemoveTheOldOutputIsIgnored) {
  files->files[kOutput] = "old";
  files->failures.emplace(std::string("remove ") + kOutput, Error(kDeviceIoError, "", "I/O"));
  Generate();
  EXPECT_TRUE(HasCompiled());
  EXPECT_TRUE(desktop->messages.empty());
  EXPECT_EQ(Reports(), 0);
}

TEST_F(GenerateTest, ALockedOutputIsFreedByClosingItsViewer) {
  files->files[kOutput] = "old";
  files->locked.insert(kOutput);
  desktop->windows["HH Parent|site"] = 5;
  desktop->answers = {MessageAnswer::kYes};
  Generate();
  ASSERT_EQ(desktop->messages.size(), 1U);
  EXPECT_EQ(desktop->sent, (std::vector<std::pair<WindowHandle, std::uint32_t>>{{5, 16}}));
  EXPECT_TRUE(HasCompiled());
}

TEST_F(GenerateTest, ALockedOutputWithoutItsViewerStopsTheRun) {
  files->files[kOutput] = "old";
  files->read_only.insert(kOutput);
  desktop->windows["HH Parent|another title"] = 5;
  desktop->answers = {MessageAnswer::kYes};
  Generate();
  EXPECT_EQ(desktop->messages.size(), 2U);
  EXPECT_TRUE(desktop->sent.empty());
  EXPECT_FALSE(HasCompiled());
  EXPECT_FALSE(HasMadeFiles());
  EXPECT_EQ(files->files[kOutput], "old");
  ExpectEnded();
}

TEST_F(GenerateTest, WithoutAnIndexTheIndexFileIsNotWritten) {
  Params()["USEKEYWORDS"].checked = false;
  Params()["LEAVEPROJECTFILE"].checked = true;
  Generate();
  EXPECT_FALSE(Written("C:\\Webs\\site\\Scr1A4.hhp").empty());
  EXPECT_EQ(files->files["C:\\Webs\\site\\Scr1A4.hhp"].find("Index File"), std::string::npos);
  EXPECT_EQ(site.CountOf("Property start.htm keywords"), 0);
}

TEST_F(GenerateTest, AWebWithoutKeywordsIsCompiledWithoutAnIndex) {
  site.PageAt("start.htm").properties.clear();
  Params()["LEAVEPROJECTFILE"].checked = true;
  Generate();
  ASSERT_EQ(desktop->messages.size(), 1U);
  EXPECT_EQ(desktop->messages[0].text, "No keywords were found! No index was created!");
  EXPECT_TRUE(HasCompiled());
  const std::string project = Written("C:\\Webs\\site\\Scr1A4.hhp");
  EXPECT_EQ(project.find("Index File"), std::string::npos);
}

TEST_F(GenerateTest, AFileThatIsNotWrittenStopsTheRunAndTheRestIsCleanedUp) {
  for (const char* name : {"Scr1A2.hhk", "Scr1A3.hhc", "Scr1A5.hhp"}) {
    *files = MemoryFiles();
    files->folders.insert("C:\\Webs\\site");
    InstallCompiler();
    Form();
    files->failures.emplace(std::string("write C:\\Webs\\site\\") + name,
                            Error(kDiskFull, "", "disk full"));
    site.calls.clear();
    dialog->reports.clear();
    Generate();
    EXPECT_EQ(Reports(), 1) << name;
    EXPECT_FALSE(HasCompiled()) << name;
    EXPECT_FALSE(ProjectFilesAreLeft()) << name;
    ExpectEnded();
  }
}

TEST_F(GenerateTest, AnAbortInTheDriverItselfLeavesItAtOnce) {
  Form();
  site.Fail("Refresh", 1);
  Generate();
  EXPECT_TRUE(LastReportIsFrom("Generate"));
  EXPECT_TRUE(frmMain::IsLoaded());
}

TEST_F(GenerateTest, RetryAndIgnoreGoOnInTheDriver) {
  Form();
  site.Fail("Refresh", 2);
  dialog->answers = {"RETRY", "IGNORE"};
  Generate();
  EXPECT_EQ(site.CountOf("Refresh"), 2);
  EXPECT_FALSE(frmMain::IsLoaded());
}

TEST_F(GenerateTest, AnAbortedFileCountStillCompiles) {
  Form();
  // The collector is asked by the index, the project and the count, in this order.
  site.Fail("Files", 3);
  dialog->answers = {"RETRY", "RETRY", "RETRY"};
  Generate();
  EXPECT_EQ(Reports(), 3);
  EXPECT_TRUE(HasCompiled());
}

// Run windows of which the first few cannot be made.
class FailingRunViews : public FakeMainViews {
 public:
  int to_fail = 0;

  std::unique_ptr<RunView> MakeRunView() override {
    if (to_fail-- > 0) throw Error(kInternalError, "FailingRunViews", "No window");
    return FakeMainViews::MakeRunView();
  }
};

TEST_F(GenerateTest, AFileCountThatCannotBeGivenIsReportedByTheDriver) {
  const auto failing = std::make_shared<FailingRunViews>();
  Globals().views = failing;
  site.AddPage("sub/page.htm");
  failing->to_fail = 2;
  dialog->answers = {"IGNORE", "RETRY"};  // the first is about what the window is to do
  Generate();
  EXPECT_EQ(Reports(), 2);
  EXPECT_TRUE(LastReportIsFrom("Generate"));
  EXPECT_EQ(frmHHC::Load().FilesCount(), 2);
  EXPECT_TRUE(HasCompiled());
}

TEST_F(GenerateTest, AnErrorThatLeavesTheFileCollectorIsTheDriversToReport) {
  Params()["USEKEYWORDS"].checked = false;
  site.Fail("Files", 2);  // for the project, then for the count
  dialog->answers = {"IGNORE", "THROW", "IGNORE"};
  Generate();
  ASSERT_EQ(Reports(), 3);
  EXPECT_NE(dialog->reports[2].find("CErrorHandler component failure"), std::string::npos);
  EXPECT_TRUE(HasCompiled());
  ExpectEnded();
}

TEST_F(GenerateTest, TheCallStackIsEmptyAfterARun) {
  ErrorHandler().TracingEnabled(true);
  Generate();
  const std::string& trace = files->files["/log/trace.txt"];
  EXPECT_NE(trace.find("Entered routine: Kestrel.frmMain.Generate\r\n"), std::string::npos);
  EXPECT_TRUE(trace.ends_with("Exited routine: Kestrel.frmMain.Generate\r\n")) << trace;
}

TEST_F(GenerateTest, PagesWithUnsavedChangesAreSavedWhenTheUserAgrees) {
  site.open = {{"a", false}, {"b", true}, {"c", true}};
  desktop->answers = {MessageAnswer::kYes};
  Form()->SaveModifiedPages();
  ASSERT_EQ(desktop->messages.size(), 1U);
  EXPECT_EQ(desktop->messages[0].text, "There are unsaved documents. Would you like to save it?");
  EXPECT_EQ(desktop->messages[0].style, 4U + 32U);
  EXPECT_EQ(desktop->messages[0].caption, "Save documents");
  EXPECT_EQ(site.CountOf("Save a overwrite"), 0);
  EXPECT_EQ(site.CountOf("Save b overwrite"), 1);
  EXPECT_EQ(site.CountOf("Save c overwrite"), 1);
}

TEST_F(GenerateTest, TheFirstPageWithUnsavedChangesIsEnoughToAsk) {
  site.open = {{"a", true}, {"b", true}};
  desktop->answers = {MessageAnswer::kNo};
  Form()->SaveModifiedPages();
  EXPECT_EQ(site.CountOf("IsModified a"), 1);
  EXPECT_EQ(site.CountOf("IsModified b"), 0);
}

TEST_F(GenerateTest, OnNoNothingIsSavedAndTheRunGoesOn) {
  site.open = {{"a", true}};
  desktop->answers = {MessageAnswer::kNo};
  Generate();
  EXPECT_EQ(site.CountOf("Save a overwrite"), 0);
  EXPECT_TRUE(HasCompiled());
}

TEST_F(GenerateTest, WithoutUnsavedChangesNothingIsAsked) {
  site.open = {{"a", false}};
  Form()->SaveModifiedPages();
  EXPECT_TRUE(desktop->messages.empty());
}

TEST_F(GenerateTest, APageThatCannotBeSavedIsAnsweredByTheUser) {
  site.open = {{"a", true}, {"b", true}, {"c", true}};
  desktop->answers = {MessageAnswer::kYes};
  Form();
  site.Fail("Save a overwrite", 1);
  site.Fail("Save b overwrite", 1);
  dialog->answers = {"RETRY", "IGNORE"};
  Form()->SaveModifiedPages();
  EXPECT_EQ(site.CountOf("Save a overwrite"), 2);
  EXPECT_EQ(site.CountOf("Save b overwrite"), 1);
  EXPECT_EQ(site.CountOf("Save c overwrite"), 1);
  EXPECT_TRUE(LastReportIsFrom("SaveModifiedPages"));
}

TEST_F(GenerateTest, SavingAbortedTheRunGoesOn) {
  Form();
  site.Fail("OpenPages", 1);
  Generate();
  EXPECT_TRUE(LastReportIsFrom("SaveModifiedPages"));
  EXPECT_TRUE(HasCompiled());
}

TEST_F(GenerateTest, ClosingTheViewerAsksFirst) {
  desktop->answers = {MessageAnswer::kNo};
  EXPECT_TRUE(Form()->CloseHelpViewer("Title"));
  ASSERT_EQ(desktop->messages.size(), 1U);
  EXPECT_EQ(desktop->messages[0].text,
            "Output file is locked. Possibly this file opened by HTMLHelp Viewer.\r\n"
            "Can I try to close it?");
  EXPECT_EQ(desktop->messages[0].style, 4U + 64U);
  EXPECT_EQ(desktop->messages[0].caption, "Scrivo");
}

TEST_F(GenerateTest, TheViewerWithTheTitleIsSentTheCloseMessage) {
  desktop->windows["HH Parent|Title"] = 9;
  desktop->answers = {MessageAnswer::kYes};
  EXPECT_FALSE(Form()->CloseHelpViewer("Title"));
  EXPECT_EQ(desktop->sent, (std::vector<std::pair<WindowHandle, std::uint32_t>>{{9, 16}}));
  EXPECT_EQ(desktop->messages.size(), 1U);
}

TEST_F(GenerateTest, WithoutTheViewerTheUserIsToldThatTheRunStops) {
  desktop->answers = {MessageAnswer::kYes};
  EXPECT_TRUE(Form()->CloseHelpViewer("Title"));
  ASSERT_EQ(desktop->messages.size(), 2U);
  EXPECT_EQ(desktop->messages[1].text,
            "The appropriate HTMLHelp Viewer was not found.\r\n"
            "Please, close it manualy. Compilation stopped");
  EXPECT_EQ(desktop->messages[1].style, 16U);
  EXPECT_EQ(desktop->messages[1].caption, "Scrivo");
}

}  // namespace
}  // namespace scrivo
