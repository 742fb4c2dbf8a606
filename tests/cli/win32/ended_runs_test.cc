// The real programs on Windows, ended by their console or at work on one output together.

#include <windows.h>

#include <thread>

#include "bytes/byte_source.h"
#include "chm/chm_reader.h"
#include "platform/win32/interruption.h"
#include "tests/cli/scrivo_run.h"

namespace scrivo {
namespace {

// Ends with all that is started in it, by force.
class Job {
 public:
  Job() : job_(CreateJobObjectA(nullptr, nullptr)) {}
  Job(const Job&) = delete;
  Job& operator=(const Job&) = delete;
  ~Job() {
    End();
    CloseHandle(job_);
  }
  bool Take(HANDLE process) const { return AssignProcessToJobObject(job_, process) != 0; }
  // Returns when all is gone.
  void End() const {
    constexpr UINT kStatus = 9;
    TerminateJobObject(job_, kStatus);
    while (IsAtWork()) Sleep(1);
  }

 private:
  bool IsAtWork() const {
    JOBOBJECT_BASIC_ACCOUNTING_INFORMATION account{};
    return QueryInformationJobObject(job_, JobObjectBasicAccountingInformation, &account,
                                     sizeof account, nullptr) &&
           account.ActiveProcesses > 0;
  }

  const HANDLE job_;
};

class Child {
 public:
  // `job`: null, or what the program and its own children are part of. `flags`: more of the
  // system's for the creation.
  explicit Child(std::string command, const Job* job = nullptr, DWORD flags = 0) {
    if (job != nullptr) flags |= CREATE_SUSPENDED;
    STARTUPINFOA start_up{};
    start_up.cb = sizeof start_up;
    // Wine on a busy machine now and then cannot start a program at the first try.
    constexpr int kTries = 5;
    for (int tries = 0; tries < kTries && !started_; ++tries) {
      started_ = CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, flags, nullptr,
                                nullptr, &start_up, &process_);
      error_ = started_ ? 0 : GetLastError();
    }
    if (!started_ || job == nullptr) return;
    if (!job->Take(process_.hProcess)) error_ = GetLastError();
    ResumeThread(process_.hThread);
  }
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;
  ~Child() {
    if (!started_) return;
    CloseHandle(process_.hThread);
    CloseHandle(process_.hProcess);
  }
  // Zero, or the system's error that kept the program from starting.
  DWORD Error() const { return error_; }
  bool HasEnded() const { return WaitForSingleObject(process_.hProcess, 0) == WAIT_OBJECT_0; }
  DWORD Id() const { return process_.dwProcessId; }
  // Waits for the end, so long as a busy machine may take. False when it does not come.
  bool EndsInTime() const {
    constexpr DWORD kLongest = 60'000;
    return WaitForSingleObject(process_.hProcess, kLongest) == WAIT_OBJECT_0;
  }
  // Waits for the end. Returns the exit status.
  int Status() const {
    WaitForSingleObject(process_.hProcess, INFINITE);
    DWORD status = 0;
    GetExitCodeProcess(process_.hProcess, &status);
    return static_cast<int>(status);
  }

