#include "bytes/byte_source.h"

#include <algorithm>
#include <utility>

namespace scrivo {

MemorySource::MemorySource(std::vector<std::uint8_t> bytes) : bytes_(std::move(bytes)) {}

std::uint64_t MemorySource::Size() const { return bytes_.size(); }

bool MemorySource::ReadAt(std::uint64_t offset, std::span<std::uint8_t> out) const {
  if (offset > bytes_.size() || out.size() > bytes_.size() - offset) return false;
  std::copy_n(bytes_.begin() + static_cast<std::ptrdiff_t>(offset), out.size(), out.begin());
  return true;
}

}  // namespace scrivo
