#pragma once

// Room beyond memory, handed out from the front to the back of one store.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

#include "bytes/byte_store.h"

namespace scrivo {

class SpillSpace {
 public:
  // `store` must outlive it. `memory` is what a user of the space may keep in memory, about.
  SpillSpace(ByteStore* store, std::size_t memory) : store_(*store), memory_(memory) {}

  std::size_t Memory() const { return memory_; }

  // Adds bytes behind all others and gives the place where they start. After a failure, which the
  // store knows the reason of, nothing is written any more.
  std::uint64_t Append(std::span<const std::uint8_t> bytes) {
    const std::uint64_t place = size_;
    WriteAt(place, bytes);
    size_ += bytes.size();
    return place;
  }

  void WriteAt(std::uint64_t place, std::span<const std::uint8_t> bytes) {
    good_ = good_ && store_.WriteAt(place, bytes);
  }

  // Fills `out`; false, with zeros in it, after a failure.
  bool ReadAt(std::uint64_t place, std::span<std::uint8_t> out) {
    good_ = good_ && store_.ReadAt(place, out);
    if (!good_) std::fill(out.begin(), out.end(), std::uint8_t{0});
    return good_;
  }

  std::uint64_t Size() const { return size_; }
  bool Good() const { return good_; }

 private:
  ByteStore& store_;
  std::size_t memory_;
  std::uint64_t size_ = 0;
  bool good_ = true;
};

}  // namespace scrivo