 private:
  bool started_ = false;
  DWORD error_ = 0;
  PROCESS_INFORMATION process_{};
};

std::string Quoted(const std::string& text) { return '"' + text + '"'; }

class EndedRun : public ScrivoRun {
 protected:
  std::string CompileCommand(const std::string& more = "") const {
    return Quoted(TestProgram("scrivo")) + " compile -q " + Quoted(WebPath()) + " -o " +
           Quoted(Output()) + more;
  }
  std::ptrdiff_t FilesBesideOutput() const {
    return std::distance(std::filesystem::directory_iterator(output.path()), {});
  }
  // Whether the output is a help file without faults.
  bool OutputIsWhole() const {
    std::error_code error;
    auto source = OpenFileSource(Output(), &error);
    Problems problems;
    if (!source) return false;
    const auto reader = ChmReader::Open(std::move(source), &problems);
    if (!reader || !problems.empty()) return false;
    const Entry* const page = reader->Find("/index.htm");
    return page != nullptr && reader->ReadWhole(*page).has_value();
  }
};

TEST_F(EndedRun, OfTwoToOneOutputBothEndWellAndTheFileIsWhole) {
  web.Write("help.hhp", "[OPTIONS]\nCompiled file=" + Output() + "\n[FILES]\nindex.htm\n");
  const std::string commands[] = {
      CompileCommand(), Quoted(TestProgram("hhc")) + " --gnu " + Quoted(web.PathOf("help.hhp"))};
  constexpr int kRounds = 20;
  for (int round = 0; round < kRounds; ++round) {
    // By turns: two of scrivo, two of hhc, one of each.
    const Child one(commands[round % 3 == 1]), other(commands[round % 3 != 0]);
    ASSERT_EQ(one.Error(), 0u) << round;
    ASSERT_EQ(other.Error(), 0u) << round;
    EXPECT_EQ(one.Status(), 0) << round;
    EXPECT_EQ(other.Status(), 0) << round;
    EXPECT_TRUE(OutputIsWhole()) << round;
    EXPECT_EQ(FilesBesideOutput(), 1) << round;
  }
}

TEST_F(EndedRun, WhoseOutputAnotherProgramHoldsIsOneErrorAndLeavesTheFile) {
  output.Write("a.chm", "ITSF old");
  for (const DWORD others_may : {DWORD{FILE_SHARE_READ}, DWORD{0}}) {
    const HANDLE holder =
        CreateFileA(Output().c_str(), GENERIC_READ, others_may, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(holder, INVALID_HANDLE_VALUE);
    EXPECT_EQ(Compile(), 1);
    CloseHandle(holder);
    const std::size_t first = err.find("error: ");
    ASSERT_NE(first, std::string::npos) << err;
    EXPECT_EQ(err.find("error: ", first + 1), std::string::npos) << err;
    EXPECT_NE(err.find("a.chm", first), std::string::npos) << err;
    EXPECT_EQ(err.find("what it holds cannot be read", first) != std::string::npos, others_may == 0)
        << err;
    EXPECT_EQ(output.Read("a.chm"), "ITSF old");
    EXPECT_EQ(FilesBesideOutput(), 1);
  }
}

TEST_F(EndedRun, ByForceLeavesAFolderThatTheNextOneRemoves) {
  const TestFolder beside;
  output.Write("a.chm", "ITSF old");
  web.Write("behaviour.txt", "wait\n" + beside.PathOf("waiting.txt"));
  const Job job;
  const Child run(CompileCommand(" --compiler " + Quoted(TestProgram("test_fake_hhc"))), &job);
  ASSERT_EQ(run.Error(), 0u);
  while (!beside.Has("waiting.txt") && !run.HasEnded()) Sleep(1);
  ASSERT_TRUE(beside.Has("waiting.txt")) << "the compiler was not run";
  EXPECT_EQ(output.Read("a.chm"), "ITSF old");
  // While it lives another run leaves its folder alone.
  EXPECT_EQ(CompileWithFake("make"), 0) << err;
  EXPECT_TRUE(output.Has("a.chm.scrivo-work/held"));
  job.End();
  EXPECT_EQ(FilesBesideOutput(), 2);
  EXPECT_TRUE(ProjectFiles().empty());
  EXPECT_EQ(CompileWithFake("make"), 0) << err;
  EXPECT_EQ(FilesBesideOutput(), 1);
}

TEST_F(EndedRun, ByAnEventOfItsConsoleLeavesThingsAsTheyWere) {
  const TestFolder beside;
  output.Write("a.chm", "ITSF old");
  web.Write("behaviour.txt", "wait\n" + beside.PathOf("waiting.txt"));
  const Job job;
  const Child run(CompileCommand(" --compiler " + Quoted(TestProgram("test_fake_hhc"))), &job,
                  CREATE_NEW_CONSOLE);
  ASSERT_EQ(run.Error(), 0u);
  while (!beside.Has("waiting.txt") && !run.HasEnded()) Sleep(1);
  ASSERT_TRUE(beside.Has("waiting.txt")) << "the compiler was not run";
  const Child sender(Quoted(TestProgram("test_console_event")) + " " + std::to_string(run.Id()),
                     nullptr, DETACHED_PROCESS);
  ASSERT_EQ(sender.Error(), 0u);
  ASSERT_TRUE(sender.EndsInTime());
  ASSERT_EQ(sender.Status(), 0) << "no event was sent";
  ASSERT_TRUE(run.EndsInTime());
  EXPECT_EQ(run.Status(), 130);
  EXPECT_EQ(output.Read("a.chm"), "ITSF old");
  EXPECT_EQ(FilesBesideOutput(), 1);
}

// In a child process, since an interruption cannot be taken back.
TEST_F(EndedRun, ByTheConsolesClosingLeavesThingsAsTheyWere) {
  output.Write("a.chm", "ITSF old");
  const auto run = [&] {
    CatchInterruptions();
    // As the system calls it: in a thread of its own, which never comes back.
    std::thread([] { OnConsoleEvent(CTRL_CLOSE_EVENT); }).detach();
    while (!Interrupted()) Sleep(1);
    const int status = Compile();
    const bool is_as_it_was = output.Read("a.chm") == "ITSF old" && FilesBesideOutput() == 1;
    return is_as_it_was && err.find("error: ") == std::string::npos ? status : 1;
  };
  EXPECT_EXIT(ExitProcess(static_cast<UINT>(run())), testing::ExitedWithCode(130), "");
}

}  // namespace
}  // namespace scrivo
