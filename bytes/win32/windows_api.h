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

#include <algorithm>
#include <cstdint>
#include <span>
#include <system_error>
#include <utility>

namespace scrivo {

// Why the last system call of this thread failed.
inline std::error_code LastError() {
  return {static_cast<int>(GetLastError()), std::system_category()};
}

// Owns a file handle; INVALID_HANDLE_VALUE is none.
class FileHandle {
 public:
  explicit FileHandle(HANDLE handle = INVALID_HANDLE_VALUE) : handle_(handle) {}
  FileHandle(FileHandle&& other) noexcept : handle_(other.Release()) {}
  FileHandle& operator=(FileHandle&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
  }
  ~FileHandle() { Close(); }

  HANDLE Get() const { return handle_; }
  bool IsOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
  HANDLE Release() { return std::exchange(handle_, INVALID_HANDLE_VALUE); }
  void Close() {
    if (IsOpen()) CloseHandle(Release());
  }

 private:
  HANDLE handle_;
};

// One call moves at most this many bytes, as its count has 32 bits.
constexpr std::size_t kLargestTransfer = 1 << 30;

// A place in a file for one call, which is then independent of the file's own position: threads
// share that.
inline OVERLAPPED PlaceInFile(std::uint64_t offset) {
  OVERLAPPED place{};
  place.Offset = static_cast<DWORD>(offset);
  place.OffsetHigh = static_cast<DWORD>(offset >> 32);
  return place;
}

// Fills `out` from `offset` of a file. False when that failed, which GetLastError tells the reason
// of: ERROR_HANDLE_EOF when the file ends before.
inline bool ReadAllAt(HANDLE file, std::uint64_t offset, std::span<std::uint8_t> out) {
  while (!out.empty()) {
    OVERLAPPED place = PlaceInFile(offset);
    DWORD count = 0;
    const auto wanted = static_cast<DWORD>(std::min(out.size(), kLargestTransfer));
    if (!ReadFile(file, out.data(), wanted, &count, &place)) return false;
    if (count == 0) SetLastError(ERROR_HANDLE_EOF);
    if (count == 0) return false;
    out = out.subspan(count);
    offset += count;
  }
  return true;
}

// Writes all of `bytes` at `offset` of a file. False when that failed, which GetLastError tells the
// reason of.
inline bool WriteAllAt(HANDLE file, std::uint64_t offset, std::span<const std::uint8_t> bytes) {
  while (!bytes.empty()) {
    OVERLAPPED place = PlaceInFile(offset);
    DWORD count = 0;
    const auto wanted = static_cast<DWORD>(std::min(bytes.size(), kLargestTransfer));
    if (!WriteFile(file, bytes.data(), wanted, &count, &place)) return false;
    bytes = bytes.subspan(count);
    offset += count;
  }
  return true;
}

}  // namespace scrivo
