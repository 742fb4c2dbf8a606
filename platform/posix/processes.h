#pragma once

#include <sys/types.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "platform/posix/descriptor.h"
#include "system/processes.h"

namespace scrivo {

// Child processes of a POSIX system. A command line is cut into words as SplitCommandLine tells;
// window and priority flags mean nothing here. Each child heads its own process group, so that
// Ctrl-C in the terminal reaches this program alone: once that was caught, Read fails and ends the
// groups of all children that were not closed. A child that a signal ended has the exit code 128
// and the signal's number. LastError gives the Windows codes that callers know.
class PosixProcesses : public Processes {
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
  struct Child {
    pid_t process = -1;
    bool ended = false;
    std::uint32_t exit_code = kStillActive;
  };

  // What was read from a pipe and not handed out yet.
  struct ReadAhead {
    std::string bytes;
    std::size_t next = 0;
  };

  // Waits for bytes in the pipe and takes them; false at its end, on a failure and when
  // interrupted.
  bool Refill(int descriptor, ReadAhead* ahead);
  bool Fail(std::uint32_t windows_code);
  bool FailWith(int error);
  int DescriptorOf(SystemHandle pipe) const;
  // Notes the child's end when the system has reported it; true once it has ended.
  static bool Reap(Child* child);
  // Waits up to a time in milliseconds for the child's end.
  static bool ReapWithin(Child* child, int milliseconds);
  // Kills the group of a child that has been asked to end and did not.
  static void KillUnlessEnded(Child* child);
  void EndChildren();

  SystemHandle next_handle_ = 1;
  std::map<SystemHandle, Descriptor> pipes_;
  std::map<SystemHandle, ReadAhead> ahead_;
  std::map<SystemHandle, Child> children_;
  std::vector<Child> left_alone_;  // closed while they lived; reaped when they have ended
  std::uint32_t last_error_ = 0;
};

}  // namespace scrivo
