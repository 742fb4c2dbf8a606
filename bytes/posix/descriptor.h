#pragma once

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <span>
#include <system_error>
#include <utility>

namespace scrivo {

// Why the last system call of this thread failed.
inline std::error_code LastError() { return {errno, std::generic_category()}; }

// Owns a file descriptor; -1 is none.
class Descriptor {
 public:
  explicit Descriptor(int number = -1) : number_(number) {}
  Descriptor(Descriptor&& other) noexcept : number_(other.Release()) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    if (this != &other) {
      Close();
      number_ = other.Release();
    }
    return *this;
  }
  ~Descriptor() { Close(); }

  int Get() const { return number_; }
  bool IsOpen() const { return number_ != -1; }
  int Release() { return std::exchange(number_, -1); }
  // Closes it; false when the system reports that earlier writes were lost.
  bool Close() { return number_ == -1 || close(Release()) == 0; }

 private:
  int number_;
};

// Fills `out` from `offset` of a file. False when that failed, with errno set; EIO when the file
// ends before.
inline bool ReadAllAt(int file, std::uint64_t offset, std::span<std::uint8_t> out) {
  while (!out.empty()) {
    const ssize_t count = pread(file, out.data(), out.size(), static_cast<off_t>(offset));
    if (count < 0 && errno == EINTR) continue;
    if (count == 0) errno = EIO;
    if (count <= 0) return false;
    out = out.subspan(static_cast<std::size_t>(count));
    offset += static_cast<std::uint64_t>(count);
  }
  return true;
}

// Writes all of `bytes` at `offset` of a file. False when that failed, with errno set.
inline bool WriteAllAt(int file, std::uint64_t offset, std::span<const std::uint8_t> bytes) {
  while (!bytes.empty()) {
    const ssize_t count = pwrite(file, bytes.data(), bytes.size(), static_cast<off_t>(offset));
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return false;
    bytes = bytes.subspan(static_cast<std::size_t>(count));
    offset += static_cast<std::uint64_t>(count);
  }
  return true;
}

// Whether this name is still that of the open file.
inline bool IsNamed(int file, const std::filesystem::path& name) {
  struct stat by_name, by_file;
  return lstat(name.c_str(), &by_name) == 0 && fstat(file, &by_file) == 0 &&
         by_name.st_dev == by_file.st_dev && by_name.st_ino == by_file.st_ino;
}

}  // namespace scrivo
