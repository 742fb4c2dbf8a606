#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "system/processes.h"

namespace scrivo {

// Child processes that write a scripted text and end. Every call is recorded, and every handle
// that was given out and not closed again is known.
class FakeProcesses : public Processes {
 public:
  bool opens_pipes = true;
  bool starts = true;
  std::uint32_t error = 0;          // what LastError tells
  std::deque<std::string> outputs;  // one per successful read; a longer one takes several
  std::deque<bool> waits;           // whether each read would wait; false once they are used up
  std::uint32_t exit_code = 0;
  std::function<void()> on_start;  // what a child does besides writing, such as leaving a file

  std::vector<StartRequest> requests;
  std::vector<std::string> log;  // "pipe", "start", "read", "exit code", "wait 7", "close 7", …
  std::vector<SystemHandle> open_handles;

  bool OpenPipe(SystemHandle* read_end, SystemHandle* write_end) override {
    log.push_back("pipe");
    if (!opens_pipes) return false;
    *read_end = NewHandle();
    *write_end = NewHandle();
    return true;
  }
  bool Start(const StartRequest& request, StartedProcess* started) override {
    log.push_back("start");
    requests.push_back(request);
    if (!starts) return false;
    *started = {NewHandle(), NewHandle(), 100, 101};
    if (on_start) on_start();
    return true;
  }
  bool Read(SystemHandle, char* buffer, std::uint32_t size, std::uint32_t* got) override {
    log.push_back("read");
    *got = 0;
    if (outputs.empty()) return false;
    std::string& next = outputs.front();
    *got = static_cast<std::uint32_t>(next.copy(buffer, size));
    next.erase(0, *got);
    if (next.empty()) outputs.pop_front();
    return true;
  }
  bool ReadWouldWait(SystemHandle) override {
    if (waits.empty()) return false;
    const bool would_wait = waits.front();
    waits.pop_front();
    return would_wait;
  }
  std::uint32_t ExitCode(SystemHandle) override {
    log.push_back("exit code");
    return exit_code;
  }
  void WaitForEnd(SystemHandle process) override {
    log.push_back("wait " + std::to_string(process));
  }
  void End(SystemHandle process) override { log.push_back("end " + std::to_string(process)); }
  void Close(SystemHandle handle) override {
    log.push_back("close " + std::to_string(handle));
    std::erase(open_handles, handle);
  }
  std::uint32_t LastError() override { return error; }

 private:
  SystemHandle NewHandle() {
    open_handles.push_back(next_handle_);
    return next_handle_++;
  }

  SystemHandle next_handle_ = 1;
};

}  // namespace scrivo
