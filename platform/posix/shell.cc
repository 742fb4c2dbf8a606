
#include "platform/shell.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <sstream>
#include <vector>

#include "platform/command_line.h"
#include "platform/posix/services.h"
#include "platform/posix/spawn.h"
#include "platform/user_dirs.h"
#include "system/error.h"

namespace scrivo {
namespace {

constexpr std::int32_t kSuccess = 33;
constexpr std::int32_t kFileNotFoundResult = 2;
constexpr std::int32_t kPathNotFoundResult = 3;
constexpr std::int32_t kAccessDeniedResult = 5;
constexpr std::int32_t kOutOfMemoryResult = 8;
constexpr std::int32_t kInvalidProgramResult = 11;
constexpr std::int32_t kNoAssociationResult = 31;
constexpr std::int32_t kInvalidArgument = static_cast<std::int32_t>(0x80070057);

// Whether a target names something of the network or another service rather than a file.
bool IsAddress(const std::string& target) {
  const std::size_t colon = target.find(':');
  return colon != std::string::npos && colon > 1 && target.find('/') > colon;
}

// A file that may be run and begins as programs and scripts do. (On foreign file systems every
// file may be run.)
bool IsProgram(const std::string& path) {
  if (access(path.c_str(), X_OK) != 0) return false;
  PosixFiles files;
  if (!files.FileExists(path)) return false;
  char start[4] = {};
  const std::size_t got = files.OpenForReading(path)->Read(start, sizeof start);
  const std::string begin(start, got);
  return begin.rfind("#!", 0) == 0 || begin ==
                                          "\x7f"
                                          "ELF";
}

std::int32_t ResultOfStarting(const SpawnResult& result) {
  if (result.in_folder) return kPathNotFoundResult;
  switch (result.error) {
    case 0:
      return kSuccess;
    case ENOENT:
      return kFileNotFoundResult;
    case EACCES:
      return kAccessDeniedResult;
    case ENOEXEC:
      return kInvalidProgramResult;
    default:
      return kOutOfMemoryResult;
  }
}

std::int32_t StartProgram(const ShellRequest& request) {
  SpawnRequest program;
  program.arguments = SplitCommandLine("\"" + request.file + "\" " + request.parameters);
  program.folder = request.folder;
  program.detached = true;
  return ResultOfStarting(Spawn(program));
}

std::string UserDirs() {
  PosixFiles files;
  try {
    return ReadWholeFile(files, ConfigurationFolder() + "/user-dirs.dirs");
  } catch (const Error&) {
    return "";  // most users have none
  }
}

// The home folder of a user in the system's list; "/" for one who is not in it. getpwuid would load
// libraries of the system into programs that are linked statically, which may not fit them.
std::string HomeInUserList(uid_t user) {
  PosixFiles files;
  std::istringstream list;
  try {
    list.str(ReadWholeFile(files, "/etc/passwd"));
  } catch (const Error&) {
    return "/";
  }
  for (std::string line; std::getline(list, line);) {
    // name:password:user:group:description:home:shell
    std::istringstream text(line);
    std::vector<std::string> fields;
    for (std::string field; std::getline(text, field, ':');) fields.push_back(field);
    if (fields.size() > 5 && fields[2] == std::to_string(user) && !fields[5].empty())
      return fields[5];
  }
  return "/";
}

}  // namespace

std::string HomeFolder() {
  const char* const home = std::getenv("HOME");
  if (home && home[0] != '\0') return home;
  return HomeInUserList(getuid());
}

std::string ConfigurationFolder() {
  const char* const folder = std::getenv("XDG_CONFIG_HOME");
  // A relative path in this variable is to be ignored (XDG Base Directory).
  return folder && folder[0] == '/' ? folder : HomeFolder() + "/.config";
}

std::int32_t PosixShell::Execute(const ShellRequest& request) {
  if (request.verb != "open" && request.verb != "explore") return kNoAssociationResult;
  PosixFiles files;
  const bool exists = files.FileExists(request.file) || files.FolderExists(request.file);
  if (!exists && !IsAddress(request.file)) return kFileNotFoundResult;
  if (exists && request.verb == "open" && IsProgram(request.file)) return StartProgram(request);
  return OpenWithDesktop(request.file) == 0 ? kSuccess : kNoAssociationResult;
}

std::int32_t PosixShell::ExecuteExtended(const ExtendedShellRequest& request) {
  return Execute(request.request);
}

std::int32_t PosixShell::SpecialFolderLocation(WindowHandle, std::int32_t folder_id,
                                               std::uintptr_t* item_list) {
  if (folder_id != kDocumentsFolder) return kInvalidArgument;
  *item_list =
      reinterpret_cast<std::uintptr_t>(new std::string(DocumentsFolder(UserDirs(), HomeFolder())));
  return 0;
}

void PosixShell::FreeItemList(std::uintptr_t item_list) {
  delete reinterpret_cast<std::string*>(item_list);
}

}  // namespace scrivo
