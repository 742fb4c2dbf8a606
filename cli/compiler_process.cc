#include "cli/compiler_process.h"

namespace scrivo {

bool CompilerProcess::OpenPipe(SystemHandle* read_end, SystemHandle* write_end) {
  return system_->OpenPipe(read_end, write_end);
}

bool CompilerProcess::Start(const StartRequest& request, StartedProcess* started) {
  const bool starts = system_->Start(request, started);
  if (starts) has_started_ = true;
  return starts;
}

bool CompilerProcess::Read(SystemHandle pipe, char* buffer, std::uint32_t size,
                           std::uint32_t* got) {
  return system_->Read(pipe, buffer, size, got);
}

bool CompilerProcess::ReadWouldWait(SystemHandle pipe) { return system_->ReadWouldWait(pipe); }

std::uint32_t CompilerProcess::ExitCode(SystemHandle process) {
  const std::uint32_t code = system_->ExitCode(process);
  if (code == kStillActive) system_->End(process);
  return code;
}

void CompilerProcess::WaitForEnd(SystemHandle process) { system_->WaitForEnd(process); }

void CompilerProcess::End(SystemHandle process) { system_->End(process); }

void CompilerProcess::Close(SystemHandle handle) { system_->Close(handle); }

std::uint32_t CompilerProcess::LastError() { return system_->LastError(); }

}  // namespace scrivo
