#pragma once

#include <cstdint>
#include <string>

#include "system/processes.h"

namespace scrivo {

// A compiler that prints one line again and again, up to a number of bytes.
class PrintingProcesses : public Processes {
 public:
  explicit PrintingProcesses(std::uint64_t bytes) : left_(bytes) {}

  bool OpenPipe(SystemHandle* read_end, SystemHandle* write_end) override {
    *read_end = 1;
    *write_end = 2;
    return true;
  }
  bool Start(const StartRequest&, StartedProcess*) override { return true; }
  bool Read(SystemHandle, char* buffer, std::uint32_t size, std::uint32_t* got) override {
    static const std::string line = "HHC3004: Warning: folder/some_page.htm : a tag\r\n";
    *got = 0;
    for (; *got < size && left_ > 0; ++*got, --left_) {
      buffer[*got] = line[at_];
      at_ = at_ + 1 == line.size() ? 0 : at_ + 1;
    }
    return *got > 0;
  }
  bool ReadWouldWait(SystemHandle) override { return false; }
  std::uint32_t ExitCode(SystemHandle) override { return 1; }
  void WaitForEnd(SystemHandle) override {}
  void End(SystemHandle) override {}
  void Close(SystemHandle) override {}
  std::uint32_t LastError() override { return 0; }

 private:
  std::uint64_t left_;
  std::size_t at_ = 0;
};

}  // namespace scrivo
