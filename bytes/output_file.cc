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

}  // namespace scrivo
