#pragma once

#include "system/processes.h"

namespace scrivo {

// Child processes and anonymous pipes of Windows.
class Win32Processes : public Processes {
 public:
  bool OpenPipe(SystemHandle* read_end, SystemHandle* write_end) override;
  bool Start(const StartRequest& request, StartedProcess* started) override;
  bool Read(SystemHandle pipe, char* buffer, std::uint32_t size, std::uint32_t* got) override;
  bool ReadWouldWait(SystemHandle pipe) override;
  std::uint32_t ExitCode(SystemHandle process) override;
  void WaitForEnd(SystemHandle process) override;
  void End(SystemHandle process) override;
  void Close(SystemHandle handle) override;
  std::uint32_t LastError() override { return last_error_; }

 private:
  // Keeps the system's code of a failed call, which later calls of others overwrite.
  bool Done(bool success);

  std::uint32_t last_error_ = 0;
};

}  // namespace scrivo
