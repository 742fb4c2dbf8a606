#include "bytes/held_file.h"

#include <sys/file.h>

#include <utility>

#include "bytes/posix/descriptor.h"

namespace scrivo {
namespace {

namespace fs = std::filesystem;

class PosixHeldFile : public HeldFile {
 public:
  PosixHeldFile(fs::path path, Descriptor file) : path_(std::move(path)), file_(std::move(file)) {}
  ~PosixHeldFile() override {
    if (IsNamed(file_.Get(), path_)) unlink(path_.c_str());
  }

  // Takes the lock without waiting. False when somebody has it, or had it and removed the file.
  bool Lock() const {
    return flock(file_.Get(), LOCK_EX | LOCK_NB) == 0 && IsNamed(file_.Get(), path_);
  }
  // Leaves the file to whoever has the lock.
  void Forget() { path_.clear(); }

 private:
  fs::path path_;
  const Descriptor file_;
};

std::unique_ptr<HeldFile> Hold(const fs::path& path, int flags, std::error_code* error) {
  Descriptor file(open(path.c_str(), flags | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0666));
  if (!file.IsOpen()) {
    *error = LastError();
    return nullptr;
  }
  auto held = std::make_unique<PosixHeldFile>(path, std::move(file));
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
