#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "bytes/byte_source.h"

namespace scrivo {
namespace {

class FileSource : public ByteSource {
 public:
  FileSource(int file, std::uint64_t size) : file_(file), size_(size) {}
  ~FileSource() override { close(file_); }

  std::uint64_t Size() const override { return size_; }

  bool ReadAt(std::uint64_t offset, std::span<std::uint8_t> out) const override {
    while (!out.empty()) {
      const ssize_t count = pread(file_, out.data(), out.size(), static_cast<off_t>(offset));
      if (count < 0 && errno == EINTR) continue;
      if (count <= 0) return false;
      out = out.subspan(static_cast<std::size_t>(count));
      offset += static_cast<std::uint64_t>(count);
    }
    return true;
  }

 private:
  int file_;
  std::uint64_t size_;
};

std::error_code OpenError() { return {errno, std::generic_category()}; }

}  // namespace

std::unique_ptr<ByteSource> OpenFileSource(const std::filesystem::path& path,
                                           std::error_code* error) {
  // Without O_NONBLOCK a named pipe would hold the program until someone writes to it.
  const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (file < 0) {
    *error = OpenError();
    return nullptr;
  }
  struct stat status;
  if (fstat(file, &status) != 0) {
    *error = OpenError();
  } else if (S_ISDIR(status.st_mode)) {
    *error = std::make_error_code(std::errc::is_a_directory);
  } else if (!S_ISREG(status.st_mode)) {
    *error = std::make_error_code(std::errc::invalid_argument);
  } else {
    return std::make_unique<FileSource>(file, static_cast<std::uint64_t>(status.st_size));
  }
  close(file);
  return nullptr;
}

}  // namespace scrivo
