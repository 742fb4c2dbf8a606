#include "bytes/folder_items.h"

#include <dirent.h>
#include <sys/stat.h>

#include <cerrno>
#include <memory>

#include "bytes/posix/descriptor.h"

namespace scrivo {
namespace {

struct CloseFolder {
  void operator()(DIR* folder) const { closedir(folder); }
};

bool IsFolder(const std::filesystem::path& folder, const dirent& entry) {
  if (entry.d_type != DT_UNKNOWN && entry.d_type != DT_LNK) return entry.d_type == DT_DIR;
  struct stat status;
  return stat((folder / entry.d_name).c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

}  // namespace

std::vector<FolderItem> ItemsOfFolder(const std::filesystem::path& folder, std::error_code* error) {
  std::vector<FolderItem> items;
  error->clear();
  const std::unique_ptr<DIR, CloseFolder> opened(opendir(folder.empty() ? "." : folder.c_str()));
  if (opened == nullptr) {
    *error = LastError();
    return items;
  }
  while (true) {
    errno = 0;
    const dirent* const entry = readdir(opened.get());
    if (entry == nullptr) {
      if (errno != 0) *error = LastError();
      return items;
    }
    const std::string_view name = entry->d_name;
    if (name != "." && name != "..") items.push_back({name, IsFolder(folder, *entry)});
  }
}

}  // namespace scrivo
