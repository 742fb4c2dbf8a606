#include "cli/console_errors.h"

#include <gtest/gtest.h>

#include "compiler/spawn_console_app.h"
#include "platform/globals.h"

namespace scrivo {
namespace {

class ConsoleErrorsTest : public testing::Test {
 protected:
  ConsoleErrorsTest() {
    Globals().compiler_path = "/bin/hhc";
    Globals().working_folder = "/web";
  }
  ~ConsoleErrorsTest() override { Globals() = GlobalState(); }

  static std::string StartFailure(const std::string& code) {
    return ErrorText(
        Error(CSpawnConsoleApp::kCreateProcessFailed, "", "CreateProcess failed. Error: " + code));
  }
};

TEST_F(ConsoleErrorsTest, SaysWhyACompilerCouldNotBeStarted) {
  const std::string start = "/bin/hhc: the compiler could not be started: ";
  const std::string missing = start +
                              "a file that it needs to run is not there. Install it again, or name "
                              "another with --compiler.";
  EXPECT_EQ(StartFailure("2"), missing);
  EXPECT_EQ(StartFailure("3"), missing);
  EXPECT_EQ(
      StartFailure("5"),
      start + "it may not be run. See that it is a program and has the permission to be run.");
  EXPECT_EQ(StartFailure("193"),
            start + "it is no program for this system. Name another with --compiler.");
  EXPECT_EQ(StartFailure("267"),
            start + "the folder /web cannot be entered. Ask for the right to enter it.");
  EXPECT_EQ(StartFailure("8"), start + "CreateProcess failed. Error: 8");
}

TEST_F(ConsoleErrorsTest, AddsWhatToDoToTheSystemsErrors) {
  EXPECT_EQ(ErrorText(Error(kDiskFull, "", "Disk full: a")),
            "Disk full: a. Free some space and run again.");
  EXPECT_EQ(ErrorText(Error(kPermissionDenied, "", "Permission denied: a")),
            "Permission denied: a. See that you may read and write there.");
  EXPECT_EQ(ErrorText(Error(kOutOfMemory, "", "Out of memory")),
            "Out of memory. Close other programs and run again.");
  EXPECT_EQ(ErrorText(Error(kFileNotFound, "", "File not found: a")), "File not found: a");
}

TEST_F(ConsoleErrorsTest, AddsNothingToATextThatSaysWhatToDoItself) {
  EXPECT_EQ(ErrorText(Error(kPermissionDenied, "", "The web cannot be read. Ask somebody.")),
            "The web cannot be read. Ask somebody.");
}

}  // namespace
}  // namespace scrivo
