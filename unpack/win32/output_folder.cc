#include "unpack/output_folder.h"

#include <algorithm>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "bytes/win32/windows_api.h"

namespace scrivo {
namespace {

WriteResult Failed() {
  const std::error_code error = LastError();
  switch (error.value()) {
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
    case ERROR_WRITE_PROTECT:
    case ERROR_NOT_READY:
    case ERROR_IO_DEVICE:
      return {WriteOutcome::kDiskFailed, error};
    default:
      return {WriteOutcome::kFailed, error};
  }
}

std::wstring Wide(std::string_view utf8) {
  const int size = static_cast<int>(utf8.size());
  const int units = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(units), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, wide.data(), units);
  return wide;
}

class WindowsOutputFolder : public OutputFolder {
 public:
  WindowsOutputFolder(std::wstring root, std::vector<std::filesystem::path> made)
      : root_(std::move(root)), made_above_(std::move(made)) {}

  NameRules Rules() const override { return NameRules::kWindows; }

  WriteResult Create(std::string_view path, std::span<const std::uint8_t> content) override {
    std::wstring name;
    FileHandle file;
    if (const WriteResult result = StartAt(path, &name, &file);
        result.outcome != WriteOutcome::kDone) {
      return result;
    }
    const bool written = WriteAllAt(file.Get(), 0, content);
    const WriteResult result = written ? WriteResult{} : Failed();
    // A file that is open keeps its name.
    file.Close();
    return written ? FinishAt(name) : GiveUpAt(name, result);
  }

  WriteResult Start(std::string_view path) override {
    std::wstring name;
    FileHandle file;
    return StartAt(path, &name, &file);
  }

  WriteResult WritePart(std::string_view path, std::uint64_t offset,
                        std::span<const std::uint8_t> content) override {
    std::wstring name;
    const WriteResult result = Walk(path, false, &name);
    return result.outcome == WriteOutcome::kDone ? WriteInto(name, offset, content) : result;
  }

  WriteResult Finish(std::string_view path) override {
    std::wstring name;
    const WriteResult result = Walk(path, false, &name);
    return result.outcome == WriteOutcome::kDone ? FinishAt(name) : result;
  }

  void GiveUp(std::string_view path) override {
    std::wstring name;
    if (Walk(path, false, &name).outcome == WriteOutcome::kDone) GiveUpAt(name, {});
  }

  void RemoveEmptyFolders() override {
    for (auto name = made_.rbegin(); name != made_.rend(); ++name) {
      RemoveDirectoryW(name->c_str());
    }
    made_.clear();
    RemoveIfEmpty(made_above_);
  }

 private:
  // Checks, and makes if asked to, the folders that `path` lies in, part by part; `*name` gets the
  // full name of the file.
  WriteResult Walk(std::string_view path, bool make, std::wstring* name) {
    *name = root_;
    for (std::size_t slash; (slash = path.find('/')) != std::string_view::npos;) {
      *name += L'\\' + Wide(path.substr(0, slash));
      path.remove_prefix(slash + 1);
      DWORD attributes = GetFileAttributesW(name->c_str());
      if (attributes == INVALID_FILE_ATTRIBUTES && make) {
        const std::lock_guard lock(mutex_);
        // Noted first, as memory may run out.
        made_.push_back(*name);
        if (!CreateDirectoryW(name->c_str(), nullptr)) {
          const WriteResult failure = Failed();
          made_.pop_back();
          if (failure.error.value() != ERROR_ALREADY_EXISTS) return failure;
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

  WriteResult StartAt(std::string_view path, std::wstring* name, FileHandle* file) {
    if (const WriteResult result = Walk(path, true, name); result.outcome != WriteOutcome::kDone) {
      return result;
    }
    if (const WriteResult result = MayTakeName(*name); result.outcome != WriteOutcome::kDone) {
      return result;
    }
    const std::wstring growing = Growing(*name);
    *file = Open(growing, CREATE_NEW);
    if (!file->IsOpen()) {
      // One that is there was left by a process that was ended.
      DeleteFileW(growing.c_str());
      *file = Open(growing, CREATE_NEW);
    }
    return file->IsOpen() ? WriteResult{} : Failed();
  }

  // Only a plain file is replaced.
  static WriteResult MayTakeName(const std::wstring& name) {
    const DWORD attributes = GetFileAttributesW(name.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) return {};
    if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) return {WriteOutcome::kLinkInTheWay};
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return {WriteOutcome::kFolderInTheWay};
    return {};
  }

  static std::wstring Growing(const std::wstring& name) { return name + Wide(kGrowingEnding); }

  static WriteResult WriteInto(const std::wstring& name, std::uint64_t offset,
                               std::span<const std::uint8_t> content) {
    const FileHandle file = Open(Growing(name), OPEN_EXISTING);
    return file.IsOpen() && WriteAllAt(file.Get(), offset, content) ? WriteResult{} : Failed();
  }

  static WriteResult FinishAt(const std::wstring& name) {
    if (MoveFileExW(Growing(name).c_str(), name.c_str(), MOVEFILE_REPLACE_EXISTING)) return {};
    return GiveUpAt(name, Failed());
  }

  static WriteResult GiveUpAt(const std::wstring& name, WriteResult reason) {
    DeleteFileW(Growing(name).c_str());
    return reason;
  }

  static FileHandle Open(const std::wstring& name, DWORD disposition) {
    return FileHandle(CreateFileW(name.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                  nullptr, disposition,
                                  FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
  }

  std::wstring root_;
  const std::vector<std::filesystem::path> made_above_;  // the folder itself and those above it
  std::mutex mutex_;                                     // guards what follows
  std::vector<std::wstring> made_;                       // folders in it, from the top down
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
  std::vector<std::filesystem::path> made;
  *error = MakeFolders(path, &made);
  if (*error) return nullptr;
  std::filesystem::path absolute = std::filesystem::absolute(path, *error);
  if (*error) {
    RemoveIfEmpty(made);
    return nullptr;
  }
  return std::make_unique<WindowsOutputFolder>(
      LiteralPath(absolute.lexically_normal().make_preferred().wstring()), std::move(made));
}

}  // namespace scrivo
