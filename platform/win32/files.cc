#include <algorithm>
#include <string_view>
#include <utility>

#include "bytes/output_file.h"
#include "platform/win32/interruption.h"
#include "platform/win32/services.h"
#include "platform/win32/system_error.h"
#include "platform/win32/wide.h"
#include "platform/win32/windows.h"

namespace scrivo {
namespace {

FileHandle Open(const std::string& path, DWORD access, DWORD sharing, DWORD disposition) {
  FileHandle file(CreateFileW(Wide(path).c_str(), access, sharing, nullptr, disposition,
                              FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file.IsOpen()) RaiseSystemError(GetLastError(), path);
  return file;
}

void WriteAll(HANDLE file, const std::string& path, const std::string& bytes) {
  std::size_t done = 0;
  while (done < bytes.size()) {
    const auto part = static_cast<DWORD>(std::min(bytes.size() - done, kLargestTransfer));
    DWORD written = 0;
    if (!WriteFile(file, bytes.data() + done, part, &written, nullptr)) {
      RaiseSystemError(GetLastError(), path);
    }
    done += written;
  }
}

class Win32Reader : public FileReader {
 public:
  explicit Win32Reader(const std::string& path)
      : path_(path),
        file_(Open(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                   OPEN_EXISTING)) {}

  std::size_t Read(char* buffer, std::size_t size) override {
    ThrowIfInterrupted();
    DWORD got = 0;
    if (!ReadFile(file_.Get(), buffer, static_cast<DWORD>(std::min(size, kLargestTransfer)), &got,
                  nullptr)) {
      RaiseSystemError(GetLastError(), path_);
    }
    return got;
  }

 private:
  std::string path_;
  FileHandle file_;
};

bool IsFolder(DWORD attributes) { return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0; }

// Closes a search on destruction.
class Search {
 public:
  Search(const std::string& pattern, WIN32_FIND_DATAW* found)
      : handle_(FindFirstFileW(Wide(pattern).c_str(), found)) {}
  ~Search() {
    if (IsValid()) FindClose(handle_);
  }
  Search(const Search&) = delete;
  Search& operator=(const Search&) = delete;

  bool IsValid() const { return handle_ != INVALID_HANDLE_VALUE; }
  bool Next(WIN32_FIND_DATAW* found) { return FindNextFileW(handle_, found) != FALSE; }

 private:
  HANDLE handle_;
};

}  // namespace

bool Win32Files::FileExists(const std::string& path) {
  const DWORD attributes = GetFileAttributesW(Wide(path).c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && !IsFolder(attributes);
}

bool Win32Files::FolderExists(const std::string& path) {
  const DWORD attributes = GetFileAttributesW(Wide(path).c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && IsFolder(attributes);
}

std::uint64_t Win32Files::Size(const std::string& path) {
  WIN32_FILE_ATTRIBUTE_DATA data;
  if (!GetFileAttributesExW(Wide(path).c_str(), GetFileExInfoStandard, &data)) {
    RaiseSystemError(GetLastError(), path);
  }
  if (IsFolder(data.dwFileAttributes)) RaiseSystemError(ERROR_FILE_NOT_FOUND, path);
  return (static_cast<std::uint64_t>(data.nFileSizeHigh) << 32) | data.nFileSizeLow;
}

std::unique_ptr<FileReader> Win32Files::OpenForReading(const std::string& path) {
  ThrowIfInterrupted();
  return std::make_unique<Win32Reader>(path);
}

void Win32Files::Write(const std::string& path, const std::string& bytes) {
  ThrowIfInterrupted();
  // Opening and cutting, rather than CREATE_ALWAYS, which refuses a file that is hidden.
  const FileHandle file = Open(path, GENERIC_WRITE, FILE_SHARE_READ, OPEN_ALWAYS);
  if (!SetEndOfFile(file.Get())) RaiseSystemError(GetLastError(), path);
  WriteAll(file.Get(), path, bytes);
}

void Win32Files::WriteWhole(const std::string& path, const std::string& bytes) {
  ThrowIfInterrupted();
  std::error_code error;
  const auto file = OutputFile::Create(Wide(path), &error);
  const auto* data = reinterpret_cast<const std::uint8_t*>(bytes.data());
  if (file && file->WriteAt(0, {data, bytes.size()}) && file->Commit()) return;
  if (file) error = file->Reason();
  // OutputFile refuses what no system call has failed for by a portable condition.
  const bool has_code = error.category() == std::system_category();
  RaiseSystemError(has_code ? static_cast<DWORD>(error.value()) : ERROR_ACCESS_DENIED, path);
}

void Win32Files::Append(const std::string& path, const std::string& bytes) {
  const FileHandle file = Open(path, FILE_APPEND_DATA,
                               FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, OPEN_ALWAYS);
  WriteAll(file.Get(), path, bytes);
}

void Win32Files::Remove(const std::string& path, bool forced) {
  const DWORD attributes = GetFileAttributesW(Wide(path).c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) RaiseSystemError(GetLastError(), path);
  if (IsFolder(attributes)) RaiseSystemError(ERROR_FILE_NOT_FOUND, path);
  const bool unprotect = forced && (attributes & FILE_ATTRIBUTE_READONLY);
  if (unprotect) SetFileAttributesW(Wide(path).c_str(), attributes & ~FILE_ATTRIBUTE_READONLY);
  if (DeleteFileW(Wide(path).c_str())) return;
  const DWORD code = GetLastError();
  if (unprotect) SetFileAttributesW(Wide(path).c_str(), attributes);
  RaiseSystemError(code, path);
}

void Win32Files::MakeFolder(const std::string& path) {
  ThrowIfInterrupted();
  if (!CreateDirectoryW(Wide(path).c_str(), nullptr)) RaiseSystemError(GetLastError(), path);
}

std::vector<FolderEntry> Win32Files::List(const std::string& folder) {
  ThrowIfInterrupted();
  std::string pattern = folder;
  if (!pattern.empty() && pattern.back() != '\\' && pattern.back() != '/') pattern += '\\';
  pattern += '*';

  std::vector<FolderEntry> entries;
  WIN32_FIND_DATAW found;
  Search search(pattern, &found);
  if (!search.IsValid()) {
    const DWORD code = GetLastError();
    if (!FolderExists(folder)) RaiseSystemError(ERROR_PATH_NOT_FOUND, folder);
    if (code == ERROR_FILE_NOT_FOUND) return entries;  // the root of an empty drive
    RaiseSystemError(code, folder);
  }
  do {
    std::string name = Narrow(found.cFileName);
    if (name != "." && name != "..")
      entries.push_back({std::move(name), IsFolder(found.dwFileAttributes)});
  } while (search.Next(&found));
  if (GetLastError() != ERROR_NO_MORE_FILES) RaiseSystemError(GetLastError(), folder);
  return entries;
}

std::string Win32Files::MakeUniqueFile(const std::string& folder, const std::string& prefix) {
  if (Interrupted()) return "";
  wchar_t path[MAX_PATH + 1] = L"";
  return GetTempFileNameW(Wide(folder).c_str(), Wide(prefix).c_str(), 0, path) != 0 ? Narrow(path)
                                                                                    : "";
}

std::string Win32Files::ShortForm(const std::string& path) {
  constexpr DWORD kLimit = 260;
  wchar_t form[kLimit + 1] = L"";
  const DWORD length = GetShortPathNameW(Wide(path).c_str(), form, kLimit);
  return length <= kLimit ? Narrow(std::wstring_view(form, length)) : "";
}

std::string Win32Files::RealPath(const std::string& path) {
  const FileHandle opened(CreateFileW(Wide(path).c_str(), 0,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
  if (!opened.IsOpen()) return path;
  constexpr DWORD kLimit = 32768;
  std::wstring wide(kLimit, L'\0');
  const DWORD length = GetFinalPathNameByHandleW(opened.Get(), wide.data(), kLimit, 0);
  if (length == 0 || length >= kLimit) return path;
  wide.resize(length);
  const std::string real = Narrow(wide);
  constexpr std::string_view kShare = "\\\\?\\UNC\\", kDrive = "\\\\?\\";
  if (real.starts_with(kShare)) return "\\\\" + real.substr(kShare.size());
  return real.starts_with(kDrive) ? real.substr(kDrive.size()) : real;
}

}  // namespace scrivo
