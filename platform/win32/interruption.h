#pragma once

#include "platform/win32/windows.h"
#include "system/error.h"
#include "system/interruption.h"

namespace scrivo {

// What the system calls on Ctrl-C and the like, and when the console is closed; tests do so too.
// After the latter it does not return.
BOOL WINAPI OnConsoleEvent(DWORD event);

// Throws Error kUserInterrupt once the program has been asked to end.
void ThrowIfInterrupted();

// From now until Forget, an interruption also ends this process, when it does not do so itself
// within a moment. The handle must stay open meanwhile.
void EndWhenInterrupted(HANDLE process);
void Forget(HANDLE process);

}  // namespace scrivo
