#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>

#include "platform/command_line.h"
#include "platform/posix/interruption.h"
#include "platform/posix/services.h"
#include "platform/posix/spawn.h"

namespace scrivo {
namespace {

// How long a child that closed its output may take until its end is reported, in milliseconds.
// Longer makes a run whose child really lives on end later; shorter mistakes the slow end of an
// ordinary child (a core dump, a loaded machine) for life.
constexpr int kGrace = 1000;
// How long an interrupted child may take to put its things in order before it is killed.
constexpr int kEndingTime = 500;
// How often a wait without a limit looks for an interruption, in milliseconds.
constexpr int kWaitPiece = 100;
// The longest pause between two looks at a child: what its end may be noticed too late.
constexpr int kLongestPause = 20;

constexpr std::uint32_t kInvalidHandleCode = 6;
constexpr std::uint32_t kBrokenPipeCode = 109;
constexpr std::uint32_t kInvalidFolderCode = 267;
constexpr std::uint32_t kOperationAbortedCode = 995;

// The Windows code of an errno value.
std::uint32_t WindowsCode(int error) {
  switch (error) {
    case ENOENT:
      return 2;  // file not found
    case ENOTDIR:
      return 3;  // path not found
    case EMFILE:
    case ENFILE:
      return 4;  // too many open files
    case EACCES:
    case EPERM:
      return 5;  // access denied
    case ENOMEM:
    case EAGAIN:
      return 8;  // not enough memory
    case ENOEXEC:
    case ELIBBAD:
      return 193;  // not a program
    case E2BIG:
    case ENAMETOOLONG:
      return 206;  // too long
    default:
      return 31;  // general failure
  }
}

}  // namespace

bool PosixProcesses::Fail(std::uint32_t windows_code) {
  last_error_ = windows_code;
  return false;
}

bool PosixProcesses::FailWith(int error) { return Fail(WindowsCode(error)); }

int PosixProcesses::DescriptorOf(SystemHandle pipe) const {
  const auto found = pipes_.find(pipe);
  return found == pipes_.end() ? -1 : found->second.Get();
}

bool PosixProcesses::OpenPipe(SystemHandle* read_end, SystemHandle* write_end) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) return FailWith(errno);
  Descriptor reading = AboveStandardStreams(Descriptor(ends[0]));
  Descriptor writing = AboveStandardStreams(Descriptor(ends[1]));
  if (!reading.IsOpen() || !writing.IsOpen()) return FailWith(EMFILE);
  *read_end = next_handle_++;
  *write_end = next_handle_++;
  pipes_.emplace(*read_end, std::move(reading));
  pipes_.emplace(*write_end, std::move(writing));
  return true;
}

bool PosixProcesses::Start(const StartRequest& request, StartedProcess* started) {
  std::erase_if(left_alone_, [](Child& child) { return Reap(&child); });
  if (Interrupted()) return Fail(kOperationAbortedCode);
  SpawnRequest spawn;
  spawn.arguments = SplitCommandLine(request.command_line);
  spawn.folder = request.folder;
  if (request.start_flags & kStartUseStandardHandles) {
    spawn.streams[STDIN_FILENO] = DescriptorOf(request.standard_input);
    spawn.streams[STDOUT_FILENO] = DescriptorOf(request.standard_output);
    spawn.streams[STDERR_FILENO] = DescriptorOf(request.standard_error);
  } else {
    for (int stream = 0; stream < 3; ++stream) spawn.streams[stream] = stream;
  }
  const SpawnResult result = Spawn(spawn);
  if (result.error != 0) {
    return result.in_folder ? Fail(kInvalidFolderCode) : FailWith(result.error);
  }
  started->process = next_handle_++;
  started->thread = next_handle_++;
  started->process_id = started->thread_id = static_cast<std::uint32_t>(result.process);
  children_[started->process] = {result.process};
  return true;
}

bool PosixProcesses::Read(SystemHandle pipe, char* buffer, std::uint32_t size, std::uint32_t* got) {
  *got = 0;
  const int descriptor = DescriptorOf(pipe);
  if (descriptor == -1) return Fail(kInvalidHandleCode);
  ReadAhead& ahead = ahead_[pipe];
  if (ahead.next == ahead.bytes.size() && !Refill(descriptor, &ahead)) return false;
  *got = static_cast<std::uint32_t>(ahead.bytes.copy(buffer, size, ahead.next));
  ahead.next += *got;
  return true;
}

