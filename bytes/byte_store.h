#pragma once

// Where the container writer puts a help file: bytes that can be written and read at any place.

#include <cstdint>
#include <span>

namespace scrivo {

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
