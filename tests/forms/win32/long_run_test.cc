// A run that prints much more than a window can show, in the real run window.

#include <cstdlib>
#include <iostream>

#include "tests/doubles/fake_desktop.h"
#include "tests/doubles/printing_processes.h"
#include "tests/forms/win32/forms_test.h"

namespace scrivo {
namespace {

// SCRIVO_TRANSCRIPT_MB measures with more than the test needs.
std::uint64_t TranscriptBytes() {
  const char* megabytes = std::getenv("SCRIVO_TRANSCRIPT_MB");
  return (megabytes ? std::strtoull(megabytes, nullptr, 10) : 2) << 20;
}

// A window that counts the messages posted to it.
class Mailbox : public NativeWindow {
 public:
  Mailbox() { Create("", 0, 0, HWND_MESSAGE, RECT{}); }

  int got = 0;

 protected:
  LRESULT OnMessage(UINT message, WPARAM wparam, LPARAM lparam) override {
    if (message != WM_APP) return NativeWindow::OnMessage(message, wparam, lparam);
    ++got;
    return 0;
  }
};

// The desktop without its message boxes.
class SilentDesktop : public WatchedDesktop {
 public:
  MessageAnswer ShowMessage(const std::string& text, std::uint32_t, const std::string&) override {
    shown = text.substr(0, text.find("\r\n"));
    return MessageAnswer::kOk;
  }

  std::string shown;
};

// This thread's processor time, in milliseconds.
ULONGLONG ProcessorTime() {
  FILETIME created, ended, kernel, user;
  GetThreadTimes(GetCurrentThread(), &created, &ended, &kernel, &user);
  const auto ticks = [](const FILETIME& time) {
    return (static_cast<ULONGLONG>(time.dwHighDateTime) << 32) + time.dwLowDateTime;
  };
  return (ticks(kernel) + ticks(user)) / 10000;
}

TEST_F(FormsTest, ALongTranscriptLeavesTheWindowAliveAndSmall) {
  const std::uint64_t bytes = TranscriptBytes();
  const auto silent = std::make_shared<SilentDesktop>();
  TheServices().desktop = silent;
  TheServices().processes = std::make_shared<PrintingProcesses>(bytes);
  Mailbox mailbox;
  int posted = 0;
  std::uint64_t passes = 0;
  int longest = 0;
  // The processor time when the run had come to each tenth of its output.
  std::vector<ULONGLONG> tenths;
  silent->on_pass = [&] {
    if (!frmHHC::IsLoaded()) return;
    const std::uint64_t printed = frmHHC::Load().Transcript().size();
    if (printed * 10 >= bytes * tenths.size()) tenths.push_back(ProcessorTime());
    if (++passes % 1024 != 0) return;
    EXPECT_EQ(mailbox.got, posted) << "a message waits at " << printed;
    PostMessageA(mailbox.Handle(), WM_APP, 0, 0);
    ++posted;
    longest = std::max(longest, GetWindowTextLengthA(Edit(kRunTitle, 0)));
  };
  frmHHC::Load().FilesCount(1000);
  EXPECT_EQ(frmHHC::Load().Execute(folder, "a.hhp"), -1);
  silent->on_pass = nullptr;

  EXPECT_EQ(silent->shown, "There are errors and warnings while compiling.");
  EXPECT_GT(posted, 100);
  EXPECT_GE(mailbox.got, posted - 1);
  EXPECT_GT(longest, 1024);
  EXPECT_LE(longest, 17 * 1024);
  EXPECT_GE(frmHHC::Load().Transcript().size(), bytes);
  const std::string shown = TextOf(Edit(kRunTitle, 0));
  EXPECT_EQ(shown.substr(shown.size() - 7), "\r\nDone!");
  EXPECT_LE(shown.size(), (1U << 20) + 100);
  ASSERT_GE(tenths.size(), 11U);
  std::cout << "first tenth " << tenths[1] - tenths[0] << " ms, last tenth "
            << tenths[10] - tenths[9] << " ms of " << bytes << " bytes\n";
}

}  // namespace
}  // namespace scrivo
