#include "bytes/output_file.h"

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

#include "bytes/win32/windows_api.h"

namespace scrivo {
namespace {

namespace fs = std::filesystem;

// Removes a growing file whose maker is gone. A maker shares its file with nobody, so a living one
// keeps this from succeeding.
void RemoveIfLeft(const fs::path& name) {
  const DWORD attributes = GetFileAttributesW(name.c_str());
  constexpr DWORD kNotOurs = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;
  if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & kNotOurs) == 0) {
    DeleteFileW(name.c_str());
  }
}

class WindowsOutputFile : public OutputFile {
 public:
  explicit WindowsOutputFile(fs::path target) : target_(std::move(target)) {}
  ~WindowsOutputFile() override {
    file_.Close();
    if (!name_.empty()) DeleteFileW(name_.c_str());
  }

  bool Open() {
    for (int number = 1; number <= kMostNamesBesideTarget; ++number) {
      RemoveIfLeft(NameBesideTarget(target_, number));
    }
    for (int number = 1; number <= kMostNamesBesideTarget; ++number) {
      fs::path name = NameBesideTarget(target_, number);
      file_ = FileHandle(CreateFileW(name.c_str(), GENERIC_READ | GENERIC_WRITE | DELETE, 0,
                                     nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
      if (file_.IsOpen()) {
        name_ = std::move(name);
        GoWithTheProcess(true);
        return true;
      }
      const DWORD error = GetLastError();
      // A name that a living writer gives up in a moment is refused as if by permissions.
      const bool taken = error == ERROR_FILE_EXISTS || error == ERROR_SHARING_VIOLATION ||
                         (error == ERROR_ACCESS_DENIED && number < kMostNamesBesideTarget &&
                          GetFileAttributesW(name.c_str()) != INVALID_FILE_ATTRIBUTES);
      if (!taken) return Fail({static_cast<int>(error), std::system_category()});
    }
    return Fail({ERROR_FILE_EXISTS, std::system_category()});
  }

  bool WriteAt(std::uint64_t offset, std::span<const std::uint8_t> bytes) override {
    if (Reason()) return false;
    return WriteAllAt(file_.Get(), offset, bytes) || Fail(LastError());
  }

  bool ReadAt(std::uint64_t offset, std::span<std::uint8_t> out) override {
    if (Reason()) return false;
    return ReadAllAt(file_.Get(), offset, out) || Fail(LastError());
  }

  bool Commit() override {
    if (Reason()) return false;
    if (!FlushFileBuffers(file_.Get())) return Fail(LastError());
    GoWithTheProcess(false);
    if (!TakeTargetsPlace()) return Fail(LastError());
    name_.clear();
    file_.Close();  // an open file could not be replaced by the next writer
    return true;
  }

 private:
  // While this is on, the system removes the file when the process ends, however it ends. Systems
  // that cannot do that leave the file to the next writer.
  void GoWithTheProcess(bool on) {
    FILE_DISPOSITION_INFO disposition;
    disposition.DeleteFile = on;
    SetFileInformationByHandle(file_.Get(), FileDispositionInfo, &disposition, sizeof disposition);
  }

  // Another writer that has just taken the target's place holds it for a moment; a reader that
  // holds it stays.
  bool TakeTargetsPlace() {
    constexpr int kTries = 50;
    constexpr DWORD kMilliseconds = 10;
    for (int tries = 1;; ++tries) {
      if (Rename()) return true;
      const DWORD error = GetLastError();
      const bool held = error == ERROR_SHARING_VIOLATION || error == ERROR_ACCESS_DENIED;
      if (!held || tries == kTries) {
        SetLastError(error);
        return false;
      }
      Sleep(kMilliseconds);
    }
  }

  // Renames through the open handle, so that nobody can meet the file without its owner.
  bool Rename() {
    const std::wstring name = fs::absolute(target_).native();
    const std::size_t bytes = name.size() * sizeof(wchar_t);
    std::vector<std::uint8_t> memory(sizeof(FILE_RENAME_INFO) + bytes);
    auto* rename = reinterpret_cast<FILE_RENAME_INFO*>(memory.data());
    rename->ReplaceIfExists = TRUE;
    rename->FileNameLength = static_cast<DWORD>(bytes);
    std::memcpy(rename->FileName, name.data(), bytes);
    return SetFileInformationByHandle(file_.Get(), FileRenameInfo, rename,
                                      static_cast<DWORD>(memory.size()));
  }

  fs::path target_;
  fs::path name_;  // while the file has one that is not the target's
  FileHandle file_;
};

bool IsLink(const fs::path& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

// The path of an open file with its links followed; empty when the system does not tell.
fs::path FinalPath(HANDLE file) {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD size =
        GetFinalPathNameByHandleW(file, path.data(), static_cast<DWORD>(path.size()), 0);
    if (size == 0) return {};
    const bool fits = size < path.size();
    path.resize(size);
    if (fits) return path;
  }
}

}  // namespace

std::unique_ptr<OutputFile> OutputFile::Create(const fs::path& target, std::error_code* error) {
  error->clear();
  fs::path file = target;
  {
    // Backup semantics lets folders be opened too, so that they are told apart.
    FileHandle earlier(CreateFileW(target.c_str(), FILE_READ_ATTRIBUTES,
                                   FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                   OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    if (earlier.IsOpen()) {
      BY_HANDLE_FILE_INFORMATION information{};
      if (GetFileType(earlier.Get()) != FILE_TYPE_DISK) {
        *error = std::make_error_code(std::errc::invalid_argument);
      } else if (!GetFileInformationByHandle(earlier.Get(), &information)) {
        *error = LastError();
      } else if ((information.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        *error = std::make_error_code(std::errc::is_a_directory);
      } else if ((information.dwFileAttributes & FILE_ATTRIBUTE_READONLY) != 0) {
        *error = std::make_error_code(std::errc::permission_denied);
      } else if (IsLink(target)) {
        if (const fs::path end = FinalPath(earlier.Get()); !end.empty()) file = end;
      }
      if (*error) return nullptr;
    }
  }
  auto output = std::make_unique<WindowsOutputFile>(std::move(file));
  if (output->Open()) return output;
  *error = output->Reason();
  return nullptr;
}

}  // namespace scrivo
