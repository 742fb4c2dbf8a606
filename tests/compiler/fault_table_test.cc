// Each call that one run of a program makes is made to fail once; the table says what the run comes
// to, by the user's answer.

#include <string>
#include <vector>

#include "compiler/spawn_console_app.h"
#include "tests/doubles/faulty_services.h"

namespace scrivo {
namespace {

// The exit code, what the listener was told ("end" for the empty text), the handles left open.
// Handles are numbered as they are given out: the pipe's read end 1 and write end 2, the process 3
// and its thread 4.
using Outcome = std::string;

const Outcome kUndisturbed = "3: started abc end, open:";

struct Row {
  const char* call;
  std::int32_t number;  // of the error that is reported
  Outcome aborted, ignored;
};

constexpr std::int32_t kPipeError = CSpawnConsoleApp::kCreatePipeFailed;
constexpr std::int32_t kStartError = CSpawnConsoleApp::kCreateProcessFailed;

// In the order in which a run makes them whose program prints once. Trying again always leads to
// the undisturbed run.
const std::vector<Row> kRows = {
    {"OpenPipe", kPipeError, "0:, open:", kUndisturbed},
    {"Start", kStartError, "0:, open: 1 2", kUndisturbed},
    {"Close", kDeviceIoError, "0:, open: 1 2 3 4", "3: started abc end, open: 2"},
    {"OnProcessStarted", kDeviceIoError, "0:, open: 1 3 4", "3: abc end, open:"},
    {"Read", kDeviceIoError, "0: started, open: 1 3 4", "3: started end, open:"},
    {"OnProcessOutputs", kDeviceIoError, "0: started, open: 1 3 4", "3: started end, open:"},
    {"ProcessMessages", kDeviceIoError, "0: started abc, open: 1 3 4", kUndisturbed},
    {"Read", kDeviceIoError, "0: started abc, open: 1 3 4", kUndisturbed},
    {"OnProcessOutputs", kDeviceIoError, "0: started abc, open: 1 3 4", "3: started abc, open:"},
    {"ProcessMessages", kDeviceIoError, "0: started abc end, open: 1 3 4", kUndisturbed},
    {"ExitCode", kDeviceIoError, "0: started abc end, open: 1 3 4", "0: started abc end, open:"},
    {"Close", kDeviceIoError, "3: started abc end, open: 1 3 4", "3: started abc end, open: 3"},
    {"Close", kDeviceIoError, "3: started abc end, open: 1 4", "3: started abc end, open: 4"},
    {"Close", kDeviceIoError, "3: started abc end, open: 1", "3: started abc end, open: 1"},
};

class RunFaultTable : public WithFakeServices {
 protected:
  // One run in which call `at` fails and the user gives `answer`.
  Outcome Run(int at, bool throws, MessageAnswer answer) {
    fault = {};
    fault.at = at;
    fault.throws = throws;
    shown = std::make_shared<FaultyDesktop>(&fault);
    shown->answers = {answer};
    auto children = std::make_shared<FaultyProcesses>(&fault);
    children->outputs = {"abc"};
    children->exit_code = 3;
    TheServices().desktop = shown;
    TheServices().processes = children;
    ErrorHandler().ErrorHandlerActions(ehaMessageBox);
    std::string told;
    CSpawnConsoleApp app;
    app.OnProcessStarted = [&] {
      fault.Throw("OnProcessStarted");
      told += " started";
    };
    app.OnProcessOutputs = [&](const std::string& output) {
      fault.Throw("OnProcessOutputs");
      told += output.empty() ? " end" : " " + output;
    };
    Outcome outcome = std::to_string(app.ExecuteApp("tool", "")) + ":" + told + ", open:";
    for (const SystemHandle handle : children->open_handles) {
      outcome += " " + std::to_string(handle);
    }
    return outcome;
  }

  Fault fault;
  std::shared_ptr<FaultyDesktop> shown;
};

TEST_F(RunFaultTable, NamesEveryCallOfARun) {
  EXPECT_EQ(Run(-1, false, MessageAnswer::kAbort), kUndisturbed);
  EXPECT_EQ(static_cast<std::size_t>(fault.calls), kRows.size());
  EXPECT_TRUE(shown->messages.empty());
}

TEST_F(RunFaultTable, TheUsersAnswerDecidesWhatBecomesOfTheRun) {
  for (std::size_t i = 0; i < kRows.size(); ++i) {
    const Row& row = kRows[i];
    const int at = static_cast<int>(i);
    SCOPED_TRACE("call " + std::to_string(at) + ", " + row.call);
    // Pipe and process tell a failure by their result, which has a number of its own.
    const bool throws = row.number == kDeviceIoError;
    EXPECT_EQ(Run(at, throws, MessageAnswer::kAbort), row.aborted);
    EXPECT_EQ(ErrorHandler().ErrorNumber(), row.number);
    EXPECT_EQ(fault.name, row.call);
    EXPECT_EQ(shown->messages.size(), 1u);
    EXPECT_EQ(Run(at, throws, MessageAnswer::kIgnore), row.ignored);
    EXPECT_EQ(shown->messages.size(), 1u);
    EXPECT_EQ(Run(at, throws, MessageAnswer::kRetry), kUndisturbed);
    EXPECT_EQ(shown->messages.size(), 1u);
  }
}

TEST_F(RunFaultTable, AFailedReadIsTheEndOfTheOutputAndNoError) {
  EXPECT_EQ(Run(4, false, MessageAnswer::kAbort), "3: started end, open:");
  EXPECT_EQ(Run(7, false, MessageAnswer::kAbort), kUndisturbed);
  EXPECT_TRUE(shown->messages.empty());
}

}  // namespace
}  // namespace scrivo
