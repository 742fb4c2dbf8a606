#pragma once

// A file by which processes tell one another that somebody is at work.

#include <filesystem>
#include <memory>
#include <system_error>

namespace scrivo {

// A file that is held by a lock as long as the object lives, and removed with it. One that nobody
// holds was left by a process that was ended.
class HeldFile {
 public:
  // Makes the file. Null when there is one already or none can be made, with the reason in
  // `*error`.
  static std::unique_ptr<HeldFile> Make(const std::filesystem::path& path, std::error_code* error);

  // Takes a file over that was left. Null when there is none or somebody holds it.
  static std::unique_ptr<HeldFile> TakeOver(const std::filesystem::path& path);

  virtual ~HeldFile() = default;
};

}  // namespace scrivo
