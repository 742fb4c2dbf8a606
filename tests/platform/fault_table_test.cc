// Each call of the system that a routine makes is made to fail once; the table says what becomes
// of it: an error with its number, the routine's default result, or nothing that anybody sees.

#include <functional>
#include <string>
#include <vector>

#include "platform/common_dialog.h"
#include "platform/help.h"
#include "platform/shell.h"
#include "platform/special_folder.h"
#include "platform/temp_files.h"
#include "platform/text_file.h"
#include "tests/platform/faulty_services.h"

namespace scrivo {
namespace {

const std::string kProgram = "C:\\a\\tool.exe";
const std::string kPage = "C:\\a\\page.htm";

/// What a routine gave: "= " and its result, or "error " and a number.
using Outcome = std::string;

struct Row {
  const char* routine;
  std::function<std::string()> call;
  Outcome undisturbed;
  /// The failing calls, in the order in which the routine makes them, with the outcome of each.
  std::vector<std::pair<const char*, Outcome>> faults;
};

Outcome ErrorNumber(std::int32_t number) { return "error " + std::to_string(number); }

std::string Done(const std::function<void()>& call) {
  call();
  return "done";
}

std::string ChosenFile(bool save) {
  FileDialogParameters dialog{.Save = save};
  const bool confirmed = VBGetOpenFileName(&dialog);
  return (confirmed ? "chosen " : "none ") + dialog.FileName + " " +
         std::to_string(LastExtendedDialogError());
}

std::vector<Row> ShellRows() {
  const Outcome not_found = ErrorNumber(CShell::kFileNotFound);
  const Outcome no_memory = ErrorNumber(CShell::kOutOfMemory);
  const Outcome failure = ErrorNumber(CShell::kComponentFailure);
  return {
      {"CreateNewMailMessage",
       [] { return Done([] { CShell().CreateNewMailMessage("a", "", "", ""); }); },
       "= done",
       {{"Execute", no_memory}}},
      {"OpenUrl",
       [] { return Done([] { CShell().OpenUrl("http://a/"); }); },
       "= done",
       {{"Execute", no_memory}}},
      {"ExploreFolder",
       [] { return Done([] { CShell().ExploreFolder("C:\\a"); }); },
       "= done",
       {{"Execute", no_memory}}},
      {"OpenFolder",
       [] { return Done([] { CShell().OpenFolder("C:\\a"); }); },
       "= done",
       {{"Execute", no_memory}}},
      {"LaunchProgram",
       [] { return Done([] { CShell().LaunchProgram(kProgram); }); },
       "= done",
       {{"FileExists", not_found}, {"Execute", no_memory}}},
      {"LaunchProgram, waiting",
       [] { return Done([] { CShell().LaunchProgram(kProgram, "", true); }); },
       "= done",
       {{"FileExists", not_found},
        {"Start", ErrorNumber(CShell::kCannotCreateProcess)},
        {"WaitForEnd", failure}}},
      // A registry that cannot be read leaves the verb "open", which the shell then tries.
      {"OpenDocument",
       [] { return Done([] { CShell().OpenDocument(kPage); }); },
       "= done",
       {{"FileExists", not_found},
        {"OpenKey", "= done"},
        {"QueryValue", "= done"},
        {"QueryValue", "= done"},
        {"OpenKey", "= done"},
        {"QueryValue", "= done"},
        {"EnumKey", "= done"},
        {"Execute", no_memory}}},
      {"ShowProperties",
       [] { return Done([] { CShell().ShowProperties("C:\\a", 0); }); },
       "= done",
       {{"FileExists", "= done"},
        {"FolderExists", not_found},
        {"ExecuteExtended", ErrorNumber(CShell::kCannotShowProperties)}}},
  };
}

std::vector<Row> RoutineRows() {
  return {
      {"VBGetOpenFileName",
       [] { return ChosenFile(false); },
       "= chosen C:\\b 0",
       {{"OpenFileDialog", "= none  12291"}}},
      {"VBGetOpenFileName, saving",
       [] { return ChosenFile(true); },
       "= chosen C:\\b 0",
       {{"SaveFileDialog", "= none  12291"}}},
      {"BrowseFolder",
       [] { return BrowseFolder(0, "t"); },
       "= C:\\b",
       {{"BrowseForFolder", "= "}, {"PathFromItemList", "= "}}},
      // When the file cannot be removed again, its name is still one that nobody else has.
      {"GetTempFile",
       [] { return GetTempFile("C:\\a", "Scrivo"); },
       "= C:\\a\\Scr1A2.tmp",
       {{"MakeUniqueFile", "= "}, {"Remove", "= C:\\a\\Scr1A2.tmp"}}},
      {"GetShortPath",
       [] { return GetShortPath(kProgram); },
       "= C:\\a\\tool.exe",
       {{"ShortForm", "= "}}},
      {"GetSpecialFolder",
       [] { return GetSpecialFolder(0, 5); },
       "= C:\\b",
       {{"SpecialFolderLocation", "= "}, {"PathFromItemList", "= "}}},
      {"WriteTextFile",
       [] { return Done([] { WriteTextFile("C:\\a\\x", "t"); }); },
       "= done",
       {{"Write", ErrorNumber(kDeviceIoError)}}},
      {"ShowHelp", [] { return Done(&ShowHelp); }, "= done", {{"HtmlHelp", "= done"}}},
  };
}

class FaultTable : public WithFakeServices {
 protected:
  /// Runs one routine in a fresh world in which call `at` fails.
  Outcome Run(const Row& row, int at) {
    fault = {};
    fault.at = at;
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
    Globals() = GlobalState(PathStyle::kWindows);
    try {
      return "= " + row.call();
    } catch (const Error& error) {
      return ErrorNumber(error.number);
    }
  }

  void Check(const std::vector<Row>& rows) {
    for (const Row& row : rows) {
      SCOPED_TRACE(row.routine);
      EXPECT_EQ(Run(row, -1), row.undisturbed);
      EXPECT_EQ(static_cast<std::size_t>(fault.calls), row.faults.size());
      for (std::size_t at = 0; at < row.faults.size(); ++at) {
        SCOPED_TRACE("call " + std::to_string(at) + ", " + row.faults[at].first);
        EXPECT_EQ(Run(row, static_cast<int>(at)), row.faults[at].second);
        EXPECT_EQ(fault.name, row.faults[at].first);
      }
    }
  }

  Fault fault;
};

TEST_F(FaultTable, OfTheShell) { Check(ShellRows()); }

TEST_F(FaultTable, OfDialogsAndSmallRoutines) { Check(RoutineRows()); }

}  // namespace
}  // namespace scrivo
