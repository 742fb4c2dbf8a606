#pragma once

// Where the reader gets a help file's bytes from. Files are read at a place, not mapped: a mapping
// of a file that another program cuts short would end the process, would count against the memory
// of the reader, and would not fit a large file into a 32-bit process.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <system_error>
#include <utility>
#include <vector>

namespace scrivo {

class ByteSource {
 public:
  ByteSource() = default;
  ByteSource(const ByteSource&) = delete;
  ByteSource& operator=(const ByteSource&) = delete;
  virtual ~ByteSource() = default;

  // Length in bytes, as it was when the source was opened.
  virtual std::uint64_t Size() const = 0;

  // Fills `out` from `offset` on. False when that many bytes could not be read; `out` is then
  // undefined. May be called from several threads at once.
  virtual bool ReadAt(std::uint64_t offset, std::span<std::uint8_t> out) const = 0;
};

// Bytes in memory.
class MemorySource : public ByteSource {
 public:
  explicit MemorySource(std::vector<std::uint8_t> bytes) : bytes_(std::move(bytes)) {}

  std::uint64_t Size() const override { return bytes_.size(); }
  bool ReadAt(std::uint64_t offset, std::span<std::uint8_t> out) const override {
    if (offset > bytes_.size() || out.size() > bytes_.size() - offset) return false;
    std::copy_n(bytes_.begin() + static_cast<std::ptrdiff_t>(offset), out.size(), out.begin());
    return true;
  }

 private:
  std::vector<std::uint8_t> bytes_;
};

// Opens a regular file for reading. Null when that fails, with the reason in `*error`.
std::unique_ptr<ByteSource> OpenFileSource(const std::filesystem::path& path,
                                           std::error_code* error);

// Where the container writer puts a help file: bytes that can be written and read at any place.
class ByteStore {
 public:
  ByteStore() = default;
  ByteStore(const ByteStore&) = delete;
  ByteStore& operator=(const ByteStore&) = delete;
  virtual ~ByteStore() = default;

  // Writes `bytes` at `offset`; bytes skipped between the end so far and `offset` are undefined.
  // False when that failed; the store may then hold a part of them, and knows the reason.
  virtual bool WriteAt(std::uint64_t offset, std::span<const std::uint8_t> bytes) = 0;

  // Fills `out` from `offset`, all of it written before. False when that failed.
  virtual bool ReadAt(std::uint64_t offset, std::span<std::uint8_t> out) = 0;
};

}  // namespace scrivo
