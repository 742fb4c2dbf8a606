#include "errors/frame.h"
#include "system/error.h"
#include "tests/doubles/fake_error_dialog.h"
#include "tests/doubles/fake_services.h"

namespace scrivo {
namespace {

class ProcedureLevelTest : public WithFakeServices {
 protected:
  ProcedureLevelTest() {
    ErrorHandler().Init(ehaErrorDialog, "/e", true, true, trfLogFile, "/t");
    ErrorHandler().Dialog(dialog);
  }

  // A statement that fails until it has been run `times` times more.
  static auto FailingTimes(int* times) {
    return [times] {
      if ((*times)-- > 0) throw Error(5, "", "bad");
    };
  }
  std::string Traced() {
    const std::string stamp = "21.11.2026 - 14:05:09 --- ";
    std::string text = files->files["/t"];
    for (std::size_t at; (at = text.find(stamp)) != std::string::npos;)
      text.erase(at, stamp.size());
    return text;
  }

  std::shared_ptr<FakeErrorDialog> dialog = std::make_shared<FakeErrorDialog>();
};

TEST_F(ProcedureLevelTest, EnteringAndLeavingAreTraced) {
  ProcedureLevel level;
  EXPECT_TRUE(level.Enter("Kestrel.A.B"));
  EXPECT_TRUE(level.Leave());
  EXPECT_EQ(Traced(), "Entered routine: Kestrel.A.B\r\nExited routine: Kestrel.A.B\r\n");
}

TEST_F(ProcedureLevelTest, RetryRunsTheStatementAgain) {
  ProcedureLevel level;
  level.Enter("Kestrel.A.B");
  dialog->answers = {"RETRY", "RETRY"};
  int failures = 2;
  EXPECT_TRUE(level.Step(FailingTimes(&failures)));
  EXPECT_EQ(failures, -1);
  EXPECT_NE(dialog->reports[0].find("in Kestrel.A.B at line"), std::string::npos);
}

TEST_F(ProcedureLevelTest, IgnoreGoesOn) {
  ProcedureLevel level;
  level.Enter("Kestrel.A.B");
  dialog->answers = {"IGNORE"};
  int failures = 1;
  EXPECT_TRUE(level.Step(FailingTimes(&failures)));
  EXPECT_TRUE(level.Leave());
}

TEST_F(ProcedureLevelTest, AbortClearsTheCallStackAndTellsThatTheLevelIsLeft) {
  ProcedureLevel above, level;
  above.Enter("Kestrel.A.Above");
  level.Enter("Kestrel.A.B");
  int failures = 1;
  EXPECT_FALSE(level.Step(FailingTimes(&failures)));
  files->files["/t"].clear();
  EXPECT_TRUE(above.Leave());
  EXPECT_EQ(Traced(), "");  // nothing was left to pop
}

TEST_F(ProcedureLevelTest, AFailureOfTheErrorHandlerIsThrown) {
  ProcedureLevel level;
  level.Enter("Kestrel.A.B");
  dialog->answers = {"THROW"};
  int failures = 1;
  try {
    level.Step(FailingTimes(&failures));
    FAIL() << "no error";
  } catch (const Error& error) {
    EXPECT_EQ(error.number, CErrorHandler::kComponentFailure);
  }
}

TEST_F(ProcedureLevelTest, AnEntryThatCannotBeTracedIsAnsweredByTheUser) {
  files->failures.emplace("append /t", Error(kDiskFull, "", "disk full"));
  ProcedureLevel aborted;
  EXPECT_FALSE(aborted.Enter("Kestrel.A.B"));
  dialog->answers = {"IGNORE"};
  ProcedureLevel ignored;
  EXPECT_TRUE(ignored.Enter("Kestrel.A.B"));
}

}  // namespace
}  // namespace scrivo
