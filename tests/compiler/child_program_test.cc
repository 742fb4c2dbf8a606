// Real child processes with the command lines that this system makes, and with much output.

#include <cstdlib>
#include <string>

#include "compiler/spawn_console_app.h"
#include "platform/shell.h"
#include "platform/temp_files.h"
#include "tests/doubles/fake_desktop.h"
#include "tests/doubles/real_services.h"
#include "tests/doubles/test_folder.h"

namespace scrivo {
namespace {

class ChildProgram : public WithRealServices {
 protected:
  const std::string program = TestProgram("test_printer");
  CSpawnConsoleApp app;
};

TEST_F(ChildProgram, ShortFormsNeedNoQuotes) {
  TheServices().files->Write(InFolder("two words.txt"), "");
  const std::string form = GetShortPath(InFolder("two words.txt"));
  EXPECT_EQ(app.ExecuteApp(GetShortPath(program) + " words " + form, folder), 2);
  EXPECT_EQ(app.ExecuteApp(GetShortPath(program) + " append " + form, folder), 0);
  EXPECT_EQ(ReadWholeFile(*TheServices().files, InFolder("two words.txt")), "x");
  EXPECT_EQ(ErrorLog(), "");
}

TEST_F(ChildProgram, AProgramThatIsMissingIsInTheErrorLogWithTheSystemsCode) {
  EXPECT_EQ(app.ExecuteApp('"' + InFolder("none.exe") + '"', folder), 0);
  EXPECT_NE(ErrorLog().find("Error: -2147220991, (CreateProcess failed. Error: 2)\r\n\tin "
                            "Kestrel.CSpawnConsoleApp.ExecuteApp"),
            std::string::npos)
      << ErrorLog();
}

// A hundred megabytes; where one read of 16 bytes is slow, as it is on a Windows that is emulated,
// only when SCRIVO_LONG_TESTS is set.
std::uint64_t FloodSize() {
  const bool whole =
      SystemPathStyle() == PathStyle::kPosix || std::getenv("SCRIVO_LONG_TESTS") != nullptr;
  return whole ? 100'000'000 : 1'600'000;
}

TEST_F(ChildProgram, AFloodOfOutputArrivesWhole) {
  const std::uint64_t size = FloodSize();
  std::uint64_t bytes = 0;
  bool is_as_written = true;
  TheServices().desktop = std::make_shared<FakeDesktop>();
  app.OnProcessOutputs = [&](const std::string& output) {
    bytes += output.size();
    is_as_written &= output.size() <= 16 && output.find_first_not_of('x') == std::string::npos;
  };
  EXPECT_EQ(
      app.ExecuteApp('"' + program + '"' + " bytes " + std::to_string(size) + " exit 3", folder),
      3);
  EXPECT_EQ(bytes, size);
  EXPECT_TRUE(is_as_written);
}

TEST_F(ChildProgram, LaunchingWithWaitingReturnsWhenTheProgramHasEnded) {
  CShell().LaunchProgram(
      program, "append " + GetShortPath(folder) + Separator(SystemPathStyle()) + "made", true);
  EXPECT_TRUE(TheServices().files->FileExists(InFolder("made")));
}

}  // namespace
}  // namespace scrivo
