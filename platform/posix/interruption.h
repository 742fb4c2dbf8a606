#pragma once

#include "system/error.h"
#include "system/interruption.h"

namespace scrivo {

// A descriptor that can be read from once an interruption has come; -1 while none are caught.
int InterruptionDescriptor();

// Throws Error kUserInterrupt when an interruption has come.
void ThrowIfInterrupted();

}  // namespace scrivo
