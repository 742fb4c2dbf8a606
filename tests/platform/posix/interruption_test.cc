// Each test runs in a child of its own, since an interruption cannot be taken back.

#include "platform/posix/interruption.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <functional>

#include "platform/command_line.h"
#include "platform/posix/services.h"
#include "tests/doubles/temp_folder.h"

namespace scrivo {
namespace {

// Holds that `work` says yes in a child process.
#define EXPECT_IN_A_CHILD(work) \
  EXPECT_EXIT((HeedSignals(), _exit((work)() ? 0 : 1)), testing::ExitedWithCode(0), "")

// The tests may have been started by somebody who ignores signals, such as nohup.
void HeedSignals() {
  for (const int signal_number : {SIGINT, SIGTERM, SIGHUP}) signal(signal_number, SIG_DFL);
}

bool IsInterrupted(const std::function<void()>& work) {
  try {
    work();
    return false;
  } catch (const Error& error) {
    return error.number == kUserInterrupt && error.description == "Interrupted";
  }
}

TEST(Interruption, EndsTheProgramUntilItIsCaught) {
  EXPECT_EXIT((HeedSignals(), raise(SIGINT)), testing::KilledBySignal(SIGINT), "");
}

TEST(Interruption, IsRememberedOnceItIsCaught) {
  for (const int signal_number : {SIGINT, SIGTERM, SIGHUP}) {
    EXPECT_IN_A_CHILD([&] {
      CatchInterruptions();
      CatchInterruptions();
      if (Interrupted()) return false;
      raise(signal_number);
      raise(signal_number);
      return Interrupted();
    });
  }
}

TEST(Interruption, StaysIgnoredWhereItWasIgnored) {
  EXPECT_IN_A_CHILD([] {
    signal(SIGHUP, SIG_IGN);
    CatchInterruptions();
    raise(SIGHUP);
    return !Interrupted();
  });
}

TEST(Interruption, StopsReadingAndBeginningButNotPuttingInOrder) {
  TempFolder folder;
  PosixFiles files;
  files.Write(folder / "a", "x");
  files.Write(folder / "b", "x");
  EXPECT_IN_A_CHILD([&] {
    CatchInterruptions();
    raise(SIGINT);
    if (!IsInterrupted([&] { files.OpenForReading(folder / "a"); })) return false;
    if (!IsInterrupted([&] { files.List(folder.path()); })) return false;
    if (!IsInterrupted([&] { files.Write(folder / "c", "x"); })) return false;
    if (!IsInterrupted([&] { files.MakeFolder(folder / "d"); })) return false;
    if (!files.MakeUniqueFile(folder.path(), "x").empty()) return false;
    files.Append(folder / "log", "x");
    files.Remove(folder / "b", false);
    return files.FileExists(folder / "log") && !files.FileExists(folder / "b") &&
           !files.FileExists(folder / "c");
  });
}

// A child process of the test's child, with its output in a pipe.
struct Running {
  PosixProcesses processes;
  SystemHandle pipe = 0;
  StartedProcess child;
  std::uint32_t got = 0;
  char buffer[16];

  bool Start(const std::string& script) {
    SystemHandle write_end = 0;
    processes.OpenPipe(&pipe, &write_end);
    StartRequest request;
    request.command_line = "\"/bin/sh\" -c " + EscapeWord(script);
    request.start_flags = kStartUseStandardHandles;
    request.standard_output = request.standard_error = write_end;
    const bool started = processes.Start(request, &child);
    processes.Close(write_end);
    return started;
  }
  bool Read() { return processes.Read(pipe, buffer, sizeof buffer, &got); }
};

TEST(Interruption, EndsTheChildThatIsBeingReadFrom) {
  EXPECT_IN_A_CHILD([] {
    CatchInterruptions();
    Running running;
    if (!running.Start("echo x; kill -INT $PPID; read line < /dev/zero")) return false;
    while (running.Read()) {
    }
    if (running.got != 0 || running.processes.LastError() != 995) return false;
    return running.processes.ExitCode(running.child.process) == 128 + SIGTERM;
  });
}

TEST(Interruption, KillsAChildThatDoesNotEnd) {
  EXPECT_IN_A_CHILD([] {
    CatchInterruptions();
    Running running;
    if (!running.Start("trap '' TERM; echo x; kill -INT $PPID; while :; do sleep 1; done"))
      return false;
    while (running.Read()) {
    }
    return running.processes.ExitCode(running.child.process) == 128 + SIGKILL;
  });
}

TEST(Interruption, EndsTheChildsOwnChildrenToo) {
  EXPECT_IN_A_CHILD([] {
    CatchInterruptions();
    int held[2];  // by everybody who inherits it
    if (pipe(held) != 0) return false;
    Running running;
    if (!running.Start("tail -f /dev/null & echo x; kill -INT $PPID; exit 0")) return false;
    while (running.Read()) {
    }
    close(held[1]);
    char byte;
    return read(held[0], &byte, 1) == 0;  // only once the last of them has gone
  });
}

TEST(Interruption, LetsNoOtherChildStart) {
  EXPECT_IN_A_CHILD([] {
    CatchInterruptions();
    raise(SIGTERM);
    Running running;
    return !running.Start("exit 0") && running.processes.LastError() == 995;
  });
}

TEST(Interruption, EndsAWait) {
  EXPECT_IN_A_CHILD([] {
    CatchInterruptions();
    Running running;
    if (!running.Start("kill -INT $PPID; read line < /dev/zero")) return false;
    running.processes.WaitForEnd(running.child.process);
    return running.processes.ExitCode(running.child.process) == 128 + SIGTERM;
  });
}

TEST(Interruption, OfAnotherKindDoesNotDisturbReading) {
  EXPECT_IN_A_CHILD([] {
    CatchInterruptions();
    struct sigaction nothing = {};
    nothing.sa_handler = [](int) {};
    sigaction(SIGUSR1, &nothing, nullptr);
    Running running;
    if (!running.Start("kill -USR1 $PPID; kill -USR1 $PPID; echo x")) return false;
    const bool read = running.Read() && running.got == 2;
    return read && !running.Read() && running.processes.ExitCode(running.child.process) == 0;
  });
}

}  // namespace
}  // namespace scrivo
