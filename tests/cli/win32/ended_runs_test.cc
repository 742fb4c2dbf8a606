// The real programs on Windows, ended by their console or at work on one output together.

#include <windows.h>

#include <thread>

#include "bytes/byte_source.h"
#include "chm/chm_reader.h"
#include "platform/win32/interruption.h"
#include "tests/cli/scrivo_run.h"

namespace scrivo {
namespace {

class Child {
 public:
  explicit Child(std::string command) {
    STARTUPINFOA start_up{};
    start_up.cb = sizeof start_up;
    // Wine on a busy machine now and then cannot start a program at the first try.
    constexpr int kTries = 5;
    for (int tries = 0; tries < kTries && !started_; ++tries) {
      started_ = CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr,
                                nullptr, &start_up, &process_);
      error_ = started_ ? 0 : GetLastError();
    }
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
