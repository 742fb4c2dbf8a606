#pragma once

// What does not fit into memory.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <span>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "bytes/byte_source.h"
#include "bytes/output_file.h"

namespace scrivo {

// Room beyond memory, handed out from the front to the back of one store.
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

// Bytes that grow at the end and, beyond what may be in memory, lie in a SpillSpace.
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

// A file for what does not fit into memory, gone when its owner is: an output that is never
// committed, made beside `path` by the first WriteAt.
class TemporaryFile : public ByteStore {
 public:
  explicit TemporaryFile(std::filesystem::path path) : path_(std::move(path)) {}

  bool WriteAt(std::uint64_t offset, std::span<const std::uint8_t> bytes) override {
    if (!file_ && !reason_) file_ = OutputFile::Create(path_, &reason_);
    return file_ && file_->WriteAt(offset, bytes);
  }
  // At least one byte must have been written.
  bool ReadAt(std::uint64_t offset, std::span<std::uint8_t> out) override {
    return file_ && file_->ReadAt(offset, out);
  }

  // Why a call failed; the first failure counts.
  const std::error_code& Reason() const { return file_ ? file_->Reason() : reason_; }

 private:
  std::filesystem::path path_;
  std::unique_ptr<OutputFile> file_;
  std::error_code reason_;  // why there is none
};

}  // namespace scrivo
