#pragma once

#include <memory>

#include "system/processes.h"

namespace scrivo {

// The system's processes, as a command line needs them that puts files back after the run: a
// compiler that has closed its output and lives on could still write to the file that it was told
// to make, so it is ended as soon as its exit code is asked for. That is kStillActive all the
// same.
class CompilerProcess : public Processes {
 public:
  explicit CompilerProcess(std::shared_ptr<Processes> system) : system_(std::move(system)) {}

  // Whether a program was started at all.
  bool HasStarted() const { return has_started_; }

  bool OpenPipe(SystemHandle* read_end, SystemHandle* write_end) override;
  bool Start(const StartRequest& request, StartedProcess* started) override;
  bool Read(SystemHandle pipe, char* buffer, std::uint32_t size, std::uint32_t* got) override;
  bool ReadWouldWait(SystemHandle pipe) override;
  std::uint32_t ExitCode(SystemHandle process) override;
  void WaitForEnd(SystemHandle process) override;
  void End(SystemHandle process) override;
  void Close(SystemHandle handle) override;
  std::uint32_t LastError() override;

 private:
  std::shared_ptr<Processes> system_;
  bool has_started_ = false;
};

}  // namespace scrivo
