#include "unpack/output_folder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <utility>

namespace scrivo {
namespace {

std::error_code LastError() { return {errno, std::generic_category()}; }

WriteResult Failed() { return {WriteOutcome::kFailed, LastError()}; }

// An open file or folder.
class Descriptor {
 public:
  explicit Descriptor(int number = -1) : number_(number) {}
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  ~Descriptor() {
    if (number_ >= 0) close(number_);
  }

  bool valid() const { return number_ >= 0; }
  int get() const { return number_; }

 private:
  int number_;
};

bool WriteAll(int file, std::uint64_t offset, std::span<const std::uint8_t> content) {
  while (!content.empty()) {
    const ssize_t count = pwrite(file, content.data(), content.size(), static_cast<off_t>(offset));
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return false;
    content = content.subspan(static_cast<std::size_t>(count));
    offset += static_cast<std::uint64_t>(count);
  }
  return true;
}

class PosixOutputFolder : public OutputFolder {
 public:
  explicit PosixOutputFolder(Descriptor root) : root_(std::move(root)) {}

  NameRules Rules() const override { return NameRules::kPosix; }

  WriteResult Create(std::string_view path, std::span<const std::uint8_t> content) override {
    Place place;
    if (const WriteResult result = Walk(path, true, &place);
        result.outcome != WriteOutcome::kDone) {
      return result;
    }
    Descriptor file = OpenNew(place);
    if (!file.valid() && errno == EEXIST) {
      if (const WriteResult result = Unlink(place); result.outcome != WriteOutcome::kDone) {
        return result;
      }
      file = OpenNew(place);
    }
    if (!file.valid()) return Failed();
    if (WriteAll(file.get(), 0, content)) return {};
    const WriteResult result = Failed();
    unlinkat(place.folder(), place.name.c_str(), 0);
    return result;
  }

  WriteResult WritePart(std::string_view path, std::uint64_t offset,
                        std::span<const std::uint8_t> content) override {
    Place place;
    if (const WriteResult result = Walk(path, false, &place);
        result.outcome != WriteOutcome::kDone) {
      return result;
    }
    const Descriptor file(
        openat(place.folder(), place.name.c_str(), O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (!file.valid() || !WriteAll(file.get(), offset, content)) return Failed();
    return {};
  }

  void Remove(std::string_view path) override {
    Place place;
    if (Walk(path, false, &place).outcome == WriteOutcome::kDone) {
      unlinkat(place.folder(), place.name.c_str(), 0);
    }
  }

 private:
  // A name in an open folder.
  struct Place {
    int root = -1;
    Descriptor below;  // not valid when the folder is the root
    std::string name;
    int folder() const { return below.valid() ? below.get() : root; }
  };

  // Opens the folder that `path` lies in, part by part, never through a link.
  WriteResult Walk(std::string_view path, bool make, Place* place) const {
    place->root = root_.get();
    for (std::size_t slash; (slash = path.find('/')) != std::string_view::npos;) {
      const std::string part(path.substr(0, slash));
      path.remove_prefix(slash + 1);
      Descriptor next = OpenFolder(place->folder(), part);
      if (!next.valid() && errno == ENOENT && make) {
        if (mkdirat(place->folder(), part.c_str(), 0777) != 0 && errno != EEXIST) return Failed();
        next = OpenFolder(place->folder(), part);
      }
      if (!next.valid()) return NoFolder(place->folder(), part);
      place->below = std::move(next);
    }
    place->name = path;
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

  static Descriptor OpenNew(const Place& place) {
    return Descriptor(openat(place.folder(), place.name.c_str(),
                             O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666));
  }

  static WriteResult Unlink(const Place& place) {
    struct stat status;
    if (fstatat(place.folder(), place.name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) {
      return Failed();
    }
    if (S_ISLNK(status.st_mode)) return {WriteOutcome::kLinkInTheWay};
    if (!S_ISREG(status.st_mode)) return {WriteOutcome::kFolderInTheWay};
    if (unlinkat(place.folder(), place.name.c_str(), 0) != 0) return Failed();
    return {};
  }

  Descriptor root_;
};

}  // namespace

std::unique_ptr<OutputFolder> OpenOutputFolder(const std::filesystem::path& path,
                                               std::error_code* error) {
  std::filesystem::create_directories(path, *error);
  if (*error) return nullptr;
  Descriptor root(open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!root.valid()) {
    *error = LastError();
    return nullptr;
  }
  return std::make_unique<PosixOutputFolder>(std::move(root));
}

}  // namespace scrivo
