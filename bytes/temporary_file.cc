#include "bytes/temporary_file.h"

#include <cerrno>

namespace scrivo {

TemporaryFile::~TemporaryFile() {
  stream_.close();
  std::error_code ignored;
  if (has_name_) std::filesystem::remove(path_, ignored);
}

bool TemporaryFile::Check(bool good) {
  if (!good && !error_) {
    error_ = errno != 0 ? std::error_code(errno, std::generic_category())
                        : std::make_error_code(std::errc::io_error);
  }
  return !error_;
}

bool TemporaryFile::WriteAt(std::uint64_t offset, std::span<const std::uint8_t> bytes) {
  if (error_) return false;
  errno = 0;
  if (!stream_.is_open()) {
    stream_.open(path_, std::ios::binary | std::ios::in | std::ios::out | std::ios::trunc);
    if (!Check(stream_.is_open())) return false;
    std::error_code stays;
    has_name_ = !std::filesystem::remove(path_, stays);
  }
  stream_.seekp(static_cast<std::streamoff>(offset));
  stream_.write(reinterpret_cast<const char*>(bytes.data()),
                static_cast<std::streamsize>(bytes.size()));
  return Check(stream_.good());
}

bool TemporaryFile::ReadAt(std::uint64_t offset, std::span<std::uint8_t> out) {
  if (error_) return false;
  errno = 0;
  stream_.seekg(static_cast<std::streamoff>(offset));
  stream_.read(reinterpret_cast<char*>(out.data()), static_cast<std::streamsize>(out.size()));
  return Check(stream_.good());
}

}  // namespace scrivo
