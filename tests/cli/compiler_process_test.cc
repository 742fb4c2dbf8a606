#include "cli/compiler_process.h"

#include <gtest/gtest.h>

#include "tests/doubles/fake_processes.h"

namespace scrivo {
namespace {

class CompilerProcessTest : public testing::Test {
 protected:
  std::shared_ptr<FakeProcesses> system = std::make_shared<FakeProcesses>();
  CompilerProcess compiler{system};
};

TEST_F(CompilerProcessTest, EndsAProcessThatLivesOn) {
  system->exit_code = kStillActive;
  EXPECT_EQ(compiler.ExitCode(7), kStillActive);
  EXPECT_EQ(system->log, (std::vector<std::string>{"exit code", "end 7"}));
}

TEST_F(CompilerProcessTest, LeavesAProcessAloneThatHasEnded) {
  system->exit_code = 1;
  EXPECT_EQ(compiler.ExitCode(7), 1u);
  EXPECT_EQ(system->log, (std::vector<std::string>{"exit code"}));
}

TEST_F(CompilerProcessTest, KnowsWhetherAProgramWasStarted) {
  StartedProcess started;
  EXPECT_FALSE(compiler.HasStarted());
  system->starts = false;
  EXPECT_FALSE(compiler.Start({}, &started));
  EXPECT_FALSE(compiler.HasStarted());
  system->starts = true;
  EXPECT_TRUE(compiler.Start({}, &started));
  EXPECT_TRUE(compiler.HasStarted());
  EXPECT_NE(started.process, 0u);
}

TEST_F(CompilerProcessTest, HandsOnEverythingElse) {
  SystemHandle read_end = 0, write_end = 0;
  EXPECT_TRUE(compiler.OpenPipe(&read_end, &write_end));
  system->outputs = {"abc"};
  system->waits = {true};
  EXPECT_TRUE(compiler.ReadWouldWait(read_end));
  EXPECT_FALSE(compiler.ReadWouldWait(read_end));
  char buffer[8];
  std::uint32_t got = 0;
  EXPECT_TRUE(compiler.Read(read_end, buffer, sizeof buffer, &got));
  EXPECT_EQ(std::string(buffer, got), "abc");
  compiler.WaitForEnd(7);
  compiler.End(8);
  compiler.Close(read_end);
  compiler.Close(write_end);
  system->error = 5;
  EXPECT_EQ(compiler.LastError(), 5u);
  EXPECT_EQ(system->log,
            (std::vector<std::string>{"pipe", "read", "wait 7", "end 8", "close 1", "close 2"}));
}

}  // namespace
}  // namespace scrivo