bool PosixProcesses::ReadWouldWait(SystemHandle pipe) {
  const auto ahead = ahead_.find(pipe);
  if (ahead != ahead_.end() && ahead->second.next < ahead->second.bytes.size()) return false;
  pollfd look = {DescriptorOf(pipe), POLLIN, 0};
  return look.fd != -1 && poll(&look, 1, 0) == 0;
}

bool PosixProcesses::Refill(int descriptor, ReadAhead* ahead) {
  // As much as a pipe holds: a call of the system for every 16 bytes would cost more than all the
  // rest.
  constexpr std::size_t kPipeSize = 64 * 1024;
  for (;;) {
    pollfd waits[] = {{descriptor, POLLIN, 0}, {InterruptionDescriptor(), POLLIN, 0}};
    const int ready = poll(waits, 2, -1);
    if (Interrupted()) {
      EndChildren();
      return Fail(kOperationAbortedCode);
    }
    if (ready == -1 && errno != EINTR) return FailWith(errno);
    if (ready == -1) continue;
    ahead->next = 0;
    ahead->bytes.resize(kPipeSize);
    const ssize_t count = read(descriptor, ahead->bytes.data(), kPipeSize);
    ahead->bytes.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
    if (count == 0) return Fail(kBrokenPipeCode);
    if (count > 0) return true;
    if (errno != EINTR) return FailWith(errno);
  }
}

bool PosixProcesses::Reap(Child* child) {
  if (child->ended) return true;
  int status = 0;
  const pid_t reaped = waitpid(child->process, &status, WNOHANG);
  if (reaped == 0 || (reaped == -1 && errno == EINTR)) return false;
  child->ended = true;
  if (reaped == -1) {
    child->exit_code = 0;  // somebody else has taken its exit code
  } else if (WIFSIGNALED(status)) {
    child->exit_code = 128 + static_cast<std::uint32_t>(WTERMSIG(status));
  } else {
    child->exit_code = static_cast<std::uint32_t>(WEXITSTATUS(status));
  }
  return true;
}

bool PosixProcesses::ReapWithin(Child* child, int milliseconds) {
  using Clock = std::chrono::steady_clock;
  const Clock::time_point end = Clock::now() + std::chrono::milliseconds(milliseconds);
  for (int pause = 1;; pause = std::min(2 * pause, kLongestPause)) {
    if (Reap(child)) return true;
    if (Clock::now() >= end) return false;
    poll(nullptr, 0, pause);
  }
}

void PosixProcesses::EndChildren() {
  for (auto& [handle, child] : children_) {
    // A child that has ended but was not reaped yet may have left others in its group.
    if (!child.ended) kill(-child.process, SIGTERM);
  }
  for (auto& [handle, child] : children_) {
    KillUnlessEnded(&child);
  }
}

void PosixProcesses::KillUnlessEnded(Child* child) {
  if (ReapWithin(child, kEndingTime)) return;
  kill(-child->process, SIGKILL);
  ReapWithin(child, kEndingTime);
}

void PosixProcesses::End(SystemHandle process) {
  const auto found = children_.find(process);
  if (found == children_.end() || Reap(&found->second)) return;
  kill(-found->second.process, SIGTERM);
  KillUnlessEnded(&found->second);
}

std::uint32_t PosixProcesses::ExitCode(SystemHandle process) {
  const auto found = children_.find(process);
  if (found == children_.end()) return kStillActive;
  ReapWithin(&found->second, kGrace);
  return found->second.exit_code;
}

void PosixProcesses::WaitForEnd(SystemHandle process) {
  const auto found = children_.find(process);
  if (found == children_.end()) return;
  while (!ReapWithin(&found->second, kWaitPiece)) {
    if (Interrupted()) EndChildren();
  }
}

void PosixProcesses::Close(SystemHandle handle) {
  pipes_.erase(handle);
  ahead_.erase(handle);
  const auto found = children_.find(handle);
  if (found == children_.end()) return;
  if (!Reap(&found->second)) left_alone_.push_back(found->second);
  children_.erase(found);
}

}  // namespace scrivo
