#pragma once

#include <vector>

#include "platform/win32/windows.h"

namespace scrivo {

// The other top-level windows of this thread, which cannot be used while this object lives: a host
// has one for each web that is open, and none of them may start a second command.
class OtherWindowsDisabled {
 public:
  // All that can be used now, but for `window`.
  explicit OtherWindowsDisabled(HWND window);
  ~OtherWindowsDisabled();
  OtherWindowsDisabled(const OtherWindowsDisabled&) = delete;
  OtherWindowsDisabled& operator=(const OtherWindowsDisabled&) = delete;

  // Lets them be used, or not, for a while.
  void Enable(bool enabled) const;

 private:
  std::vector<HWND> windows_;
};

}  // namespace scrivo
