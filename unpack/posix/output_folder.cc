#include "unpack/output_folder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

#include "bytes/posix/descriptor.h"
#include "unpack/posix/open_folders.h"

namespace scrivo {
namespace {

// What a path leads to: a name in an open folder.
struct Place {
  OpenFolders::Folder below;
  std::string name;
  std::string growing;  // the name until the file is whole; made early, as memory may run out
  int folder() const { return below->Get(); }
};

Descriptor OpenNew(const Place& place) {
  return Descriptor(openat(place.folder(), place.growing.c_str(),
                           O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666));
}

WriteResult StartAt(const Place& place, Descriptor* file) {
  *file = OpenNew(place);
  if (!file->IsOpen() && errno == EEXIST) {
    // Left by a process that was ended.
    if (unlinkat(place.folder(), place.growing.c_str(), 0) != 0) return FailedWrite();
    *file = OpenNew(place);
  }
  return file->IsOpen() ? WriteResult{} : FailedWrite();
}

// Only a plain file is replaced.
WriteResult MayTakeName(const Place& place) {
  struct stat status;
  if (fstatat(place.folder(), place.name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) {
    return errno == ENOENT ? WriteResult{} : FailedWrite();
  }
  if (S_ISLNK(status.st_mode)) return {WriteOutcome::kLinkInTheWay};
  if (!S_ISREG(status.st_mode)) return {WriteOutcome::kFolderInTheWay};
  return {};
}

WriteResult GiveUpAt(const Place& place, WriteResult reason) {
  unlinkat(place.folder(), place.growing.c_str(), 0);
  return reason;
}

// Mostly the name is free. That is tried rather than looked up, since it costs nothing more.
WriteResult FinishAt(const Place& place) {
  const int folder = place.folder();
  const char* growing = place.growing.c_str();
  const char* name = place.name.c_str();
  if (renameat2(folder, growing, folder, name, RENAME_NOREPLACE) == 0) return {};
  // Some file systems and kernels cannot tell whether a name is free.
  if (errno != EEXIST && errno != EINVAL && errno != ENOSYS) {
    return GiveUpAt(place, FailedWrite());
  }
  if (const WriteResult result = MayTakeName(place); result.outcome != WriteOutcome::kDone) {
    return GiveUpAt(place, result);
  }
  if (renameat(folder, growing, folder, name) == 0) return {};
  return GiveUpAt(place, FailedWrite());
}

class PosixOutputFolder : public OutputFolder {
 public:
  PosixOutputFolder(Descriptor root, std::vector<std::filesystem::path> made)
      : folders_(std::move(root)), made_above_(std::move(made)) {}

  NameRules Rules() const override { return NameRules::kPosix; }

  WriteResult Create(std::string_view path, std::span<const std::uint8_t> content) override {
    Place place;
    if (const WriteResult result = Find(path, true, &place);
        result.outcome != WriteOutcome::kDone) {
      return result;
    }
    Descriptor file;
    if (const WriteResult result = StartAt(place, &file); result.outcome != WriteOutcome::kDone) {
      return result;
    }
    // Closing tells of writes that were lost on the way to a server.
    if (!WriteAllAt(file.Get(), 0, content) || !file.Close()) {
      return GiveUpAt(place, FailedWrite());
    }
    return FinishAt(place);
  }

  WriteResult Start(std::string_view path) override {
    Place place;
    if (const WriteResult result = Find(path, true, &place);
        result.outcome != WriteOutcome::kDone) {
      return result;
    }
    // Seen before all the parts are made for nothing.
    if (const WriteResult result = MayTakeName(place); result.outcome != WriteOutcome::kDone) {
      return result;
    }
    Descriptor file;
    return StartAt(place, &file);
  }

  WriteResult WritePart(std::string_view path, std::uint64_t offset,
                        std::span<const std::uint8_t> content) override {
    Place place;
    if (const WriteResult result = Find(path, false, &place);
        result.outcome != WriteOutcome::kDone) {
      return result;
    }
    Descriptor file(openat(place.folder(), place.growing.c_str(),
                           O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    const bool written = file.IsOpen() && WriteAllAt(file.Get(), offset, content) && file.Close();
    return written ? WriteResult{} : FailedWrite();
  }

  WriteResult Finish(std::string_view path) override {
    Place place;
    const WriteResult result = Find(path, false, &place);
    return result.outcome == WriteOutcome::kDone ? FinishAt(place) : result;
  }

  void GiveUp(std::string_view path) override {
    Place place;
    if (Find(path, false, &place).outcome == WriteOutcome::kDone) GiveUpAt(place, {});
  }

  void RemoveEmptyFolders() override {
    const std::vector<std::string> made = folders_.Made();
    for (auto path = made.rbegin(); path != made.rend(); ++path) {
      Place place;
      if (Find(*path, false, &place).outcome == WriteOutcome::kDone) {
        unlinkat(place.folder(), place.name.c_str(), AT_REMOVEDIR);
      }
    }
    RemoveIfEmpty(made_above_);
  }

 private:
  WriteResult Find(std::string_view path, bool make, Place* place) {
    const std::size_t slash = path.rfind('/');
    const bool in_root = slash == std::string_view::npos;
    place->name = in_root ? path : path.substr(slash + 1);
    place->growing = place->name + std::string(kGrowingEnding);
    return folders_.Open(in_root ? std::string_view() : path.substr(0, slash), make, &place->below);
  }

  OpenFolders folders_;
  const std::vector<std::filesystem::path> made_above_;  // the folder itself and those above it
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
