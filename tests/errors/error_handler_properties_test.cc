#include <limits>

#include "errors/error_handler.h"
#include "tests/doubles/expect_error.h"
#include "tests/doubles/fake_services.h"

namespace scrivo {
namespace {

const std::string kSource = "Scrivo.CErrorHandler";

class ErrorHandlerProperties : public WithFakeServices {
 protected:
  CErrorHandler handler;
};

TEST_F(ErrorHandlerProperties, StartWithTheirDefaults) {
  EXPECT_EQ(handler.SupportMail(), "");
  EXPECT_FALSE(handler.CallStackEnabled());
  EXPECT_EQ(handler.ErrorDescription(), "");
  EXPECT_EQ(handler.ErrorHandlerActions(), 1);
  EXPECT_EQ(handler.ErrorLine(), 0);
  EXPECT_EQ(handler.ErrorLogFile(), "Error Log.txt");
  EXPECT_EQ(handler.ErrorNumber(), 0);
  EXPECT_EQ(handler.Tag(), "");
  EXPECT_FALSE(handler.TracingEnabled());
  EXPECT_EQ(handler.TracingFlags(), 0);
  EXPECT_EQ(handler.TracingLogFile(), "Tracing Log.txt");
}

TEST_F(ErrorHandlerProperties, KeepWhatIsWritten) {
  handler.SupportMail("help@example.org");
  handler.CallStackEnabled(true);
  handler.ErrorDescription("text");
  handler.ErrorHandlerActions(15);
  handler.ErrorLine(120);
  handler.ErrorLogFile("e.log");
  handler.ErrorNumber(-5);
  handler.Tag("mine");
  handler.TracingEnabled(true);
  handler.TracingFlags(3);
  handler.TracingLogFile("t.log");

  EXPECT_EQ(handler.SupportMail(), "help@example.org");
  EXPECT_TRUE(handler.CallStackEnabled());
  EXPECT_EQ(handler.ErrorDescription(), "text");
  EXPECT_EQ(handler.ErrorHandlerActions(), 15);
  EXPECT_EQ(handler.ErrorLine(), 120);
  EXPECT_EQ(handler.ErrorLogFile(), "e.log");
  EXPECT_EQ(handler.ErrorNumber(), -5);
  EXPECT_EQ(handler.Tag(), "mine");
  EXPECT_TRUE(handler.TracingEnabled());
  EXPECT_EQ(handler.TracingFlags(), 3);
  EXPECT_EQ(handler.TracingLogFile(), "t.log");
}

TEST_F(ErrorHandlerProperties, AreWrittenWithoutACheckWhereNoneIsAskedFor) {
  handler.ErrorLine(std::numeric_limits<std::int32_t>::min());
  handler.ErrorNumber(std::numeric_limits<std::int32_t>::max());
  handler.ErrorDescription("");
  handler.Tag("");
  handler.SupportMail("");
  EXPECT_EQ(handler.ErrorLine(), std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(handler.ErrorNumber(), std::numeric_limits<std::int32_t>::max());
}

TEST_F(ErrorHandlerProperties, ActionsMustBeOneToFifteen) {
  handler.ErrorHandlerActions(6);
  for (const std::int32_t value : {0, 16, -1, std::numeric_limits<std::int32_t>::max()}) {
    ExpectError([&] { handler.ErrorHandlerActions(value); }, kComponentErrorBase + 17402, kSource,
                "Invalid error handler actions");
    EXPECT_EQ(handler.ErrorHandlerActions(), 6) << value;
  }
  for (const std::int32_t value : {1, 15}) {
    handler.ErrorHandlerActions(value);
    EXPECT_EQ(handler.ErrorHandlerActions(), value);
  }
}

TEST_F(ErrorHandlerProperties, TracingFlagsMustBeOneToThree) {
  handler.TracingFlags(2);
  for (const std::int32_t value : {0, 4, -1}) {
    ExpectError([&] { handler.TracingFlags(value); }, kComponentErrorBase + 17403, kSource,
                "Invalid tracing flags");
    EXPECT_EQ(handler.TracingFlags(), 2) << value;
  }
  for (const std::int32_t value : {1, 3}) {
    handler.TracingFlags(value);
    EXPECT_EQ(handler.TracingFlags(), value);
  }
}

TEST_F(ErrorHandlerProperties, LogFileNamesMustNotBeEmpty) {
  ExpectError([&] { handler.ErrorLogFile(""); }, kComponentErrorBase + 17401, kSource,
              "Invalid file name");
  ExpectError([&] { handler.TracingLogFile(""); }, kComponentErrorBase + 17401, kSource,
              "Invalid file name");
  EXPECT_EQ(handler.ErrorLogFile(), "Error Log.txt");
  EXPECT_EQ(handler.TracingLogFile(), "Tracing Log.txt");
}

TEST_F(ErrorHandlerProperties, ErrorNumbersAreThoseThatCallersSee) {
  EXPECT_EQ(CErrorHandler::kInvalidFileName, -2147204103);
  EXPECT_EQ(CErrorHandler::kInvalidErrorHandlerActions, -2147204102);
  EXPECT_EQ(CErrorHandler::kInvalidTracingFlags, -2147204101);
  EXPECT_EQ(CErrorHandler::kComponentFailure, -2147204100);
  EXPECT_EQ(static_cast<std::uint32_t>(CErrorHandler::kInvalidFileName), 0x800443F9u);
  EXPECT_EQ(static_cast<std::uint32_t>(CErrorHandler::kComponentFailure), 0x800443FCu);
}

TEST_F(ErrorHandlerProperties, ErrorsNameTheModuleThatRuns) {
  system->module_name = "scrivo-cli";
  ExpectError([&] { handler.TracingFlags(9); }, CErrorHandler::kInvalidTracingFlags,
              "scrivo-cli.CErrorHandler", "Invalid tracing flags");
}

class ErrorHandlerInit : public ErrorHandlerProperties {};

TEST_F(ErrorHandlerInit, StoresAllItsArgumentsButNotTheSupportMail) {
  handler.SupportMail("help@example.org");
  handler.Init(8, "e.txt", true, true, 2, "t.txt");
  EXPECT_EQ(handler.ErrorHandlerActions(), 8);
  EXPECT_EQ(handler.ErrorLogFile(), "e.txt");
  EXPECT_TRUE(handler.CallStackEnabled());
  EXPECT_TRUE(handler.TracingEnabled());
  EXPECT_EQ(handler.TracingFlags(), 2);
  EXPECT_EQ(handler.TracingLogFile(), "t.txt");
  EXPECT_EQ(handler.SupportMail(), "help@example.org");
}

TEST_F(ErrorHandlerInit, StopsAtInvalidActionsBeforeStoringAnything) {
  ExpectError([&] { handler.Init(0, "", true, true, 9, ""); },
              CErrorHandler::kInvalidErrorHandlerActions, kSource, "Invalid error handler actions");
  EXPECT_EQ(handler.ErrorHandlerActions(), 1);
  EXPECT_EQ(handler.ErrorLogFile(), "Error Log.txt");
  EXPECT_FALSE(handler.CallStackEnabled());
}

TEST_F(ErrorHandlerInit, KeepsTheActionsWhenTheErrorLogHasNoName) {
  ExpectError([&] { handler.Init(8, "", true, true, 9, ""); }, CErrorHandler::kInvalidFileName,
              kSource, "Invalid file name");
  EXPECT_EQ(handler.ErrorHandlerActions(), 8);
  EXPECT_EQ(handler.ErrorLogFile(), "Error Log.txt");
  EXPECT_FALSE(handler.CallStackEnabled());
  EXPECT_FALSE(handler.TracingEnabled());
}

TEST_F(ErrorHandlerInit, KeepsTheSwitchesWhenTheTracingFlagsAreInvalid) {
  ExpectError([&] { handler.Init(8, "e.txt", true, true, 0, ""); },
              CErrorHandler::kInvalidTracingFlags, kSource, "Invalid tracing flags");
  EXPECT_EQ(handler.ErrorHandlerActions(), 8);
  EXPECT_EQ(handler.ErrorLogFile(), "e.txt");
  EXPECT_TRUE(handler.CallStackEnabled());
  EXPECT_TRUE(handler.TracingEnabled());
  EXPECT_EQ(handler.TracingFlags(), 0);
}

TEST_F(ErrorHandlerInit, KeepsAllElseWhenTheTraceLogHasNoName) {
  ExpectError([&] { handler.Init(8, "e.txt", true, false, 3, ""); },
              CErrorHandler::kInvalidFileName, kSource, "Invalid file name");
  EXPECT_EQ(handler.TracingFlags(), 3);
  EXPECT_EQ(handler.TracingLogFile(), "Tracing Log.txt");
}

class WindowsVersion : public WithFakeServices {
 protected:
  // Whether a new handler writes to the event log, which only the NT family has.
  bool TakesTheSystemForNt() {
    CErrorHandler handler;
    handler.ErrorHandlerActions(ehaEventLog);
    try {
      throw Error(1, "", "x");
    } catch (...) {
      handler.HandleError("");
    }
    return !system->events.empty();
  }
};

TEST_F(WindowsVersion, IsAskedForWithTheExtendedRecordFirst) {
  EXPECT_TRUE(TakesTheSystemForNt());
  EXPECT_EQ(system->asked_record_sizes, std::vector<std::uint32_t>{156});
}

TEST_F(WindowsVersion, IsAskedForWithTheBasicRecordWhenTheExtendedOneFails) {
  system->answers_extended_record = false;
  EXPECT_TRUE(TakesTheSystemForNt());
  EXPECT_EQ(system->asked_record_sizes, (std::vector<std::uint32_t>{156, 148}));
}

TEST_F(WindowsVersion, IsNotNtWhenNeitherRecordIsAnswered) {
  system->answers_extended_record = system->answers_basic_record = false;
  EXPECT_FALSE(TakesTheSystemForNt());
  EXPECT_EQ(system->asked_record_sizes, (std::vector<std::uint32_t>{156, 148}));
}

TEST_F(WindowsVersion, IsNtForThePlatformTwoAlone) {
  for (const std::uint32_t platform : {0u, 1u, 3u}) {
    system->platform_id = platform;
    EXPECT_FALSE(TakesTheSystemForNt()) << platform;
  }
}

TEST_F(WindowsVersion, IsFixedWhenTheHandlerIsCreated) {
  CErrorHandler handler;
  system->platform_id = 1;
  handler.ErrorHandlerActions(ehaEventLog);
  handler.HandleError("x");
  EXPECT_EQ(system->events.size(), 1u);
}

TEST(TheErrorHandler, IsOneForTheProcess) { EXPECT_EQ(&ErrorHandler(), &ErrorHandler()); }

}  // namespace
}  // namespace scrivo
