#include "platform/posix/interruption.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <cerrno>

namespace scrivo {
namespace {

volatile sig_atomic_t interrupted = 0;
int pipe_ends[2] = {-1, -1};

void OnSignal(int) {
  const int saved = errno;
  interrupted = 1;
  // Wakes whoever waits for a child's output. A full pipe has done so already.
  [[maybe_unused]] const ssize_t written = write(pipe_ends[1], "", 1);
  errno = saved;
}

}  // namespace

void CatchInterruptions() {
  if (pipe_ends[0] != -1) return;
  if (pipe2(pipe_ends, O_CLOEXEC | O_NONBLOCK) != 0) return;
  for (const int signal_number : {SIGINT, SIGTERM, SIGHUP}) {
    struct sigaction earlier = {};
    if (sigaction(signal_number, nullptr, &earlier) == 0 && earlier.sa_handler == SIG_IGN) continue;
    struct sigaction action = {};
    action.sa_handler = OnSignal;  // without SA_RESTART: a waiting call is to return
    sigaction(signal_number, &action, nullptr);
  }
}

bool Interrupted() { return interrupted != 0; }

int InterruptionDescriptor() { return pipe_ends[0]; }

void ThrowIfInterrupted() {
  if (Interrupted()) throw Error(kUserInterrupt, "", "Interrupted");
}

}  // namespace scrivo
