#pragma once

// Bytes that grow at the end and, beyond what may be in memory, lie in a SpillSpace.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string_view>
#include <vector>

#include "bytes/spill_space.h"

namespace scrivo {

class SpilledBytes {
 public:
  // Without a space all stay in memory. With one, nobody else may append to it from the first Put
  // on until the last.
  explicit SpilledBytes(SpillSpace* space = nullptr) : space_(space) {}

  void Put(std::string_view bytes);
  void Put16(std::uint16_t value) { PutLow(value, 2); }
  void Put32(std::uint32_t value) { PutLow(value, 4); }

  // Adds zero bytes until the whole is `size` long.
  void PadTo(std::uint64_t size);

  // Replace bytes that have been put.
  void Set16(std::uint64_t offset, std::uint16_t value) { SetLow(offset, value, 2); }
  void Set32(std::uint64_t offset, std::uint32_t value) { SetLow(offset, value, 4); }

  std::uint64_t Size() const { return spilled_ + memory_.size(); }
  bool Good() const { return space_ == nullptr || space_->Good(); }

  // Hands out all bytes, piece by piece. They are worthless when `good` says no afterwards.
  using Taker = std::function<void(std::span<const std::uint8_t>)>;
  void Take(const Taker& taker);

 private:
  void PutLow(std::uint32_t value, int count);
  void SetLow(std::uint64_t offset, std::uint32_t value, int count);
  void SpillIfFull();

  SpillSpace* space_;
  std::uint64_t place_ = 0;    // of the first byte in the space
  std::uint64_t spilled_ = 0;  // bytes that lie there
  std::vector<std::uint8_t> memory_;
};

}  // namespace scrivo
