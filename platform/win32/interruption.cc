#include "platform/seams/interruption.h"

#include <atomic>

#include "platform/win32/windows.h"

namespace scrivo {
namespace {

std::atomic<bool> interrupted = false;

BOOL WINAPI OnConsoleEvent(DWORD) {
  interrupted = true;
  return TRUE;
}

}  // namespace

void CatchInterruptions() { SetConsoleCtrlHandler(OnConsoleEvent, TRUE); }

bool Interrupted() { return interrupted; }

}  // namespace scrivo
