// Other programs that hold, delete or lock the logs.

#include <stdexcept>
#include <string>

#include "platform/win32/windows.h"
#include "tests/doubles/expect_error.h"
#include "tests/doubles/real_services.h"

namespace scrivo {
namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

class LogSharingTest : public WithRealServices {
 protected:
  static void Report() {
    try {
      throw std::runtime_error("one");
    } catch (...) {
      ErrorHandler().HandleError("Test");
    }
  }
  // Another program's handle to the error log.
  FileHandle Hold(DWORD access, DWORD sharing) const {
    return FileHandle(CreateFileA(log_.c_str(), access, sharing, nullptr, OPEN_EXISTING,
                                  FILE_ATTRIBUTE_NORMAL, nullptr));
  }
  std::size_t RecordsIn(const std::string& text) const {
    std::size_t count = 0;
    for (std::size_t at = 0; (at = text.find("in Test at line", at)) != std::string::npos; ++at) {
      ++count;
    }
    return count;
  }

  const std::string log_ = InFolder("errors.txt");
};

TEST_F(LogSharingTest, NoHandleStaysOpenBetweenRecords) {
  Report();
  EXPECT_TRUE(Hold(GENERIC_READ | GENERIC_WRITE | DELETE, 0).IsOpen());
}

TEST_F(LogSharingTest, ALogThatIsBeingReadGrows) {
  Report();
  const FileHandle reader = Hold(GENERIC_READ, kShareAll);
  ASSERT_TRUE(reader.IsOpen());
  Report();
  EXPECT_EQ(RecordsIn(ErrorLog()), 2u);
}

TEST_F(LogSharingTest, ALogThatAnotherProgramAppendsToGrows) {
  Report();
  const FileHandle writer = Hold(FILE_APPEND_DATA, kShareAll);
  ASSERT_TRUE(writer.IsOpen());
  DWORD written = 0;
  ASSERT_TRUE(WriteFile(writer.Get(), "other\r\n", 7, &written, nullptr));
  Report();
  ASSERT_TRUE(WriteFile(writer.Get(), "last\r\n", 6, &written, nullptr));
  const std::string text = ErrorLog();
  EXPECT_EQ(RecordsIn(text), 2u);
  EXPECT_LT(text.find("other\r\n"), text.rfind("in Test at line"));
  EXPECT_TRUE(text.ends_with("last\r\n")) << text;
}

TEST_F(LogSharingTest, ALogThatWasDeletedBeginsAnew) {
  Report();
  Report();
  ASSERT_TRUE(DeleteFileA(log_.c_str()));
  Report();
  EXPECT_EQ(RecordsIn(ErrorLog()), 1u);
}

TEST_F(LogSharingTest, ALogThatIsLockedFailsTheHandlerAndStaysAsItIs) {
  Report();
  {
    const FileHandle lock = Hold(GENERIC_READ, 0);
    ASSERT_TRUE(lock.IsOpen());
    ExpectError([] { Report(); }, CErrorHandler::kComponentFailure, "platform_tests.CErrorHandler",
                "CErrorHandler component failure");
    ErrorHandler().Clear(true, false);
  }
  EXPECT_EQ(RecordsIn(ErrorLog()), 1u);
  Report();
  EXPECT_EQ(RecordsIn(ErrorLog()), 2u);
}

TEST_F(LogSharingTest, ATraceThatIsLockedFailsTheProcedureThatWritesIt) {
  CErrorHandler& handler = ErrorHandler();
  handler.TracingEnabled(true);
  handler.CallStackPush("A", "");
  {
    const FileHandle lock(CreateFileA(InFolder("trace.txt").c_str(), GENERIC_READ, 0, nullptr,
                                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    ASSERT_TRUE(lock.IsOpen());
    ExpectError([&] { handler.CallStackPop(); }, CErrorHandler::kComponentFailure,
                "platform_tests.CErrorHandler", "CErrorHandler component failure");
  }
  handler.CallStackPop();
  handler.TracingEnabled(false);
}

}  // namespace
}  // namespace scrivo
