#pragma once

#include <string>

#include "platform/win32/windows.h"

namespace scrivo::host {

// The host's own windows show any letter, whatever the system's code page: they and their controls
// take wide text.

// Creates a child control of a system class, hidden and at no place unless `style` says otherwise.
// Raises Error (kOutOfMemory).
HWND CreateWideControl(const wchar_t* class_name, const std::string& text, DWORD style, HWND parent,
                       int id);
void ShowWideText(HWND window, const std::string& text);
// A message box titled "Scrivo Host".
void TellWide(HWND owner, const std::string& text, UINT icon);

}  // namespace scrivo::host
