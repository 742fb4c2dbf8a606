// The process runner against real child processes.

#include <cstdlib>
#include <string>
#include <vector>

#include "compiler/spawn_console_app.h"
#include "platform/shell.h"
#include "platform/temp_files.h"
#include "tests/doubles/fake_desktop.h"
#include "tests/doubles/real_services.h"

namespace scrivo {
namespace {

class SpawnChild : public WithRealServices {
 protected:
  SpawnChild() {
    app.OnProcessStarted = [this] { ++starts; };
    app.OnProcessOutputs = [this](const std::string& output) { outputs.push_back(output); };
  }

  static std::string Child() {
    const char* name = SystemPathStyle() == PathStyle::kWindows ? "spawn_child.exe" : "spawn_child";
    return TheServices().system->ModuleFolder() + Separator(SystemPathStyle()) + name;
  }
  std::int32_t Run(const std::string& arguments) {
    return app.ExecuteApp('"' + Child() + '"' + ' ' + arguments, folder);
  }
  /// A path in the test's folder as an argument that needs no quotes.
  std::string UnquotedInFolder(const std::string& name) const {
    return GetShortPath(folder) + Separator(SystemPathStyle()) + name;
  }
  std::string Text() const {
    std::string text;
    for (const std::string& output : outputs) text += output;
    return text;
  }

  CSpawnConsoleApp app;
  int starts = 0;
  std::vector<std::string> outputs;
};

TEST_F(SpawnChild, ASilentChildGivesOneEmptyOutputAndItsExitCode) {
  EXPECT_EQ(Run("silent"), 7);
  EXPECT_EQ(starts, 1);
  EXPECT_EQ(outputs, std::vector<std::string>{""});
}

TEST_F(SpawnChild, FortyBytesComeInPiecesOfSixteen) {
  EXPECT_EQ(Run("forty"), 0);
  EXPECT_EQ(outputs,
            (std::vector<std::string>{"1234567890123456", "abcdefghijklmnop", "ABCDEFGH", ""}));
}

TEST_F(SpawnChild, ALineBreakMayBeSplitBetweenTwoPieces) {
  EXPECT_EQ(Run("split"), 0);
  EXPECT_EQ(outputs, (std::vector<std::string>{"123456789012345\r", "\nnext", ""}));
}

TEST_F(SpawnChild, ErrorOutputComesThroughTheSamePipeInOrder) {
  EXPECT_EQ(Run("interleave"), 4);
  EXPECT_EQ(Text(), "out 1;err 1;out 2;err 2;");
}

TEST_F(SpawnChild, AChildRunsInTheGivenFolder) {
  EXPECT_EQ(Run("folder"), 0);
  EXPECT_EQ(std::filesystem::path(Text()).lexically_normal(),
            std::filesystem::path(folder).lexically_normal());
}

TEST_F(SpawnChild, AChildThatClosesItsOutputAndLivesOnIsStillActive) {
  EXPECT_EQ(Run("close " + UnquotedInFolder("stop")), 259);
  EXPECT_EQ(Text(), "bye");
  EXPECT_EQ(outputs.back(), "");
  TheServices().files->Write(InFolder("stop"), "");
}

TEST_F(SpawnChild, ShortFormsNeedNoQuotes) {
  TheServices().files->Write(InFolder("two words.txt"), "");
  const std::string form = GetShortPath(InFolder("two words.txt"));
  EXPECT_EQ(app.ExecuteApp(GetShortPath(Child()) + " count " + form, folder), 3);
  EXPECT_EQ(app.ExecuteApp(GetShortPath(Child()) + " append " + form, folder), 0);
  EXPECT_EQ(ReadWholeFile(*TheServices().files, InFolder("two words.txt")), "x");
}

TEST_F(SpawnChild, AMissingProgramIsReportedWithItsMisspeltSource) {
  EXPECT_EQ(app.ExecuteApp('"' + InFolder("none.exe") + '"', folder), 0);
  EXPECT_NE(ErrorLog().find("Error: -2147220991, (CreateProcess failed. Error: 2)\r\n\tin "
                            "Kestrel.CSpawnConsoleApp.ExecuteApp"),
            std::string::npos)
      << ErrorLog();
  EXPECT_EQ(starts, 0);
}

/// A hundred megabytes; where one read of 16 bytes is slow, as it is on a Windows that is emulated,
/// only when SCRIVO_LONG_TESTS is set.
std::uint64_t FloodSize() {
  const bool whole =
      SystemPathStyle() == PathStyle::kPosix || std::getenv("SCRIVO_LONG_TESTS") != nullptr;
  return whole ? 100'000'000 : 1'600'000;
}

TEST_F(SpawnChild, AFloodArrivesWhole) {
  const std::uint64_t size = FloodSize();
  std::uint64_t bytes = 0;
  std::uint64_t lines = 0;
  TheServices().desktop = std::make_shared<FakeDesktop>();
  app.OnProcessOutputs = [&](const std::string& output) {
    EXPECT_LE(output.size(), 16u);
    bytes += output.size();
    for (const char c : output) lines += c == '\n';
  };
  EXPECT_EQ(Run("flood " + std::to_string(size)), 0);
  EXPECT_EQ(bytes, size);
  EXPECT_EQ(lines, size / 64);
}

TEST_F(SpawnChild, LaunchProgramWithWaitingReturnsWhenTheProgramHasEnded) {
  // Neither program nor parameters are quoted, so both take their short forms.
  CShell().LaunchProgram(Child(), "append " + UnquotedInFolder("made"), true);
  EXPECT_TRUE(TheServices().files->FileExists(InFolder("made")));
}

}  // namespace
}  // namespace scrivo
