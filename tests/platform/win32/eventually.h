#pragma once

#include "platform/win32/windows.h"

namespace scrivo {

// Waits until `holds()`; false when it does not come to that in a time that nothing here takes.
template <typename Condition>
bool Eventually(Condition holds) {
  constexpr ULONGLONG kLimit = 60'000;
  const ULONGLONG end = GetTickCount64() + kLimit;
  while (!holds()) {
    if (GetTickCount64() > end) return false;
    Sleep(5);
  }
  return true;
}

}  // namespace scrivo
