#pragma once

#include <cstdint>
#include <string>

namespace scrivo {

// A pipe end, process or thread of the system; 0 is none.
using SystemHandle = std::uintptr_t;

constexpr std::uint32_t kStartUseShowWindow = 0x1;
constexpr std::uint32_t kStartUseStandardHandles = 0x100;
constexpr std::uint16_t kShowWindowHidden = 0;
constexpr std::uint32_t kNormalPriorityClass = 32;
// What ExitCode gives for a process that has not ended.
constexpr std::uint32_t kStillActive = 259;

// What a child process is started with.
struct StartRequest {
  std::string command_line;  // whole, with the program as its first word; no separate program name
  std::string folder;        // the child's current folder; "" for the caller's
  std::uint32_t start_flags = 0;
  std::uint16_t show_window = 0;
  std::uint32_t creation_flags = 0;
  bool inherit_handles = false;
  SystemHandle standard_input = 0;
  SystemHandle standard_output = 0;
  SystemHandle standard_error = 0;
};

// A child process that was started; its starter closes both handles.
struct StartedProcess {
  SystemHandle process = 0;
  SystemHandle thread = 0;
  std::uint32_t process_id = 0;
  std::uint32_t thread_id = 0;
};

// Child processes and pipes. Failures are results, not errors; LastError tells the system's code.
class Processes {
 public:
  virtual ~Processes() = default;

  // Makes an anonymous pipe of the system's default size whose ends a child may inherit.
  virtual bool OpenPipe(SystemHandle* read_end, SystemHandle* write_end) = 0;
  // Starts a child process; process and thread handles are inheritable.
  virtual bool Start(const StartRequest& request, StartedProcess* started) = 0;
  // Reads up to `size` bytes, waiting for at least one. False with 0 bytes when every write end is
  // closed.
  virtual bool Read(SystemHandle pipe, char* buffer, std::uint32_t size, std::uint32_t* got) = 0;
  // True when Read would have to wait: nothing is in the pipe, and somebody may still write into
  // it.
  virtual bool ReadWouldWait(SystemHandle pipe) = 0;
  // The exit code of a process, or kStillActive, without waiting for its end. (On POSIX a child
  // whose end the system is about to report is given a short grace.)
  virtual std::uint32_t ExitCode(SystemHandle process) = 0;
  // Waits without a time limit until the process has ended.
  virtual void WaitForEnd(SystemHandle process) = 0;
  // Ends a process that has not ended (on POSIX: its whole process group), and returns when it is
  // gone. What it was about to do is lost.
  virtual void End(SystemHandle process) = 0;
  virtual void Close(SystemHandle handle) = 0;
  // The system's code of the last failure in this object.
  virtual std::uint32_t LastError() = 0;
};

}  // namespace scrivo
