#include "ui/console/console_desktop.h"

#include <sstream>

#include "tests/doubles/fake_services.h"

namespace scrivo {
namespace {

class ConsoleDesktopTest : public WithFakeServices {
 protected:
  ConsoleDesktopTest() : console(out, err, Options()), nobody(console) {}
  static ConsoleOptions Options() {
    ConsoleOptions options;
    options.clock = [] { return 0.0; };
    return options;
  }

  std::ostringstream out, err;
  Console console;
  ConsoleDesktop nobody;
};

TEST_F(ConsoleDesktopTest, TurnsAMessageIntoALineByItsIcon) {
  EXPECT_EQ(nobody.ShowMessage("plain", kOkOnly, "Scrivo"), MessageAnswer::kOk);
  nobody.ShowMessage("critical", kCritical, "Scrivo");
  nobody.ShowMessage("exclamation", kExclamation, "Scrivo");
  nobody.ShowMessage("information", kInformation, "Scrivo");
  EXPECT_EQ(err.str(),
            "scrivo: error: plain\nscrivo: error: critical\n"
            "scrivo: warning: exclamation\nscrivo: warning: information\n");
}

TEST_F(ConsoleDesktopTest, TakesAListThatNamesAnErrorAsAnError) {
  nobody.ShowMessage("There are errors.\r\nWarning: a\r\nError: b", kInformation, "Scrivo");
  nobody.ShowMessage("There are errors.\r\nWarning: a", kInformation, "Scrivo");
  EXPECT_EQ(err.str(),
            "scrivo: error: There are errors.\n  Warning: a\n  Error: b\n"
            "scrivo: warning: There are errors.\n  Warning: a\n");
}

TEST_F(ConsoleDesktopTest, AnswersQuestionsWithWhatLosesNothingAndSaysSo) {
  EXPECT_EQ(nobody.ShowMessage("Close it?", kYesNo | kInformation, ""), MessageAnswer::kNo);
  EXPECT_EQ(nobody.ShowMessage("Failed", kAbortRetryIgnore, ""), MessageAnswer::kAbort);
  EXPECT_EQ(err.str(),
            "scrivo: warning: Close it?\n  Answered: No, since nobody can be asked here.\n"
            "scrivo: error: Failed\n  Answered: Abort, since nobody can be asked here.\n");
}

TEST_F(ConsoleDesktopTest, AddsTheHintOfAMessage) {
  nobody.hints["No index!"] = "Use --index.";
  nobody.ShowMessage("No index!", kExclamation, "");
  nobody.ShowMessage("No index", kExclamation, "");
  EXPECT_EQ(err.str(), "scrivo: warning: No index!\n  Use --index.\nscrivo: warning: No index\n");
}

TEST_F(ConsoleDesktopTest, CancelsEveryFileDialog) {
  FileDialogRecord record;
  record.dialog_title = "Select the compiler";
  EXPECT_EQ(nobody.OpenFileDialog(&record), 0);
  EXPECT_EQ(nobody.SaveFileDialog(&record), 0);
  BrowseRecord browse;
  browse.title = "Select a folder";
  EXPECT_EQ(nobody.BrowseForFolder(browse), 0u);
  EXPECT_EQ(
      err.str(),
      "scrivo: error: Select the compiler: nothing was chosen, since nobody can be asked here\n"
      "scrivo: error: Select the compiler: nothing was chosen, since nobody can be asked here\n"
      "scrivo: error: Select a folder: nothing was chosen, since nobody can be asked here\n");
}

TEST_F(ConsoleDesktopTest, FindsNoWindows) {
  EXPECT_EQ(nobody.FindTopLevelWindow("HH Parent", "Help"), 0u);
}

TEST_F(ConsoleDesktopTest, HandsAHelpFileToTheShell) {
  nobody.HtmlHelp(0, "/out/a.chm", kHelpDisplayToc, "index.htm");
  ASSERT_EQ(shell->requests.size(), 1u);
  EXPECT_EQ(shell->requests[0].verb, "open");
  EXPECT_EQ(shell->requests[0].file, "/out/a.chm");
  EXPECT_EQ(err.str(), "");
}

TEST_F(ConsoleDesktopTest, SaysWhenNothingShowsAHelpFile) {
  shell->result = 31;
  nobody.HtmlHelp(0, "/out/a.chm", kHelpDisplayToc, "");
  EXPECT_EQ(err.str(), "scrivo: warning: /out/a.chm: no program could be started to open it\n");
}

}  // namespace
}  // namespace scrivo
