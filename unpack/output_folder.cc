#include "unpack/output_folder.h"

#include <utility>

namespace scrivo {

namespace fs = std::filesystem;

std::error_code MakeFolders(const fs::path& path, std::vector<fs::path>* made) {
  std::vector<fs::path> missing;
  std::error_code ignored;
  for (fs::path at = path; !at.empty() && !fs::exists(at, ignored);) {
    missing.push_back(at);
    fs::path above = at.parent_path();
    if (above == at) break;
    at = std::move(above);
  }
  // An existing file in the folder's place fails here too.
  if (missing.empty()) missing.push_back(path);
  std::error_code error;
  for (auto folder = missing.rbegin(); folder != missing.rend() && !error; ++folder) {
    if (fs::create_directory(*folder, error)) made->push_back(*folder);
  }
  if (error) {
    RemoveIfEmpty(*made);
    made->clear();
  }
  return error;
}

void RemoveIfEmpty(const std::vector<fs::path>& folders) {
  std::error_code ignored;
  for (auto folder = folders.rbegin(); folder != folders.rend(); ++folder) {
    if (fs::is_directory(fs::symlink_status(*folder, ignored))) fs::remove(*folder, ignored);
  }
}

}  // namespace scrivo
