#include "unpack/posix/open_folders.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace scrivo {
namespace {

Descriptor OpenFolderAt(int parent, const std::string& name) {
  return Descriptor(openat(parent, name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

// Why a part could not be opened as a folder; errno is still set.
WriteResult NoFolder(int parent, const std::string& name) {
  const WriteResult failure = FailedWrite();
  struct stat status;
  if (fstatat(parent, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) return failure;
  if (S_ISLNK(status.st_mode)) return {WriteOutcome::kLinkInTheWay};
  if (!S_ISDIR(status.st_mode)) return {WriteOutcome::kFileInTheWay};
  return failure;
}

// The end of the part of `path` that begins at `begin`.
std::size_t PartEnd(std::string_view path, std::size_t begin) {
  return std::min(path.find('/', begin), path.size());
}

}  // namespace

WriteResult FailedWrite() {
  const bool whole_disk = errno == ENOSPC || errno == EDQUOT || errno == EROFS || errno == EIO;
  return {whole_disk ? WriteOutcome::kDiskFailed : WriteOutcome::kFailed, LastError()};
}

OpenFolders::OpenFolders(Descriptor root)
    : root_(std::make_shared<const Descriptor>(std::move(root))) {}

WriteResult OpenFolders::Open(std::string_view path, bool make, Folder* folder) {
  const std::lock_guard lock(mutex_);
  // The longest beginning of the path that is open.
  std::size_t open = path.size();
  while (open != 0 && (*folder = Find(path.substr(0, open))) == nullptr) {
    const std::size_t slash = path.rfind('/', open - 1);
    open = slash == std::string_view::npos ? 0 : slash;
  }
  if (open == 0) *folder = root_;
  while (open < path.size()) {
    const std::size_t begin = open == 0 ? 0 : open + 1;
    open = PartEnd(path, begin);
    const std::string name(path.substr(begin, open - begin));
    Descriptor next;
    const WriteResult result = OpenPart((*folder)->Get(), path.substr(0, open), name, make, &next);
    if (result.outcome != WriteOutcome::kDone) return result;
    *folder = Keep(path.substr(0, open), std::move(next));
  }
  return {};
}

std::vector<std::string> OpenFolders::Made() const {
  const std::lock_guard lock(mutex_);
  return made_;
}

OpenFolders::Folder OpenFolders::Find(std::string_view path) {
  for (Kept& kept : kept_) {
    if (kept.folder == nullptr || kept.path != path) continue;
    kept.last_use = ++uses_;
    return kept.folder;
  }
  return nullptr;
}

// Opens `name`, the last part of `path`, in its parent.
WriteResult OpenFolders::OpenPart(int parent, std::string_view path, const std::string& name,
                                  bool make, Descriptor* folder) {
  *folder = OpenFolderAt(parent, name);
  if (!folder->IsOpen() && errno == ENOENT && make) {
    // Noted first, as memory may run out.
    made_.emplace_back(path);
    if (mkdirat(parent, name.c_str(), 0777) != 0) {
      const WriteResult failure = FailedWrite();
      made_.pop_back();
      if (failure.error != std::errc::file_exists) return failure;
    }
    *folder = OpenFolderAt(parent, name);
  }
  return folder->IsOpen() ? WriteResult{} : NoFolder(parent, name);
}

// Keeps an open folder in place of the one whose last use is longest ago.
OpenFolders::Folder OpenFolders::Keep(std::string_view path, Descriptor folder) {
  auto shared = std::make_shared<const Descriptor>(std::move(folder));
  Kept& oldest = *std::min_element(kept_.begin(), kept_.end(), [](const Kept& a, const Kept& b) {
    return a.last_use < b.last_use;
  });
  oldest.folder = nullptr;
  oldest.path = path;
  oldest.folder = shared;
  oldest.last_use = ++uses_;
  return shared;
}

}  // namespace scrivo
