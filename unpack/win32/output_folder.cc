#include "unpack/output_folder.h"

#include <algorithm>
#include <string>
#include <utility>

#include "bytes/win32/windows_api.h"

namespace scrivo {
namespace {

std::error_code LastError() { return {static_cast<int>(GetLastError()), std::system_category()}; }

WriteResult Failed() { return {WriteOutcome::kFailed, LastError()}; }

class File {
 public:
  explicit File(HANDLE handle) : handle_(handle) {}
  File(const File&) = delete;
  File& operator=(const File&) = delete;
  ~File() {
    if (valid()) CloseHandle(handle_);
  }

  bool valid() const { return handle_ != INVALID_HANDLE_VALUE; }

  bool Write(std::uint64_t offset, std::span<const std::uint8_t> content) const {
    constexpr std::size_t kMostAtOnce = 1 << 30;
    while (!content.empty()) {
      OVERLAPPED place{};
      place.Offset = static_cast<DWORD>(offset);
      place.OffsetHigh = static_cast<DWORD>(offset >> 32);
      DWORD count = 0;
      const auto wanted = static_cast<DWORD>(std::min(content.size(), kMostAtOnce));
      if (!WriteFile(handle_, content.data(), wanted, &count, &place)) return false;
      content = content.subspan(count);
      offset += count;
    }
    return true;
  }

 private:
  HANDLE handle_;
};

std::wstring Wide(std::string_view utf8) {
  const int size = static_cast<int>(utf8.size());
  const int units = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(units), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, wide.data(), units);
  return wide;
}

class WindowsOutputFolder : public OutputFolder {
 public:
  explicit WindowsOutputFolder(std::wstring root) : root_(std::move(root)) {}

  NameRules Rules() const override { return NameRules::kWindows; }

  WriteResult Create(std::string_view path, std::span<const std::uint8_t> content) override {
    std::wstring name;
    if (const WriteResult result = Walk(path, true, &name); result.outcome != WriteOutcome::kDone) {
      return result;
    }
    if (const WriteResult result = MakeRoom(name); result.outcome != WriteOutcome::kDone) {
      return result;
    }
    bool written = false;
    {
      const File file = Open(name, CREATE_NEW);
      if (!file.valid()) return Failed();
      written = file.Write(0, content);
      if (written) return {};
    }
    const WriteResult result = Failed();
    DeleteFileW(name.c_str());
    return result;
  }

  WriteResult WritePart(std::string_view path, std::uint64_t offset,
                        std::span<const std::uint8_t> content) override {
    std::wstring name;
    if (const WriteResult result = Walk(path, false, &name);
        result.outcome != WriteOutcome::kDone) {
      return result;
    }
    const File file = Open(name, OPEN_EXISTING);
    if (!file.valid() || !file.Write(offset, content)) return Failed();
    return {};
  }

  void Remove(std::string_view path) override {
    std::wstring name;
    if (Walk(path, false, &name).outcome == WriteOutcome::kDone) DeleteFileW(name.c_str());
  }

 private:
  // Checks, and makes if asked to, the folders that `path` lies in, part by part; `*name` gets the
  // full name of the file.
  WriteResult Walk(std::string_view path, bool make, std::wstring* name) const {
    *name = root_;
    for (std::size_t slash; (slash = path.find('/')) != std::string_view::npos;) {
      *name += L'\\' + Wide(path.substr(0, slash));
      path.remove_prefix(slash + 1);
      DWORD attributes = GetFileAttributesW(name->c_str());
      if (attributes == INVALID_FILE_ATTRIBUTES && make) {
        if (!CreateDirectoryW(name->c_str(), nullptr) && GetLastError() != ERROR_ALREADY_EXISTS) {
          return Failed();
        }
        attributes = GetFileAttributesW(name->c_str());
      }
      if (attributes == INVALID_FILE_ATTRIBUTES) return Failed();
      if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) return {WriteOutcome::kLinkInTheWay};
      if ((attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) return {WriteOutcome::kFileInTheWay};
    }
    *name += L'\\' + Wide(path);
    return {};
  }

  // Removes a plain file of that name.
  static WriteResult MakeRoom(const std::wstring& name) {
    const DWORD attributes = GetFileAttributesW(name.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) return {};
    if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) return {WriteOutcome::kLinkInTheWay};
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return {WriteOutcome::kFolderInTheWay};
    return DeleteFileW(name.c_str()) ? WriteResult{} : Failed();
  }

  static File Open(const std::wstring& name, DWORD disposition) {
    return File(CreateFileW(name.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                            nullptr, disposition,
                            FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
  }

  std::wstring root_;
};

// The form of an absolute path that Windows takes as it stands: of any length, and without a
// meaning of its own for device names and for dots and blanks at the end of a part.
std::wstring LiteralPath(std::wstring path) {
  std::replace(path.begin(), path.end(), L'/', L'\\');
  while (path.ends_with(L'\\')) path.pop_back();
  if (path.starts_with(LR"(\\?\)") || path.starts_with(LR"(\\.\)")) return path;
  if (path.starts_with(LR"(\\)")) return LR"(\\?\UNC\)" + path.substr(2);
  return LR"(\\?\)" + path;
}

}  // namespace

std::unique_ptr<OutputFolder> OpenOutputFolder(const std::filesystem::path& path,
                                               std::error_code* error) {
  std::filesystem::create_directories(path, *error);
  if (*error) return nullptr;
  std::filesystem::path absolute = std::filesystem::absolute(path, *error);
  if (*error) return nullptr;
  return std::make_unique<WindowsOutputFolder>(
      LiteralPath(absolute.lexically_normal().make_preferred().wstring()));
}

}  // namespace scrivo
