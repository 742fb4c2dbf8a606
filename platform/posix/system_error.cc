#include "platform/posix/system_error.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstring>

#include "platform/paths.h"

namespace scrivo {
namespace {

bool ParentExists(const std::string& path) {
  const std::size_t last = path.find_last_not_of('/');
  const std::string trimmed = path.substr(0, last + 1);
  if (trimmed.find('/') == std::string::npos) return true;  // in the current folder
  const std::string parent = GetFolder(trimmed, PathStyle::kPosix);
  struct stat status = {};
  return parent.empty() || (stat(parent.c_str(), &status) == 0 && S_ISDIR(status.st_mode));
}

struct Meaning {
  RunTimeError number;
  const char* text;
};

Meaning MeaningOf(int code, const std::string& path) {
  switch (code) {
    case ENOENT:
      if (ParentExists(path)) return {kFileNotFound, "File not found"};
      return {kPathNotFound, "Path not found"};
    case ENOTDIR:
      return {kPathNotFound, "Path not found"};
    case EACCES:
    case EPERM:
    case EROFS:
    case EBUSY:
    case ETXTBSY:
      return {kPermissionDenied, "Permission denied"};
    case EEXIST:
      return {kFileAlreadyExists, "File already exists"};
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
      return {kDiskFull, "Disk full"};
    case ENOMEM:
      return {kOutOfMemory, "Out of memory"};
    case EISDIR:
    case EINVAL:
    case ELOOP:
    case EMFILE:
    case ENAMETOOLONG:
    case ENFILE:
      return {kPathFileAccessError, "Path/File access error"};
    default:
      return {kDeviceIoError, "Device I/O error"};
  }
}

}  // namespace

Error SystemError(int code, const std::string& path) {
  const Meaning meaning = MeaningOf(code, path);
  std::string text = std::string(meaning.text) + ": " + path;
  if (meaning.number == kPathFileAccessError || meaning.number == kDeviceIoError) {
    text += std::string(" (") + std::strerror(code) + ")";
  }
  return Error(meaning.number, "", text);
}

}  // namespace scrivo
