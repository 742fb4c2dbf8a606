#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/win32/windows.h"
#include "ui/win32/native_window.h"

namespace scrivo {

// Every control below a window, in their order, whose class has this name.
std::vector<HWND> ControlsOf(HWND window, const std::string& class_name);

// The button below a window with this text, access key marks left aside; null when there is none.
HWND ButtonOf(HWND window, const std::string& text);

// Runs `action` from the message loop that comes next, such as that of a modal window.
void OnceShown(std::function<void()> action);

// Handles all messages that wait.
void PumpMessages();

}  // namespace scrivo
