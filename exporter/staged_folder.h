#pragma once

// A folder that gets its files all at once: until then they lie out of sight, in a folder of their
// own within it.

#include <filesystem>
#include <vector>

namespace scrivo {

class StagedFolder {
 public:
  // Makes the folder when it is not there. Throws std::runtime_error, with a sentence that names
  // the folder, when it cannot be made or is not empty; what a run that was ended before has left
  // out of sight does not count and is removed.
  explicit StagedFolder(const std::filesystem::path& path);
  // Without Show, nothing is left of what was put there, nor of the folders that were made.
  ~StagedFolder();
  StagedFolder(const StagedFolder&) = delete;
  StagedFolder& operator=(const StagedFolder&) = delete;

  // The folder to put the files into.
  const std::filesystem::path& Stage() const { return stage_; }

  // Moves all files into the folder itself; what is called `last` comes last. Throws
  // std::runtime_error when that fails, and then none of them is there. Nothing below Stage() may
  // be open.
  void Show(const std::filesystem::path& last);

 private:
  void ThrowUnlessEmpty() const;

  std::filesystem::path path_, stage_;
  std::vector<std::filesystem::path> made_;  // the folders that were not there, from the top down
  bool is_shown_ = false;
};

}  // namespace scrivo
