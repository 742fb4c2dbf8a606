#include "platform/win32/interruption.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <vector>

namespace scrivo {
namespace {

// How long an interrupted child may take to put its things in order before it is ended.
constexpr DWORD kEndingTime = 500;

std::atomic<bool> interrupted = false;
std::mutex children_mutex;
std::vector<HANDLE> children;

// The console tells its programs of Ctrl-C, the children among them, so most end by themselves.
void EndChildren() {
  const std::lock_guard lock(children_mutex);
  for (HANDLE child : children) {
    if (WaitForSingleObject(child, kEndingTime) == WAIT_TIMEOUT) TerminateProcess(child, 1);
  }
}

}  // namespace

// Called in a thread of its own.
BOOL WINAPI OnConsoleEvent(DWORD event) {
  interrupted = true;
  EndChildren();
  // After the others, such as the console's closing, the system ends the program as soon as this
  // returns; it would do so in a few seconds anyway, which the program needs to clear up.
  if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) Sleep(INFINITE);
  return TRUE;
}

void CatchInterruptions() { SetConsoleCtrlHandler(OnConsoleEvent, TRUE); }

bool Interrupted() { return interrupted; }

void ThrowIfInterrupted() {
  if (Interrupted()) throw Error(kUserInterrupt, "", "Interrupted");
}

void EndWhenInterrupted(HANDLE process) {
  const std::lock_guard lock(children_mutex);
  children.push_back(process);
  // The interruption may have come since the process was started, and ended the others already.
  if (interrupted) TerminateProcess(process, 1);
}

void Forget(HANDLE process) {
  const std::lock_guard lock(children_mutex);
  std::erase(children, process);
}

}  // namespace scrivo
