#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

#include "bytes/posix/descriptor.h"

namespace scrivo {

// What a program is started with.
struct SpawnRequest {
  std::vector<std::string> arguments;  // the program first; without "/" it is looked up in PATH
  std::string folder;                  // the child's current folder; "" for the caller's
  int streams[3] = {-1, -1, -1};       // its standard streams; -1 is the null device
  // A child of its own session whose end nobody waits for; otherwise one that the caller waits
  // for, at the head of its own process group.
  bool detached = false;
};

// Where and why a program could not be started; `error` is an errno value, 0 when it was.
struct SpawnResult {
  int error = 0;
  bool in_folder = false;  // the folder was at fault
  pid_t process = -1;      // the child, unless it is detached
};

// Starts a program and returns once it runs, or has turned out not to.
SpawnResult Spawn(const SpawnRequest& request);

// Opens an address, a file or a folder in the program that the user's desktop has for it, through
// "xdg-open", without waiting for that program. 0, or an errno value when it cannot be started.
int OpenWithDesktop(const std::string& target);

// The same file under a number above those of the standard streams, so that setting up a child's
// streams cannot overwrite it; none when that fails.
inline Descriptor AboveStandardStreams(Descriptor descriptor) {
  if (!descriptor.IsOpen() || descriptor.Get() > STDERR_FILENO) return descriptor;
  return Descriptor(fcntl(descriptor.Get(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
}

}  // namespace scrivo
