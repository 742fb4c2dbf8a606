#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "platform/command_line.h"
#include "platform/posix/services.h"
#include "tests/doubles/temp_folder.h"

namespace scrivo {
namespace {

class ChildProcesses : public testing::Test {
 protected:
  // The command line that gives a script to the shell.
  static std::string Script(const std::string& script) {
    return "\"/bin/sh\" -c " + EscapeWord(script);
  }

  // Starts a child whose output and errors go to one pipe, of which this end is kept.
  bool Start(const std::string& command_line, const std::string& in_folder = "") {
    SystemHandle write_end = 0;
    if (!processes.OpenPipe(&pipe, &write_end)) return false;
    StartRequest request;
    request.command_line = command_line;
    request.folder = in_folder;
    request.start_flags = kStartUseShowWindow | kStartUseStandardHandles;
    request.creation_flags = kNormalPriorityClass;
    request.inherit_handles = true;
    request.standard_output = request.standard_error = write_end;
    const bool started = processes.Start(request, &child);
    processes.Close(write_end);
    return started;
  }

  // All that the child still writes.
  std::string ReadAll() {
    std::string text;
    char buffer[16];
    std::uint32_t got = 0;
    while (processes.Read(pipe, buffer, sizeof buffer, &got)) text.append(buffer, got);
    EXPECT_EQ(got, 0u);
    return text;
  }

  std::uint32_t Finish() {
    const std::uint32_t exit_code = processes.ExitCode(child.process);
    processes.Close(child.process);
    processes.Close(child.thread);
    processes.Close(pipe);
    return exit_code;
  }

  // Runs a script; its output, and its exit code in front of it.
  std::string Run(const std::string& script) {
    if (!Start(Script(script))) return "not started";
    const std::string output = ReadAll();
    std::string result = std::to_string(Finish());
    result += ':';
    return result += output;
  }

