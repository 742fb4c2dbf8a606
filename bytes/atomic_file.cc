#include "bytes/atomic_file.h"

#include <cerrno>

namespace scrivo {
namespace {

// The reason for a failure of a stream, which keeps none itself.
std::error_code LastError() {
  return errno != 0 ? std::error_code(errno, std::generic_category())
                    : std::make_error_code(std::errc::io_error);
}

}  // namespace

AtomicFile::AtomicFile(const std::filesystem::path& target) : target_(target), temporary_(target) {
  temporary_ += ".tmp";
  errno = 0;
  stream_.open(temporary_, std::ios::binary | std::ios::in | std::ios::out | std::ios::trunc);
  Check(stream_.is_open());
}

std::unique_ptr<AtomicFile> AtomicFile::Create(const std::filesystem::path& target,
                                               std::error_code* error) {
  std::unique_ptr<AtomicFile> file(new AtomicFile(target));
  *error = file->error_;
  if (file->error_) return nullptr;
  return file;
}

AtomicFile::~AtomicFile() {
  if (!stream_.is_open()) return;
  stream_.close();
  std::error_code ignored;
  std::filesystem::remove(temporary_, ignored);
}

bool AtomicFile::Check(bool good) {
  if (!good && !error_) error_ = LastError();
  return !error_;
}

bool AtomicFile::WriteAt(std::uint64_t offset, std::span<const std::uint8_t> bytes) {
  if (error_) return false;
  errno = 0;
  stream_.seekp(static_cast<std::streamoff>(offset));
  stream_.write(reinterpret_cast<const char*>(bytes.data()),
                static_cast<std::streamsize>(bytes.size()));
  return Check(stream_.good());
}

bool AtomicFile::ReadAt(std::uint64_t offset, std::span<std::uint8_t> out) {
  if (error_) return false;
  errno = 0;
  stream_.seekg(static_cast<std::streamoff>(offset));
  stream_.read(reinterpret_cast<char*>(out.data()), static_cast<std::streamsize>(out.size()));
  return Check(stream_.good());
}

bool AtomicFile::Commit() {
  if (error_) return false;
  errno = 0;
  // A file that cannot be closed whole, as on a full disk, is removed by hand: the destructor
  // takes a closed stream for a file that is in place.
  stream_.close();
  bool good = Check(!stream_.fail());
  if (good) {
    std::filesystem::rename(temporary_, target_, error_);
    good = !error_;
  }
  if (!good) {
    std::error_code ignored;
    std::filesystem::remove(temporary_, ignored);
  }
  return good;
}

}  // namespace scrivo
