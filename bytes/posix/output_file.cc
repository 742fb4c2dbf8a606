#include "bytes/output_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <utility>

#include "bytes/posix/descriptor.h"

namespace scrivo {
namespace {

namespace fs = std::filesystem;

constexpr mode_t kUsualMode = 0666;  // less what the user's mask takes away

// Removes a growing file whose maker is gone. Who holds the lock of the file at a name is the only
// one to take the name away, so that no other process's file can be met here.
void RemoveIfLeft(const fs::path& name) {
  const Descriptor left(open(name.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
  struct stat status;
  if (!left.IsOpen() || fstat(left.Get(), &status) != 0 || !S_ISREG(status.st_mode)) return;
  if (flock(left.Get(), LOCK_EX | LOCK_NB) == 0 && IsNamed(left.Get(), name)) unlink(name.c_str());
}

// Runs `make` on one name after the other until one is not taken; that name, or none with errno
// set. `make` gives false with errno set when it fails.
template <typename Make>
fs::path TakeName(const fs::path& target, Make&& make) {
  for (int number = 1; number <= kMostNamesBesideTarget; ++number) {
    fs::path name = NameBesideTarget(target, number);
    if (make(name)) return name;
    if (errno != EEXIST) return {};
  }
  return {};
}

class PosixOutputFile : public OutputFile {
 public:
  explicit PosixOutputFile(fs::path target) : target_(std::move(target)) {}
  ~PosixOutputFile() override {
    if (!name_.empty()) unlink(name_.c_str());
  }

  bool Open() {
    for (int number = 1; number <= kMostNamesBesideTarget; ++number) {
      RemoveIfLeft(NameBesideTarget(target_, number));
    }
    return OpenWithoutName() || OpenWithName() || Fail(LastError());
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
    struct stat earlier;
    const bool replaces = stat(target_.c_str(), &earlier) == 0;
    if (replaces) TakeOver(earlier);
    // A system that fails may not show the new name before the bytes.
    if (fsync(file_.Get()) != 0 && errno != EINVAL) return Fail(LastError());
    if (name_.empty()) {
      // Linking to a name that is taken fails, so a free target is taken directly.
      if (!replaces && Link(target_)) return true;
      if (!replaces && errno != EEXIST) return Fail(LastError());
      name_ = TakeName(target_, [&](const fs::path& name) { return Link(name); });
      if (name_.empty()) return Fail(LastError());
    }
    if (rename(name_.c_str(), target_.c_str()) != 0) return Fail(LastError());
    name_.clear();
    return true;
  }

 private:
  bool OpenWithoutName() {
#ifdef O_TMPFILE
    // A file without a name gets one through this folder.
    if (access("/proc/self/fd", X_OK) != 0) return false;
    const fs::path folder = target_.has_parent_path() ? target_.parent_path() : ".";
    file_ = Descriptor(open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, kUsualMode));
    if (!file_.IsOpen()) return false;
    flock(file_.Get(), LOCK_EX);  // where locks are not to be had, nobody removes the file either
    return true;
#else
    return false;
#endif
  }

  bool OpenWithName() {
    name_ = TakeName(target_, [&](const fs::path& name) {
      file_ = Descriptor(
          open(name.c_str(), O_CREAT | O_EXCL | O_RDWR | O_CLOEXEC | O_NOFOLLOW, kUsualMode));
      if (!file_.IsOpen()) return false;
      flock(file_.Get(), LOCK_EX);
      // Another writer may have met the file before it was locked.
      if (IsNamed(file_.Get(), name)) return true;
      errno = EEXIST;
      return false;
    });
    return !name_.empty();
  }

  bool Link(const fs::path& name) {
    const std::string self = "/proc/self/fd/" + std::to_string(file_.Get());
    return linkat(AT_FDCWD, self.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0;
  }

  // Only root may give files away; others keep what they own.
  void TakeOver(const struct stat& earlier) {
    struct stat now;
    if (fstat(file_.Get(), &now) != 0) return;
    if (now.st_uid != earlier.st_uid || now.st_gid != earlier.st_gid) {
      if (fchown(file_.Get(), earlier.st_uid, earlier.st_gid) != 0) {
        [[maybe_unused]] const int group_alone =
            fchown(file_.Get(), static_cast<uid_t>(-1), earlier.st_gid);
      }
    }
    fchmod(file_.Get(), earlier.st_mode & 07777);
  }

  fs::path target_;
  fs::path name_;  // while the file has one that is not the target's
  Descriptor file_;
};

// The file that the system means by `path`, also when there is none yet at a link's end.
fs::path FollowLinks(fs::path path, std::error_code* error) {
  constexpr int kMostLinks = 40;
  for (int links = 0; fs::is_symlink(fs::symlink_status(path, *error)); ++links) {
    if (links == kMostLinks) {
      *error = std::make_error_code(std::errc::too_many_symbolic_link_levels);
      return path;
    }
    const fs::path next = fs::read_symlink(path, *error);
    if (*error) return path;
    path = path.parent_path() / next;
  }
  error->clear();
  return path;
}

}  // namespace

std::unique_ptr<OutputFile> OutputFile::Create(const fs::path& target, std::error_code* error) {
  fs::path file = FollowLinks(target, error);
  if (*error) return nullptr;
  struct stat status;
  if (stat(file.c_str(), &status) == 0) {
    if (S_ISDIR(status.st_mode)) {
      *error = std::make_error_code(std::errc::is_a_directory);
    } else if (!S_ISREG(status.st_mode)) {
      *error = std::make_error_code(std::errc::invalid_argument);
    } else if (access(file.c_str(), W_OK) != 0) {
      *error = LastError();
    }
    if (*error) return nullptr;
  }
  auto output = std::make_unique<PosixOutputFile>(std::move(file));
  if (output->Open()) return output;
  *error = output->Reason();
  return nullptr;
}

}  // namespace scrivo
