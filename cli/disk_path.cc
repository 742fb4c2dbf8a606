#include "cli/disk_path.h"

#include <algorithm>

#include "platform/globals.h"
#include "project/source_files.h"

namespace scrivo {

std::string PortablePathOf(const std::string& path) {
  if (Globals().path_style == PathStyle::kPosix) return path;
  std::string portable = path;
  std::replace(portable.begin(), portable.end(), '\\', '/');
  return portable;
}

std::filesystem::path DiskPathOf(const std::string& path) {
  return SystemPath(PortablePathOf(path));
}

}  // namespace scrivo
