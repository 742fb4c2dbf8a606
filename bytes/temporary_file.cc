#include "bytes/temporary_file.h"

namespace scrivo {

bool TemporaryFile::WriteAt(std::uint64_t offset, std::span<const std::uint8_t> bytes) {
  if (!file_ && !reason_) file_ = OutputFile::Create(path_, &reason_);
  return file_ && file_->WriteAt(offset, bytes);
}

bool TemporaryFile::ReadAt(std::uint64_t offset, std::span<std::uint8_t> out) {
  return file_ && file_->ReadAt(offset, out);
}

}  // namespace scrivo
