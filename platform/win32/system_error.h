#pragma once

#include <string>

#include "platform/win32/windows.h"

namespace scrivo {

// Raises the Error that stands for a system error code; its description names `subject`, the path
// or thing that the failed call was about.
[[noreturn]] void RaiseSystemError(DWORD code, const std::string& subject);

}  // namespace scrivo
