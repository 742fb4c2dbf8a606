#pragma once

// A store in memory that remembers what was done to it and can be told to fail.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

#include "bytes/byte_source.h"

namespace scrivo {

class MemoryStore : public ByteStore {
 public:
  bool WriteAt(std::uint64_t offset, std::span<const std::uint8_t> data) override {
    ++writes;
    if (writes > writes_that_work) return false;
    const std::size_t end = static_cast<std::size_t>(offset) + data.size();
    if (bytes.size() < end) bytes.resize(end, 0xEE);
    std::copy(data.begin(), data.end(), bytes.begin() + static_cast<std::ptrdiff_t>(offset));
    return true;
  }

  bool ReadAt(std::uint64_t offset, std::span<std::uint8_t> out) override {
    if (!reads_work || offset + out.size() > bytes.size()) return false;
    std::copy_n(bytes.begin() + static_cast<std::ptrdiff_t>(offset), out.size(), out.begin());
    return true;
  }

  std::vector<std::uint8_t> bytes;
  std::size_t writes = 0;
  std::size_t writes_that_work = std::numeric_limits<std::size_t>::max();
  bool reads_work = true;
};

}  // namespace scrivo
