#include "platform/win32/system_error.h"

#include "system/error.h"

namespace scrivo {
namespace {

struct Meaning {
  DWORD code;
  std::int32_t number;
  const char* text;
};

constexpr Meaning kMeanings[] = {
    {ERROR_FILE_NOT_FOUND, kFileNotFound, "File not found"},
    {ERROR_PATH_NOT_FOUND, kPathNotFound, "Path not found"},
    {ERROR_INVALID_DRIVE, kPathNotFound, "Path not found"},
    {ERROR_BAD_NETPATH, kPathNotFound, "Path not found"},
    {ERROR_BAD_NET_NAME, kPathNotFound, "Path not found"},
    {ERROR_DIRECTORY, kPathNotFound, "Path not found"},
    {ERROR_ACCESS_DENIED, kPermissionDenied, "Permission denied"},
    {ERROR_WRITE_PROTECT, kPermissionDenied, "Permission denied"},
    {ERROR_SHARING_VIOLATION, kPermissionDenied, "Permission denied"},
    {ERROR_LOCK_VIOLATION, kPermissionDenied, "Permission denied"},
    {ERROR_FILE_EXISTS, kFileAlreadyExists, "File already exists"},
    {ERROR_ALREADY_EXISTS, kFileAlreadyExists, "File already exists"},
    {ERROR_DISK_FULL, kDiskFull, "Disk full"},
    {ERROR_HANDLE_DISK_FULL, kDiskFull, "Disk full"},
    {ERROR_INVALID_NAME, kPathFileAccessError, "Path/File access error"},
    {ERROR_BAD_PATHNAME, kPathFileAccessError, "Path/File access error"},
    {ERROR_FILENAME_EXCED_RANGE, kPathFileAccessError, "Path/File access error"},
    {ERROR_NOT_ENOUGH_MEMORY, kOutOfMemory, "Out of memory"},
    {ERROR_OUTOFMEMORY, kOutOfMemory, "Out of memory"},
};

}  // namespace

void RaiseSystemError(DWORD code, const std::string& subject) {
  for (const Meaning& meaning : kMeanings) {
    if (meaning.code == code) {
      throw Error(meaning.number, "Windows", std::string(meaning.text) + ": " + subject);
    }
  }
  throw Error(kDeviceIoError, "Windows",
              "Device I/O error " + std::to_string(code) + ": " + subject);
}

}  // namespace scrivo
