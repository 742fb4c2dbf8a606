#pragma once

// The shell's and the common dialogs' headers, which need the system's header before them.
// clang-format off
#include "platform/win32/windows.h"

#include <commdlg.h>
#include <shellapi.h>
#include <shlobj.h>
// clang-format on
