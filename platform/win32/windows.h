#pragma once

// The one place that includes the system's header, so that every body sees it with the same
// settings: no min and max macros, no seldom used parts, handles of distinct types.
#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef STRICT
#define STRICT
#endif
#include <windows.h>
