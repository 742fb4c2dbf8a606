#include "bytes/spilled_bytes.h"

#include <algorithm>

namespace scrivo {
namespace {

constexpr std::size_t kPiece = std::size_t{1} << 20;

}  // namespace

void SpilledBytes::Put(std::string_view bytes) {
  memory_.insert(memory_.end(), bytes.begin(), bytes.end());
  SpillIfFull();
}

void SpilledBytes::PutLow(std::uint32_t value, int count) {
  for (int i = 0; i < count; ++i) memory_.push_back(static_cast<std::uint8_t>(value >> 8 * i));
}

void SpilledBytes::PadTo(std::uint64_t size) {
  if (size > Size()) memory_.resize(static_cast<std::size_t>(size - spilled_));
  SpillIfFull();
}

void SpilledBytes::SetLow(std::uint64_t offset, std::uint32_t value, int count) {
  for (int i = 0; i < count; ++i, ++offset) {
    const auto byte = static_cast<std::uint8_t>(value >> 8 * i);
    if (offset >= spilled_) {
      memory_[static_cast<std::size_t>(offset - spilled_)] = byte;
    } else {
      space_->WriteAt(place_ + offset, {&byte, 1});
    }
  }
}

// Small things stay in memory; what has once been too large goes out in pieces.
void SpilledBytes::SpillIfFull() {
  if (space_ == nullptr) return;
  const std::size_t most =
      spilled_ == 0 ? space_->Memory() / 4 : std::min(kPiece, space_->Memory() / 4);
  if (memory_.size() <= most) return;
  const std::uint64_t place = space_->Append(memory_);
  if (spilled_ == 0) {
    place_ = place;
    std::vector<std::uint8_t>().swap(memory_);
  }
  spilled_ = space_->Size() - place_;
  memory_.clear();
}

void SpilledBytes::Take(const Taker& taker) {
  std::vector<std::uint8_t> piece;
  for (std::uint64_t at = 0; at < spilled_ && Good(); at += piece.size()) {
    piece.resize(static_cast<std::size_t>(std::min<std::uint64_t>(kPiece, spilled_ - at)));
    space_->ReadAt(place_ + at, piece);
    taker(piece);
  }
  taker(memory_);
}

}  // namespace scrivo
