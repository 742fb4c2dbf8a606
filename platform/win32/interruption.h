#pragma once

#include "platform/win32/windows.h"
#include "system/error.h"
#include "system/interruption.h"

namespace scrivo {

// Throws Error kUserInterrupt once the program has been asked to end.
void ThrowIfInterrupted();

// From now until Forget, an interruption also ends this process, when it does not do so itself
// within a moment. The handle must stay open meanwhile.
void EndWhenInterrupted(HANDLE process);
void Forget(HANDLE process);

}  // namespace scrivo
