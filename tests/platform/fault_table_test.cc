// Each call of the system that a routine makes is made to fail once; the table says what becomes
// of it: an error with its number, the routine's default result, or nothing that anybody sees.

#include <functional>
#include <string>
#include <vector>

#include "platform/common_dialog.h"
#include "platform/shell.h"
#include "platform/temp_files.h"
#include "system/files.h"
#include "tests/doubles/faulty_services.h"

namespace scrivo {
namespace {

const std::string kProgram = "C:\\a\\tool.exe";
const std::string kPage = "C:\\a\\page.htm";

// What a routine gave: "= " and its result, or "error " and a number.
using Outcome = std::string;

struct FailingCall {
  const char* name;
  Outcome failed;  // when it fails by its result, if it has one that tells a failure
  Outcome thrown;  // when it fails by an Error
};

struct Row {
  const char* routine;
  std::function<std::string()> call;
  Outcome undisturbed;
  // The calls that can fail, in the order in which the routine makes them.
  std::vector<FailingCall> faults;
};

Outcome ErrorNumber(std::int32_t number) { return "error " + std::to_string(number); }

std::string Done(const std::function<void()>& call) {
  call();
  return "done";
}

std::string ChosenFile(bool save, std::int32_t result = 1) {
  static_cast<FakeDesktop&>(*TheServices().desktop).file_result = result;
  FileDialogParameters dialog{.Save = save};
  const bool confirmed = VBGetOpenFileName(&dialog);
  return (confirmed ? "chosen " : "none ") + dialog.FileName + " " +
         std::to_string(LastExtendedDialogError());
}

std::vector<Row> ShellRows() {
  const Outcome not_found = ErrorNumber(CShell::kFileNotFound);
  const Outcome no_memory = ErrorNumber(CShell::kOutOfMemory);
  const Outcome failure = ErrorNumber(CShell::kComponentFailure);
  const FailingCall window = {"DesktopWindow", failure, failure};
  const FailingCall execute = {"Execute", no_memory, failure};
  const FailingCall file_exists = {"FileExists", not_found, failure};
  // A registry that cannot be read leaves the verb "open", which the shell then tries.
  const FailingCall open_key = {"OpenKey", "= done", failure};
  const FailingCall query_value = {"QueryValue", "= done", failure};
  return {
      {"CreateNewMailMessage",
       [] { return Done([] { CShell().CreateNewMailMessage("a", "", "", ""); }); },
       "= done",
       {window, execute}},
      {"OpenUrl",
       [] { return Done([] { CShell().OpenUrl("http://a/"); }); },
       "= done",
       {window, execute}},
      {"ExploreFolder",
       [] { return Done([] { CShell().ExploreFolder("C:\\a"); }); },
       "= done",
       {window, execute}},
      {"OpenFolder",
       [] { return Done([] { CShell().OpenFolder("C:\\a"); }); },
       "= done",
       {window, execute}},
      {"LaunchProgram",
       [] { return Done([] { CShell().LaunchProgram(kProgram); }); },
       "= done",
       {file_exists, window, execute}},
      {"LaunchProgram, waiting",
       [] { return Done([] { CShell().LaunchProgram(kProgram, "", true); }); },
       "= done",
       {file_exists,
        {"Start", ErrorNumber(CShell::kCannotCreateProcess), failure},
        {"Close", failure, failure},
        {"WaitForEnd", failure, failure},
        {"Close", failure, failure}}},
      {"OpenDocument",
       [] { return Done([] { CShell().OpenDocument(kPage); }); },
       "= done",
       {file_exists,
        open_key,
        query_value,
        query_value,
        open_key,
        query_value,
        {"EnumKey", "= done", failure},
        window,
        execute}},
      {"ShowProperties",
       [] { return Done([] { CShell().ShowProperties("C:\\a", 0); }); },
       "= done",
       {{"FileExists", "= done", failure},
        {"FolderExists", not_found, failure},
        window,
        {"ExecuteExtended", ErrorNumber(CShell::kCannotShowProperties), failure}}},
  };
}

std::vector<Row> RoutineRows() {
  const Outcome write_error = ErrorNumber(kDeviceIoError);
  return {
      {"VBGetOpenFileName",
       [] { return ChosenFile(false); },
       "= chosen C:\\b 0",
       {{"OpenFileDialog", "= none  12291", "= none  0"}}},
      {"VBGetOpenFileName, saving",
       [] { return ChosenFile(true); },
       "= chosen C:\\b 0",
       {{"SaveFileDialog", "= none  12291", "= none  0"}}},
      {"VBGetOpenFileName, without a dialog",
       [] { return ChosenFile(false, -1); },
       "= none  12291",
       {{"OpenFileDialog", "= none  12291", "= none  0"},
        {"ExtendedDialogError", "= none  0", "= none  0"}}},
      {"BrowseFolder",
       [] { return BrowseFolder(0, "t"); },
       "= C:\\b",
       {{"BrowseForFolder", "= ", "= "}, {"PathFromItemList", "= ", "= "}}},
      // When the file cannot be removed again, its name is still one that nobody else has.
      {"GetTempFile",
       [] { return GetTempFile("C:\\a", "Scrivo"); },
       "= C:\\a\\Scr1A2.tmp",
       {{"MakeUniqueFile", "= ", "= "}, {"Remove", "= C:\\a\\Scr1A2.tmp", "= C:\\a\\Scr1A2.tmp"}}},
      {"GetShortPath",
       [] { return GetShortPath(kProgram); },
       "= C:\\a\\tool.exe",
       {{"ShortForm", "= ", "= "}}},
      {"GetSpecialFolder",
       [] { return GetSpecialFolder(0, 5); },
       "= C:\\b",
       {{"SpecialFolderLocation", "= ", "= "},
        {"PathFromItemList", "= ", "= "},
        {"FreeItemList", "= C:\\b", "= C:\\b"}}},
      {"WriteTextFile",
       [] { return Done([] { WriteTextFile("C:\\a\\x", "t"); }); },
       "= done",
       {{"Write", write_error, write_error}}},
      {"ShowHelp",
       [] { return Done(&ShowHelp); },
       "= done",
       {{"ModuleFolder", "= done", "= done"}, {"HtmlHelp", "= done", "= done"}}},
  };
}

class FaultTable : public WithFakeServices {
 protected:
  // Runs one routine in a fresh world in which call `at` fails.
  Outcome Run(const std::function<std::string()>& call, int at, bool throws) {
    fault = {};
    fault.at = at;
    fault.throws = throws;
    auto faulty_files = std::make_shared<FaultyFiles>(&fault);
    faulty_files->files = {{kProgram, ""}, {kPage, ""}};
    faulty_files->folders = {"C:\\a"};
    auto faulty_desktop = std::make_shared<FaultyDesktop>(&fault);
    faulty_desktop->file_result = 1;
    faulty_desktop->file_answer.file_buffer = "C:\\b";
    faulty_desktop->extended_error = 12291;
    faulty_desktop->browse_result = 1;
    faulty_desktop->browse_path = "C:\\b";
    auto faulty_registry = std::make_shared<FaultyRegistry>(&fault);
    StoredKey& classes =
        faulty_registry->tree[kHkeyLocalMachine].MakeKey("SOFTWARE").MakeKey("Classes");
    classes.MakeKey(".htm").values = {{"", kRegSz, std::string("htmlfile\0", 9)}};
    classes.MakeKey("htmlfile").MakeKey("Shell").MakeKey("open");
    TheServices().files = faulty_files;
    TheServices().desktop = faulty_desktop;
    TheServices().registry = faulty_registry;
    TheServices().processes = std::make_shared<FaultyProcesses>(&fault);
    TheServices().shell = std::make_shared<FaultyShell>(&fault);
    TheServices().system = std::make_shared<FaultySystem>(&fault);
    Globals() = GlobalState(PathStyle::kWindows);
    try {
      return "= " + call();
    } catch (const Error& error) {
      return ErrorNumber(error.number);
    }
  }

