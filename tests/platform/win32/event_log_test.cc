// Errors in the Application event log.

#include <stdexcept>
#include <string>
#include <vector>

#include "platform/win32/windows.h"
#include "tests/doubles/real_services.h"

namespace scrivo {
namespace {

class EventLogTest : public WithRealServices {
 protected:
  ~EventLogTest() override { CloseEventLog(log_); }

  DWORD Count() const {
    DWORD count = 0;
    EXPECT_TRUE(GetNumberOfEventLogRecords(log_, &count));
    return count;
  }
  // How many entries `write` leaves in the log.
  template <typename Write>
  DWORD Added(Write write) const {
    const DWORD before = Count();
    write();
    return Count() - before;
  }
  // The newest entry: its type, its source and its one text.
  std::vector<std::string> Newest() const {
    std::vector<char> buffer(0x10000);
    DWORD size = 0, needed = 0;
    if (!ReadEventLogA(log_, EVENTLOG_SEQUENTIAL_READ | EVENTLOG_BACKWARDS_READ, 0, buffer.data(),
                       static_cast<DWORD>(buffer.size()), &size, &needed)) {
      return {};
    }
    const auto* record = reinterpret_cast<const EVENTLOGRECORD*>(buffer.data());
    return {std::to_string(record->EventType), buffer.data() + sizeof *record,
            buffer.data() + record->StringOffset};
  }

  const HANDLE log_ = OpenEventLogA(nullptr, "Application");
};

// An emulated Windows may keep no entries at all: then not the test's own either.
TEST_F(EventLogTest, AHandledErrorIsKeptAsAnyOtherEntryIs) {
  const DWORD kept = Added([] {
    const HANDLE source = RegisterEventSourceA(nullptr, "Scrivo test");
    const char* texts[] = {"an entry of the test's own"};
    EXPECT_TRUE(ReportEventA(source, EVENTLOG_ERROR_TYPE, 0, 0, nullptr, 1, 0, texts, nullptr));
    DeregisterEventSource(source);
  });
  CErrorHandler& handler = ErrorHandler();
  handler.ErrorHandlerActions(ehaEventLog | ehaLogFile);
  EXPECT_EQ(Added([&] {
              try {
                throw std::runtime_error("for the event log");
              } catch (...) {
                EXPECT_EQ(handler.HandleError("Test"), ehrAbort);
              }
            }),
            kept);
  const std::string report = ErrorLog().substr(0, ErrorLog().rfind("\r\n"));
  EXPECT_NE(report.find("for the event log"), std::string::npos);
  if (kept != 0) {
    EXPECT_EQ(Newest(), (std::vector<std::string>{"1", kComponentTitle, report}));
  }
}

}  // namespace
}  // namespace scrivo
