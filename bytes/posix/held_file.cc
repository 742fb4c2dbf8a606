#include "bytes/held_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace scrivo {
namespace {

namespace fs = std::filesystem;

class PosixHeldFile : public HeldFile {
 public:
  PosixHeldFile(fs::path path, int file) : path_(std::move(path)), file_(file) {}
  ~PosixHeldFile() override {
    if (IsNamed()) unlink(path_.c_str());
    close(file_);
  }

  // Takes the lock without waiting. False when somebody has it, or had it and removed the file.
  bool Lock() const { return flock(file_, LOCK_EX | LOCK_NB) == 0 && IsNamed(); }
  // Leaves the file to whoever has the lock.
  void Forget() { path_.clear(); }

 private:
  bool IsNamed() const {
    struct stat by_name, by_file;
    return lstat(path_.c_str(), &by_name) == 0 && fstat(file_, &by_file) == 0 &&
           by_name.st_dev == by_file.st_dev && by_name.st_ino == by_file.st_ino;
  }

  fs::path path_;
  const int file_;
};

std::unique_ptr<HeldFile> Hold(const fs::path& path, int flags, std::error_code* error) {
  const int file = open(path.c_str(), flags | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0666);
  if (file < 0) {
    *error = {errno, std::generic_category()};
    return nullptr;
  }
  auto held = std::make_unique<PosixHeldFile>(path, file);
  if (held->Lock()) return held;
  held->Forget();
  *error = std::make_error_code(std::errc::file_exists);
  return nullptr;
}

}  // namespace

std::unique_ptr<HeldFile> HeldFile::Make(const fs::path& path, std::error_code* error) {
  return Hold(path, O_RDWR | O_CREAT | O_EXCL, error);
}

std::unique_ptr<HeldFile> HeldFile::TakeOver(const fs::path& path) {
  std::error_code ignored;
  return Hold(path, O_RDONLY, &ignored);
}

}  // namespace scrivo
