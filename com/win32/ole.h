#pragma once

// The one place that includes the headers of COM and Automation: windows.h as this tree sees it
// leaves them out.
#include "platform/win32/windows.h"
// After windows.h, on which they stand.
#include <objbase.h>
#include <oleauto.h>
#include <olectl.h>
