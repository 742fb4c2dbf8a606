#pragma once

#include <filesystem>
#include <system_error>
#include <vector>

namespace scrivo {

// The folders that lead to a new file. Those that are missing are made, and removed again unless
// they are kept or have come to hold something.
class ParentFolders {
 public:
  // `file`: the path of the file. Folders are made at once.
  explicit ParentFolders(const std::filesystem::path& file);
  ~ParentFolders();
  ParentFolders(const ParentFolders&) = delete;
  ParentFolders& operator=(const ParentFolders&) = delete;

  // Why a folder could not be made; no error when all are there.
  const std::error_code& Error() const { return error_; }

  void Keep() { made_.clear(); }

 private:
  std::vector<std::filesystem::path> made_;  // from the outermost inwards
  std::error_code error_;
};

}  // namespace scrivo
