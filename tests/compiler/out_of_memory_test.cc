// A run of a tool that runs out of memory once, at each place where it asks for some.

#include <set>
#include <utility>

#include "compiler/frm_hhc.h"
#include "platform/registry.h"
#include "tests/doubles/failing_new.h"
#include "tests/doubles/fake_error_dialog.h"
#include "tests/doubles/fake_run_view.h"
#include "tests/doubles/fake_services.h"

namespace scrivo {
namespace {

// Too long for a string to hold it without memory of its own.
constexpr const char* kInstallFolder = "C:\\Program Files\\HTML Help Workshop";

class RunOutOfMemory : public WithFakeServices {
 protected:
  RunOutOfMemory() {
    CRegistry keys;
    keys.Init(kHkeyCurrentUser);
    keys.SetValue("Software\\Microsoft\\HTML Help Workshop", "InstallDir", kInstallFolder, kRegSz);
    ErrorHandler().ErrorHandlerActions(ehaErrorDialog);
    ErrorHandler().Dialog(dialog);
  }
  ~RunOutOfMemory() override {
    frmHHC::Unload();
    ErrorHandler().Dialog(nullptr);
    Globals() = GlobalState();
  }

  // Runs the compiler in a new window while allocation `at` fails, and ignores what comes of it.
  // False when there are not so many.
  bool Runs(long at) {
    const std::string folder = "C:\\", project = "a.hhp";
    views = std::make_shared<FakeViews>();
    Globals() = GlobalState(PathStyle::kWindows);
    Globals().views = views;
    dialog->answers = {"IGNORE", "IGNORE"};
    desktop->messages.clear();
    processes->requests.clear();
    ErrorHandler().CallStackClear();
    has_thrown = false;
    frmHHC& form = frmHHC::Load();
    allocations_before_failure = at;
    try {
      form.Execute(folder, project);
    } catch (const std::bad_alloc&) {
      has_thrown = true;
    }
    return std::exchange(allocations_before_failure, -1) < 0;
  }
  std::string CommandLine() const {
    return processes->requests.empty() ? "none" : processes->requests[0].command_line;
  }

  std::shared_ptr<FakeViews> views;
  std::shared_ptr<FakeErrorDialog> dialog = std::make_shared<FakeErrorDialog>();
  bool has_thrown = false;
};

TEST_F(RunOutOfMemory, GoesOnBehindTheStatementThatNeededIt) {
  std::set<std::string> command_lines;
  for (long at = 0; Runs(at); ++at) {
    command_lines.insert(CommandLine());
    EXPECT_FALSE(frmHHC::Load().HasRunner()) << at;
    frmHHC::Unload();
    EXPECT_FALSE(frmHHC::IsLoaded()) << "allocation " << at << " has left the window running";
  }
  const std::string whole = std::string("\"") + kInstallFolder + "\\hhc.exe\" a.hhp";
  EXPECT_EQ(CommandLine(), whole) << "no allocation failed this time";
  EXPECT_FALSE(has_thrown);
  // Without a folder nothing is run; a command line that was not formed is empty, and so is a path.
  EXPECT_EQ(command_lines, (std::set<std::string>{"none", "", "\"\" a.hhp", whole}));
}

TEST_F(RunOutOfMemory, GivesTheWindowBackWhenItCannotBegin) {
  ASSERT_TRUE(Runs(0));
  ASSERT_TRUE(has_thrown) << "the first allocation is for the name of the procedure";
  EXPECT_TRUE(views->run.may_close);
  EXPECT_FALSE(views->run.is_busy);
  frmHHC::Unload();
  EXPECT_FALSE(frmHHC::IsLoaded());
}

}  // namespace
}  // namespace scrivo