  TempFolder folder;
  PosixProcesses processes;
  SystemHandle pipe = 0;
  StartedProcess child;
};

TEST_F(ChildProcesses, GiveTheirOutputAndExitCode) {
  EXPECT_EQ(Run("echo hello; exit 7"), "7:hello\n");
  EXPECT_EQ(Run("exit 0"), "0:");
  EXPECT_EQ(Run("exit 255"), "255:");
}

TEST_F(ChildProcesses, WriteErrorsAndOutputIntoOnePipeInTheirOrder) {
  EXPECT_EQ(Run("echo a; echo b >&2; echo c; echo d >&2"), "0:a\nb\nc\nd\n");
}

TEST_F(ChildProcesses, AreReadInPiecesOfTheSizeAskedFor) {
  ASSERT_TRUE(Start(Script("printf '%040d' 0")));
  char buffer[16];
  std::uint32_t got = 0;
  std::vector<std::uint32_t> sizes;
  while (processes.Read(pipe, buffer, sizeof buffer, &got)) sizes.push_back(got);
  EXPECT_EQ(sizes, (std::vector<std::uint32_t>{16, 16, 8}));
  EXPECT_EQ(got, 0u);
  EXPECT_EQ(processes.LastError(), 109u);
  Finish();
}

TEST_F(ChildProcesses, WriteMuchMoreThanAPipeHolds) {
  ASSERT_TRUE(Start(Script("head -c 3000000 /dev/zero; exit 3")));
  EXPECT_EQ(ReadAll().size(), 3000000u);
  EXPECT_EQ(Finish(), 3u);
}

TEST_F(ChildProcesses, HaveTheGivenFolder) {
  ASSERT_TRUE(Start(Script("pwd -P"), folder.path()));
  std::string path = std::filesystem::canonical(folder.path());
  EXPECT_EQ(ReadAll(), path += '\n');
  Finish();
}

TEST_F(ChildProcesses, AreFoundFromTheCallersFolderAndNotTheirOwn) {
  const std::string before = std::filesystem::current_path();
  std::filesystem::create_directory(folder / "bin");
  std::filesystem::create_directory(folder / "work");
  std::ofstream(folder / "bin/tool") << "#!/bin/sh\necho \"$0\"\n";
  chmod((folder / "bin/tool").c_str(), 0755);
  std::filesystem::current_path(folder.path());
  const bool started = Start("\"bin/tool\"", folder / "work");
  std::filesystem::current_path(before);
  ASSERT_TRUE(started) << processes.LastError();
  EXPECT_EQ(ReadAll(), (folder / "bin/tool\n"));
  EXPECT_EQ(Finish(), 0u);
}

TEST_F(ChildProcesses, AreLookedUpInTheSearchPath) {
  ASSERT_TRUE(Start("\"sh\" -c pwd", "/"));
  EXPECT_EQ(ReadAll(), "/\n");
  Finish();
}

TEST_F(ChildProcesses, ReadNothing) { EXPECT_EQ(Run("cat; echo end"), "0:end\n"); }

TEST_F(ChildProcesses, InheritTheirParentsStreamsWhenNoneAreGiven) {
  StartRequest request;
  request.command_line = Script("test -e /proc/self/fd/2");
  ASSERT_TRUE(processes.Start(request, &child));
  processes.WaitForEnd(child.process);
  EXPECT_EQ(Finish(), 0u);
}

TEST_F(ChildProcesses, GetNoPipeButTheirOwn) {
  SystemHandle other_read = 0, other_write = 0;
  ASSERT_TRUE(processes.OpenPipe(&other_read, &other_write));
  ASSERT_TRUE(Start(Script("sleep 60")));
  processes.Close(other_write);
  char buffer[16];
  std::uint32_t got = 0;
  EXPECT_FALSE(processes.Read(other_read, buffer, sizeof buffer, &got));  // while the child lives
  processes.Close(other_read);
  kill(-static_cast<pid_t>(child.process_id), SIGKILL);
  ReadAll();
  EXPECT_EQ(Finish(), 137u);
}

TEST_F(ChildProcesses, ThatDoNotExistGiveTheSystemsCode) {
  EXPECT_FALSE(Start("\"/no/such/hhc\" x.hhp"));
  EXPECT_EQ(processes.LastError(), 2u);
  EXPECT_FALSE(Start("\"no such program\""));
  EXPECT_EQ(processes.LastError(), 2u);
  EXPECT_FALSE(Start(""));
  EXPECT_EQ(processes.LastError(), 2u);
}

TEST_F(ChildProcesses, ThatMayNotBeRunGiveTheSystemsCode) {
  std::ofstream(folder / "text") << "no program\n";
  chmod((folder / "text").c_str(), 0644);
  EXPECT_FALSE(Start(EscapeWord(folder / "text")));
  EXPECT_EQ(processes.LastError(), 5u);
  chmod((folder / "text").c_str(), 0755);
  EXPECT_FALSE(Start(EscapeWord(folder / "text")));
  EXPECT_EQ(processes.LastError(), 193u);
}

TEST_F(ChildProcesses, InAMissingFolderGiveTheSystemsCode) {
  EXPECT_FALSE(Start(Script("exit 0"), folder / "missing"));
  EXPECT_EQ(processes.LastError(), 267u);
}

TEST_F(ChildProcesses, ThatCloseTheirOutputAndEndHaveTheirExitCode) {
  EXPECT_EQ(Run("exec >&- 2>&-; exit 9"), "9:");
}

TEST_F(ChildProcesses, ThatCloseTheirOutputAndLiveOnAreStillActive) {
  SystemHandle wait_end = 0, end_it = 0;
  ASSERT_TRUE(processes.OpenPipe(&wait_end, &end_it));
  SystemHandle write_end = 0;
  ASSERT_TRUE(processes.OpenPipe(&pipe, &write_end));
  StartRequest request;
  request.command_line = Script("echo out; exec >&- 2>&-; read line; exit 4");
  request.start_flags = kStartUseStandardHandles;
  request.standard_input = wait_end;
  request.standard_output = request.standard_error = write_end;
  ASSERT_TRUE(processes.Start(request, &child));
  processes.Close(write_end);
  processes.Close(wait_end);
  EXPECT_EQ(ReadAll(), "out\n");
  EXPECT_EQ(processes.ExitCode(child.process), kStillActive);
  processes.Close(end_it);  // what it waits for
  processes.WaitForEnd(child.process);
  EXPECT_EQ(Finish(), 4u);
}

TEST_F(ChildProcesses, ThatAreClosedAliveLeaveNoZombie) {
  SystemHandle wait_end = 0, end_it = 0;
  ASSERT_TRUE(processes.OpenPipe(&wait_end, &end_it));
  StartRequest request;
  request.command_line = Script("read line");
  request.start_flags = kStartUseStandardHandles;
  request.standard_input = wait_end;
  ASSERT_TRUE(processes.Start(request, &child));
  processes.Close(wait_end);
  processes.Close(child.process);
  const pid_t process = static_cast<pid_t>(child.process_id);
  EXPECT_EQ(kill(process, 0), 0);
  processes.Close(end_it);
  siginfo_t info = {};
  EXPECT_EQ(waitid(P_PID, static_cast<id_t>(process), &info, WEXITED | WNOWAIT), 0);
  EXPECT_EQ(Run("exit 0"), "0:");  // starting another reaps it
  EXPECT_EQ(kill(process, 0), -1);
  EXPECT_EQ(errno, ESRCH);
}

TEST_F(ChildProcesses, ThatASignalEndsHaveItsNumberAnd128) {
  EXPECT_EQ(Run("kill -SEGV $$"), "139:");
  EXPECT_EQ(Run("kill -KILL $$"), "137:");
}

TEST_F(ChildProcesses, KeepTheirExitCodeUntilTheyAreClosed) {
  ASSERT_TRUE(Start(Script("exit 6")));
  ReadAll();
  EXPECT_EQ(processes.ExitCode(child.process), 6u);
  EXPECT_EQ(processes.ExitCode(child.process), 6u);
  processes.WaitForEnd(child.process);
  EXPECT_EQ(Finish(), 6u);
}

TEST_F(ChildProcesses, HeadTheirOwnProcessGroup) {
  ASSERT_TRUE(Start(Script("read line < /dev/zero")));
  EXPECT_EQ(getpgid(static_cast<pid_t>(child.process_id)), static_cast<pid_t>(child.process_id));
  kill(-static_cast<pid_t>(child.process_id), SIGKILL);
  ReadAll();
  EXPECT_EQ(Finish(), 137u);
}

TEST_F(ChildProcesses, EndTheirPipeWithTheirLastDescendant) {
  EXPECT_EQ(Run("(echo below) & exit 2"), "2:below\n");
}

TEST_F(ChildProcesses, RefuseHandlesThatAreNone) {
  char buffer[16];
  std::uint32_t got = 1;
  EXPECT_FALSE(processes.Read(12345, buffer, sizeof buffer, &got));
  EXPECT_EQ(got, 0u);
  EXPECT_EQ(processes.LastError(), 6u);
  EXPECT_EQ(processes.ExitCode(12345), kStillActive);
  processes.WaitForEnd(12345);
  processes.Close(12345);
}

TEST_F(ChildProcesses, LeaveNothingOpenAfterManyRuns) {
  const auto open_now = [] {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
  };
  const auto before = open_now();
  for (int i = 0; i < 300; ++i) {
    ASSERT_TRUE(Start("\"true\""));
    ReadAll();
    ASSERT_EQ(Finish(), 0u);
    if (i % 10 == 0) {
      EXPECT_FALSE(Start("\"/no/such/program\""));
      processes.Close(pipe);
    }
  }
  EXPECT_EQ(open_now(), before);
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
  EXPECT_EQ(errno, ECHILD);
}

TEST_F(ChildProcesses, EndsTheWholeGroupOfOneThatLivesOn) {
  // The reader of the pipe sees its end only when the shell and its own child are gone.
  ASSERT_TRUE(Start(Script("echo up; sleep 1000 & wait")));
  char buffer[16];
  std::uint32_t got = 0;
  ASSERT_TRUE(processes.Read(pipe, buffer, sizeof buffer, &got));
  processes.End(child.process);
  EXPECT_EQ(ReadAll(), "");
  EXPECT_EQ(Finish(), 128u + SIGTERM);
}

TEST_F(ChildProcesses, LeavesOneAloneThatHasEnded) {
  ASSERT_TRUE(Start(Script("exit 3")));
  ReadAll();
  EXPECT_EQ(processes.ExitCode(child.process), 3u);
  processes.End(child.process);
  EXPECT_EQ(Finish(), 3u);
}

}  // namespace
}  // namespace scrivo
