#include "tests/doubles/expect_error.h"
#include "tests/doubles/fake_services.h"

namespace scrivo {
namespace {

class Trace : public WithFakeServices {
 protected:
  void TraceWith(std::int32_t flags) { handler.Init(ehaLogFile, "/e", true, true, flags, "/t"); }

  CErrorHandler handler;
};

TEST_F(Trace, TellsEntryAndExitInOneLineEach) {
  TraceWith(trfLogFile);
  handler.CallStackPush("Kestrel.frmMain.Generate", "some data");
  handler.CallStackPush("Kestrel.frmMain.FindCompiler", "");
  handler.CallStackPop();
  system->time = "14:05:10";
  handler.CallStackPop();
  EXPECT_EQ(files->files["/t"],
            "21.11.2026 - 14:05:09 --- Entered routine: Kestrel.frmMain.Generate\r\n"
            "21.11.2026 - 14:05:09 --- Entered routine: Kestrel.frmMain.FindCompiler\r\n"
            "21.11.2026 - 14:05:09 --- Exited routine: Kestrel.frmMain.FindCompiler\r\n"
            "21.11.2026 - 14:05:10 --- Exited routine: Kestrel.frmMain.Generate\r\n");
  EXPECT_EQ(files->log.size(), 4u);
}

TEST_F(Trace, WritesNothingWhileItIsOff) {
  TraceWith(trfLogFile);
  handler.TracingEnabled(false);
  handler.CallStackPush("A", "");
  handler.CallStackPop();
  EXPECT_TRUE(files->log.empty());
}

TEST_F(Trace, WritesNothingWhenOnlySwitchedOn) {
  CErrorHandler fresh;
  fresh.TracingEnabled(true);
  fresh.CallStackPush("A", "");
  fresh.CallStackPop();
  EXPECT_TRUE(files->log.empty());
}

TEST_F(Trace, WritesNothingForTheDebugChannelAlone) {
  TraceWith(trfDebugOutput);
  handler.CallStackPush("A", "");
  handler.CallStackPop();
  EXPECT_TRUE(files->log.empty());
}

TEST_F(Trace, WritesTheLogWithBothChannels) {
  TraceWith(trfDebugOutput | trfLogFile);
  handler.CallStackPush("A", "");
  EXPECT_EQ(files->files["/t"], "21.11.2026 - 14:05:09 --- Entered routine: A\r\n");
}

TEST_F(Trace, WritesNothingForAPopOfTheEmptyStack) {
  TraceWith(trfLogFile);
  handler.CallStackPop();
  EXPECT_TRUE(files->log.empty());
}

TEST_F(Trace, GoesOnWithADisabledStack) {
  TraceWith(trfLogFile);
  handler.CallStackEnabled(false);
  handler.CallStackPush("A", "");
  handler.CallStackPop();
  EXPECT_EQ(files->log.size(), 2u);
}

TEST_F(Trace, DoesNotTellThatTheStackIsCleared) {
  TraceWith(trfLogFile);
  handler.CallStackPush("A", "");
  handler.CallStackClear();
  handler.CallStackPop();
  EXPECT_EQ(files->files["/t"], "21.11.2026 - 14:05:09 --- Entered routine: A\r\n");
}

TEST_F(Trace, FailsAfterTheNameWasPushed) {
  TraceWith(trfLogFile);
  files->failures.emplace("append /t", Error(kPathNotFound, "", "Path not found"));
  ExpectError([&] { handler.CallStackPush("A", ""); }, CErrorHandler::kComponentFailure,
              "Scrivo.CErrorHandler", "CErrorHandler component failure");
  files->failures.clear();
  handler.CallStackPop();
  EXPECT_EQ(files->files["/t"], "21.11.2026 - 14:05:09 --- Exited routine: A\r\n");
}

TEST_F(Trace, FailsBeforeTheNameIsPopped) {
  TraceWith(trfLogFile);
  handler.CallStackPush("A", "");
  files->failures.emplace("append /t", Error(kPathNotFound, "", "Path not found"));
  ExpectError([&] { handler.CallStackPop(); }, CErrorHandler::kComponentFailure,
              "Scrivo.CErrorHandler", "CErrorHandler component failure");
  files->failures.clear();
  files->files.clear();
  handler.CallStackPop();
  EXPECT_EQ(files->files["/t"], "21.11.2026 - 14:05:09 --- Exited routine: A\r\n");
}

}  // namespace
}  // namespace scrivo
