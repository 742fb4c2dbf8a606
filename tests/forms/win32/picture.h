#pragma once

#include <string>

#include "platform/win32/windows.h"

namespace scrivo {

// Writes what a visible window shows, its border and title bar with it, to a bitmap file (BMP).
// False when the file cannot be written.
bool KeepPicture(HWND window, const std::string& path);

}  // namespace scrivo
