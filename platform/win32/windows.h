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

#include "system/desktop.h"

namespace scrivo {

// A window as the services pass it on.
inline HWND WindowOf(WindowHandle handle) { return reinterpret_cast<HWND>(handle); }

// Owns a file handle, whose invalid value is INVALID_HANDLE_VALUE, and closes it.
class FileHandle {
 public:
  explicit FileHandle(HANDLE handle) : handle_(handle) {}
  ~FileHandle() {
    if (handle_ != INVALID_HANDLE_VALUE) CloseHandle(handle_);
  }
  FileHandle(FileHandle&& other) noexcept : handle_(other.handle_) {
    other.handle_ = INVALID_HANDLE_VALUE;
  }
  FileHandle& operator=(FileHandle&&) = delete;

  HANDLE get() const { return handle_; }
  bool IsValid() const { return handle_ != INVALID_HANDLE_VALUE; }

 private:
  HANDLE handle_;
};

}  // namespace scrivo
