#include "bytes/byte_source.h"
#include "bytes/win32/windows_api.h"

namespace scrivo {
namespace {

class FileSource : public ByteSource {
 public:
  FileSource(FileHandle file, std::uint64_t size) : file_(std::move(file)), size_(size) {}

  std::uint64_t Size() const override { return size_; }
  bool ReadAt(std::uint64_t offset, std::span<std::uint8_t> out) const override {
    return ReadAllAt(file_.Get(), offset, out);
  }

 private:
  FileHandle file_;
  std::uint64_t size_;
};

FileHandle Open(const std::filesystem::path& path) {
  return FileHandle(CreateFileW(path.c_str(), GENERIC_READ,
                                FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
}

// A writer that has just put its file in place holds it for a moment; one that goes on writing
// stays.
FileHandle OpenWhenReleased(const std::filesystem::path& path) {
  constexpr int kTries = 50;
  constexpr DWORD kMilliseconds = 10;
  for (int tries = 1;; ++tries) {
    FileHandle file = Open(path);
    if (file.IsOpen() || GetLastError() != ERROR_SHARING_VIOLATION || tries == kTries) {
      return file;
    }
    Sleep(kMilliseconds);
  }
}

}  // namespace

std::unique_ptr<ByteSource> OpenFileSource(const std::filesystem::path& path,
                                           std::error_code* error) {
  FileHandle file = OpenWhenReleased(path);
  LARGE_INTEGER size;
  if (!file.IsOpen()) {
    *error = LastError();
  } else if (GetFileType(file.Get()) != FILE_TYPE_DISK) {
    *error = std::make_error_code(std::errc::invalid_argument);
  } else if (!GetFileSizeEx(file.Get(), &size)) {
    *error = LastError();
  } else {
    return std::make_unique<FileSource>(std::move(file), static_cast<std::uint64_t>(size.QuadPart));
  }
  return nullptr;
}

}  // namespace scrivo
