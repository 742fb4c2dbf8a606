#include "unpack/output_folder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "bytes/posix/descriptor.h"

namespace scrivo {
namespace {

WriteResult Failed() {
  const bool whole_disk = errno == ENOSPC || errno == EDQUOT || errno == EROFS || errno == EIO;
  return {whole_disk ? WriteOutcome::kDiskFailed : WriteOutcome::kFailed, LastError()};
}

class PosixOutputFolder : public OutputFolder {
 public:
  PosixOutputFolder(Descriptor root, std::vector<std::filesystem::path> made)
      : root_(std::move(root)), made_above_(std::move(made)) {}

  NameRules Rules() const override { return NameRules::kPosix; }

  WriteResult Create(std::string_view path, std::span<const std::uint8_t> content) override {
    Place place;
    Descriptor file;
    if (const WriteResult result = StartAt(path, &place, &file);
        result.outcome != WriteOutcome::kDone) {
      return result;
    }
    if (!WriteAllAt(file.Get(), 0, content)) return GiveUp(place, Failed());
    return Finish(place);
  }

  WriteResult Start(std::string_view path) override {
    Place place;
    Descriptor file;
    return StartAt(path, &place, &file);
  }

  WriteResult WritePart(std::string_view path, std::uint64_t offset,
                        std::span<const std::uint8_t> content) override {
    Place place;
    if (const WriteResult result = Walk(path, false, &place);
        result.outcome != WriteOutcome::kDone) {
      return result;
    }
    const Descriptor file(openat(place.folder(), place.growing.c_str(),
                                 O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (!file.IsOpen() || !WriteAllAt(file.Get(), offset, content)) return Failed();
    return {};
  }

  WriteResult Finish(std::string_view path) override {
    Place place;
    const WriteResult result = Walk(path, false, &place);
    return result.outcome == WriteOutcome::kDone ? Finish(place) : result;
  }

  void GiveUp(std::string_view path) override {
    Place place;
    if (Walk(path, false, &place).outcome == WriteOutcome::kDone) GiveUp(place, {});
  }

  void RemoveEmptyFolders() override {
    for (auto path = made_.rbegin(); path != made_.rend(); ++path) {
      Place place;
      if (Walk(*path, false, &place).outcome == WriteOutcome::kDone) {
        unlinkat(place.folder(), place.name.c_str(), AT_REMOVEDIR);
      }
    }
    made_.clear();
    RemoveIfEmpty(made_above_);
  }

 private:
  // A name in an open folder.
  struct Place {
    int root = -1;
    Descriptor below;  // not valid when the folder is the root
    std::string name;
    std::string growing;  // the name until the file is whole; made early, as memory may run out
    int folder() const { return below.IsOpen() ? below.Get() : root; }
  };

  // Opens the folder that `path` lies in, part by part, never through a link.
  WriteResult Walk(std::string_view path, bool make, Place* place) {
    const std::string_view whole = path;
    place->root = root_.Get();
    for (std::size_t slash; (slash = path.find('/')) != std::string_view::npos;) {
      const std::string part(path.substr(0, slash));
      path.remove_prefix(slash + 1);
      Descriptor next = OpenFolder(place->folder(), part);
      if (!next.IsOpen() && errno == ENOENT && make) {
        const std::lock_guard lock(mutex_);
        // Noted first, as memory may run out.
        made_.emplace_back(whole.substr(0, whole.size() - path.size() - 1));
        if (mkdirat(place->folder(), part.c_str(), 0777) != 0) {
          const WriteResult failure = Failed();
          made_.pop_back();
          if (failure.error != std::errc::file_exists) return failure;
        }
        next = OpenFolder(place->folder(), part);
      }
      if (!next.IsOpen()) return NoFolder(place->folder(), part);
      place->below = std::move(next);
    }
    place->name = path;
    place->growing = place->name + std::string(kGrowingEnding);
    return {};
  }

  static Descriptor OpenFolder(int parent, const std::string& name) {
    return Descriptor(
        openat(parent, name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
  }

  // Why a part could not be opened as a folder; errno is still set.
  static WriteResult NoFolder(int parent, const std::string& name) {
    const WriteResult failure = Failed();
    struct stat status;
    if (fstatat(parent, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) return failure;
    if (S_ISLNK(status.st_mode)) return {WriteOutcome::kLinkInTheWay};
    if (!S_ISDIR(status.st_mode)) return {WriteOutcome::kFileInTheWay};
    return failure;
  }

  WriteResult StartAt(std::string_view path, Place* place, Descriptor* file) {
    if (const WriteResult result = Walk(path, true, place); result.outcome != WriteOutcome::kDone) {
      return result;
    }
    if (const WriteResult result = MayTakeName(*place); result.outcome != WriteOutcome::kDone) {
      return result;
    }
    *file = OpenNew(*place);
    if (!file->IsOpen() && errno == EEXIST) {
      // Left by a process that was ended.
      if (unlinkat(place->folder(), place->growing.c_str(), 0) != 0) return Failed();
      *file = OpenNew(*place);
    }
    return file->IsOpen() ? WriteResult{} : Failed();
  }

  static Descriptor OpenNew(const Place& place) {
    return Descriptor(openat(place.folder(), place.growing.c_str(),
                             O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666));
  }

  // Only a plain file is replaced.
  static WriteResult MayTakeName(const Place& place) {
    struct stat status;
    if (fstatat(place.folder(), place.name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) {
      return errno == ENOENT ? WriteResult{} : Failed();
    }
    if (S_ISLNK(status.st_mode)) return {WriteOutcome::kLinkInTheWay};
    if (!S_ISREG(status.st_mode)) return {WriteOutcome::kFolderInTheWay};
    return {};
  }

  static WriteResult Finish(const Place& place) {
    if (renameat(place.folder(), place.growing.c_str(), place.folder(), place.name.c_str()) == 0) {
      return {};
    }
    return GiveUp(place, Failed());
  }

  static WriteResult GiveUp(const Place& place, WriteResult reason) {
    unlinkat(place.folder(), place.growing.c_str(), 0);
    return reason;
  }

  Descriptor root_;
  const std::vector<std::filesystem::path> made_above_;  // the folder itself and those above it
  std::mutex mutex_;                                     // guards what follows
  std::vector<std::string> made_;                        // folders in it, from the top down
};

}  // namespace

std::unique_ptr<OutputFolder> OpenOutputFolder(const std::filesystem::path& path,
                                               std::error_code* error) {
  std::vector<std::filesystem::path> made;
  *error = MakeFolders(path, &made);
  if (*error) return nullptr;
  Descriptor root(open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!root.IsOpen()) {
    *error = LastError();
    RemoveIfEmpty(made);
    return nullptr;
  }
  return std::make_unique<PosixOutputFolder>(std::move(root), std::move(made));
}

}  // namespace scrivo