  void Check(const std::vector<Row>& rows) {
    for (const Row& row : rows) {
      SCOPED_TRACE(row.routine);
      EXPECT_EQ(Run(row.call, -1, false), row.undisturbed);
      EXPECT_EQ(static_cast<std::size_t>(fault.calls), row.faults.size());
      for (std::size_t i = 0; i < row.faults.size(); ++i) {
        const FailingCall& failing = row.faults[i];
        const int at = static_cast<int>(i);
        SCOPED_TRACE("call " + std::to_string(at) + ", " + failing.name);
        EXPECT_EQ(Run(row.call, at, false), failing.failed);
        EXPECT_EQ(fault.name, failing.name);
        EXPECT_EQ(Run(row.call, at, true), failing.thrown);
      }
    }
  }

  // The outcome when the user gives this answer to the report of the call that throws.
  Outcome Answered(MessageAnswer answer, const std::function<std::string()>& call, int at) {
    ErrorHandler().ErrorHandlerActions(ehaMessageBox);
    return Run(
        [&] {
          static_cast<FakeDesktop&>(*TheServices().desktop).answers = {answer};
          return call();
        },
        at, true);
  }

  Fault fault;
};

TEST_F(FaultTable, OfTheShell) { Check(ShellRows()); }

TEST_F(FaultTable, OfDialogsAndSmallRoutines) { Check(RoutineRows()); }

TEST_F(FaultTable, OfDialogsWithTheUsersAnswers) {
  const std::function<std::string()> choose = [] { return ChosenFile(false); };
  const std::function<std::string()> fail = [] { return ChosenFile(false, -1); };
  const std::function<std::string()> browse = [] { return BrowseFolder(0, "t"); };
  const struct {
    const std::function<std::string()>& call;
    int at;
    Outcome aborted, retried, ignored;
  } rows[] = {
      {choose, 0, "= none  0", "= chosen C:\\b 0", "= none  0"},
      {fail, 1, "= none  0", "= none  12291", "= none  0"},
      {browse, 0, "= ", "= C:\\b", "= "},
      // What follows a path that was not given is the buffer as it was: blanks.
      {browse, 1, "= ", "= C:\\b", "= " + std::string(260, ' ')},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE("row " + std::to_string(&row - rows));
    EXPECT_EQ(Answered(MessageAnswer::kAbort, row.call, row.at), row.aborted);
    EXPECT_EQ(Answered(MessageAnswer::kRetry, row.call, row.at), row.retried);
    EXPECT_EQ(Answered(MessageAnswer::kIgnore, row.call, row.at), row.ignored);
  }
}

}  // namespace
}  // namespace scrivo
