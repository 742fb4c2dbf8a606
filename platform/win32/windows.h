#pragma once

#include "bytes/win32/windows_api.h"
#include "system/desktop.h"

namespace scrivo {

// A window as the services pass it on.
inline HWND WindowOf(WindowHandle handle) { return reinterpret_cast<HWND>(handle); }

}  // namespace scrivo
