#include <algorithm>

#include "bytes/byte_source.h"
#include "bytes/win32/windows_api.h"

namespace scrivo {
namespace {

class FileSource : public ByteSource {
 public:
  FileSource(HANDLE file, std::uint64_t size) : file_(file), size_(size) {}
  ~FileSource() override { CloseHandle(file_); }

  std::uint64_t Size() const override { return size_; }

  bool ReadAt(std::uint64_t offset, std::span<std::uint8_t> out) const override {
    constexpr std::size_t kMostAtOnce = 1 << 30;
    while (!out.empty()) {
      // A place given here makes the call independent of the file's own position, which the
      // threads share.
      OVERLAPPED place{};
      place.Offset = static_cast<DWORD>(offset);
      place.OffsetHigh = static_cast<DWORD>(offset >> 32);
      DWORD count = 0;
      const auto wanted = static_cast<DWORD>(std::min(out.size(), kMostAtOnce));
      if (!ReadFile(file_, out.data(), wanted, &count, &place) || count == 0) return false;
      out = out.subspan(count);
      offset += count;
    }
    return true;
  }

 private:
  HANDLE file_;
  std::uint64_t size_;
};

std::error_code OpenError() { return {static_cast<int>(GetLastError()), std::system_category()}; }

HANDLE Open(const std::filesystem::path& path) {
  return CreateFileW(path.c_str(), GENERIC_READ,
                     FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                     FILE_ATTRIBUTE_NORMAL, nullptr);
}

// A writer that has just put its file in place holds it for a moment; one that goes on writing
// stays.
HANDLE OpenWhenReleased(const std::filesystem::path& path) {
  constexpr int kTries = 50;
  constexpr DWORD kMilliseconds = 10;
  for (int tries = 1;; ++tries) {
    const HANDLE file = Open(path);
    if (file != INVALID_HANDLE_VALUE || GetLastError() != ERROR_SHARING_VIOLATION ||
        tries == kTries) {
      return file;
    }
    Sleep(kMilliseconds);
  }
}

}  // namespace

std::unique_ptr<ByteSource> OpenFileSource(const std::filesystem::path& path,
                                           std::error_code* error) {
  const HANDLE file = OpenWhenReleased(path);
  if (file == INVALID_HANDLE_VALUE) {
    *error = OpenError();
    return nullptr;
  }
  LARGE_INTEGER size;
  if (GetFileType(file) != FILE_TYPE_DISK) {
    *error = std::make_error_code(std::errc::invalid_argument);
  } else if (!GetFileSizeEx(file, &size)) {
    *error = OpenError();
  } else {
    return std::make_unique<FileSource>(file, static_cast<std::uint64_t>(size.QuadPart));
  }
  CloseHandle(file);
  return nullptr;
}

}  // namespace scrivo
