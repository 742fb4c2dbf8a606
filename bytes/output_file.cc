#include "bytes/output_file.h"

#include <algorithm>

namespace scrivo {

bool OutputFile::Fail(std::error_code reason) {
  if (!reason_) reason_ = reason;
  return false;
}

std::filesystem::path NameBesideTarget(const std::filesystem::path& target, int number,
                                       std::string ending) {
  // What the usual file systems take for a name: bytes on POSIX, UTF-16 units on Windows.
  constexpr std::size_t kLongestName = 255;
  if (number > 1) ending.append("-").append(std::to_string(number));
  std::filesystem::path::string_type name = target.filename().native();
  name.resize(std::min(name.size(), kLongestName - ending.size()));
  return target.parent_path() / std::filesystem::path(name).concat(ending);
}

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
