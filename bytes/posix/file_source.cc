#include "bytes/byte_source.h"
#include "bytes/posix/descriptor.h"

namespace scrivo {
namespace {

class FileSource : public ByteSource {
 public:
  FileSource(Descriptor file, std::uint64_t size) : file_(std::move(file)), size_(size) {}

  std::uint64_t Size() const override { return size_; }
  bool ReadAt(std::uint64_t offset, std::span<std::uint8_t> out) const override {
    return ReadAllAt(file_.Get(), offset, out);
  }

 private:
  Descriptor file_;
  std::uint64_t size_;
};

}  // namespace

std::unique_ptr<ByteSource> OpenFileSource(const std::filesystem::path& path,
                                           std::error_code* error) {
  // Without O_NONBLOCK a named pipe would hold the program until someone writes to it.
  Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  struct stat status;
  if (!file.IsOpen() || fstat(file.Get(), &status) != 0) {
    *error = LastError();
  } else if (S_ISDIR(status.st_mode)) {
    *error = std::make_error_code(std::errc::is_a_directory);
  } else if (!S_ISREG(status.st_mode)) {
    *error = std::make_error_code(std::errc::invalid_argument);
  } else {
    return std::make_unique<FileSource>(std::move(file),
                                        static_cast<std::uint64_t>(status.st_size));
  }
  return nullptr;
}

}  // namespace scrivo
