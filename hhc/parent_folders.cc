#include "hhc/parent_folders.h"

namespace scrivo {

ParentFolders::ParentFolders(const std::filesystem::path& file) {
  namespace fs = std::filesystem;
  std::vector<fs::path> missing;
  std::error_code ignored;
  for (fs::path folder = file.parent_path(); !folder.empty() && !fs::exists(folder, ignored);
       folder = folder.parent_path()) {
    missing.push_back(folder);
    if (folder == folder.parent_path()) break;  // a drive that is not there
  }
  for (auto folder = missing.rbegin(); folder != missing.rend() && !error_; ++folder) {
    if (fs::create_directory(*folder, error_)) made_.push_back(*folder);
  }
}

ParentFolders::~ParentFolders() {
  std::error_code ignored;
  for (auto folder = made_.rbegin(); folder != made_.rend(); ++folder) {
    std::filesystem::remove(*folder, ignored);
  }
}

}  // namespace scrivo
