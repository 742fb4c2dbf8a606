// The runner with real child processes and pipes.

#include "compiler/spawn_console_app.h"
#include "tests/doubles/fake_services.h"
#include "tests/doubles/test_folder.h"

namespace scrivo {
namespace {

class RealChild : public WithFakeServices {
 protected:
  RealChild() {
    TheServices().processes = CreateSystemServices().processes;
    app.OnProcessStarted = [this] { ++starts; };
    app.OnProcessOutputs = [this](const std::string& output) {
      chunks.push_back(output);
      all += output;
    };
  }
  static std::string Quoted(const std::string& path) {
    std::string quoted(1, '"');
    return quoted.append(path).append(1, '"');
  }
  std::int32_t Run(const std::string& arguments) {
    return app.ExecuteApp(Quoted(TestProgram("test_printer")) + " " + arguments,
                          folder.path().string());
  }

  TestFolder folder;
  CSpawnConsoleApp app;
  int starts = 0;
  std::vector<std::string> chunks;
  std::string all;
};

TEST_F(RealChild, GivesASilentChildsExitCodeAndOneEmptyOutput) {
  EXPECT_EQ(Run("exit 7"), 7);
  EXPECT_EQ(starts, 1);
  EXPECT_EQ(chunks, std::vector<std::string>{""});
}

TEST_F(RealChild, ReadsSixteenBytesAtATime) {
  EXPECT_EQ(Run("bytes 40 exit 1"), 1);
  EXPECT_EQ(chunks, (std::vector<std::string>{std::string(16, 'x'), std::string(16, 'x'),
                                              std::string(8, 'x'), ""}));
}

TEST_F(RealChild, IsKnownToHaveNothingToSayForNow) {
  Processes& processes = *TheServices().processes;
  SystemHandle pipe_end = 0;
  StartRequest request;
  ASSERT_TRUE(processes.OpenPipe(&pipe_end, &request.standard_output));
  EXPECT_TRUE(processes.ReadWouldWait(pipe_end)) << "nobody has written anything";
  request.command_line = Quoted(TestProgram("test_printer")) + " bytes 20";
  request.start_flags = kStartUseStandardHandles;
  request.creation_flags = kNormalPriorityClass;
  request.inherit_handles = true;
  StartedProcess child;
  ASSERT_TRUE(processes.Start(request, &child)) << processes.LastError();
  processes.WaitForEnd(child.process);
  char buffer[16];
  std::uint32_t got = 0;
  EXPECT_FALSE(processes.ReadWouldWait(pipe_end)) << "twenty bytes are there";
  EXPECT_TRUE(processes.Read(pipe_end, buffer, sizeof buffer, &got));
  EXPECT_FALSE(processes.ReadWouldWait(pipe_end)) << "four are left";
  EXPECT_TRUE(processes.Read(pipe_end, buffer, sizeof buffer, &got));
  EXPECT_TRUE(processes.ReadWouldWait(pipe_end)) << "this process may still write";
  processes.Close(request.standard_output);
  EXPECT_FALSE(processes.ReadWouldWait(pipe_end)) << "a read finds the end at once";
  for (const SystemHandle handle : {pipe_end, child.process, child.thread}) processes.Close(handle);
}

TEST_F(RealChild, TakesBothOutputsThroughOnePipe) {
  Run("out a err b out c");
  EXPECT_EQ(all, "abc");
}

TEST_F(RealChild, DeliversALineBreakThatIsCutInTwo) {
  Run("out 0123456789abcde out %r out %n");
  EXPECT_EQ(all, "0123456789abcde\r\n");
}

TEST_F(RealChild, CutsALineBreakWhereSixteenBytesAreFull) {
  Run("out 0123456789abcde%r%nand%r%n");
  EXPECT_EQ(chunks, (std::vector<std::string>{"0123456789abcde\r", "\nand\r\n", ""}));
}

TEST_F(RealChild, RunsInTheGivenFolder) {
  Run("folder");
  EXPECT_EQ(all, folder.path().filename().string());
}

TEST_F(RealChild, GivesStillActiveForAChildThatClosedItsOutputAndLivesOn) {
  folder.Write("alive", "");
  EXPECT_EQ(Run("out a close live"), 259);
  EXPECT_EQ(all, "a");
}

TEST_F(RealChild, ReadsMuchOutputToItsEnd) {
  EXPECT_EQ(Run("bytes 1000000 exit 1"), 1);
  EXPECT_EQ(all.size(), 1000000u);
}

TEST_F(RealChild, ReportsAProgramThatDoesNotExist) {
  EXPECT_EQ(app.ExecuteApp(Quoted(folder.PathOf("no such program")), folder.path().string()), 0);
  EXPECT_EQ(ErrorHandler().ErrorNumber(), CSpawnConsoleApp::kCreateProcessFailed);
  EXPECT_EQ(ErrorHandler().ErrorDescription(), "CreateProcess failed. Error: 2");
  EXPECT_EQ(starts, 0);
}

}  // namespace
}  // namespace scrivo
