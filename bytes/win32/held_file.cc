#include "bytes/held_file.h"

#include <utility>

#include "bytes/win32/windows_api.h"

namespace scrivo {
namespace {

namespace fs = std::filesystem;

class WindowsHeldFile : public HeldFile {
 public:
  WindowsHeldFile(fs::path path, FileHandle file)
      : path_(std::move(path)), file_(std::move(file)) {}
  ~WindowsHeldFile() override {
    file_.Close();
    DeleteFileW(path_.c_str());
  }

 private:
  fs::path path_;
  FileHandle file_;
};

// The file is shared with nobody, so that it can be opened by one process at a time.
std::unique_ptr<HeldFile> Hold(const fs::path& path, DWORD disposition, std::error_code* error) {
  FileHandle file(CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, disposition,
                              FILE_ATTRIBUTE_NORMAL, nullptr));
  if (file.IsOpen()) return std::make_unique<WindowsHeldFile>(path, std::move(file));
  *error = LastError();
  return nullptr;
}

}  // namespace

std::unique_ptr<HeldFile> HeldFile::Make(const fs::path& path, std::error_code* error) {
  return Hold(path, CREATE_NEW, error);
}

std::unique_ptr<HeldFile> HeldFile::TakeOver(const fs::path& path) {
  std::error_code ignored;
  return Hold(path, OPEN_EXISTING, &ignored);
}

}  // namespace scrivo
