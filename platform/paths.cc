#include "platform/paths.h"

#include <algorithm>

namespace scrivo {

std::string GetFileName(const std::string& path, PathStyle style) {
  return path.substr(path.rfind(Separator(style)) + 1);  // npos + 1 is 0
}

std::string GetFolder(const std::string& path, PathStyle style) {
  const std::size_t last = path.rfind(Separator(style));
  return last == std::string::npos ? "" : path.substr(0, last);
}

std::string JoinPath(const std::string& folder, const std::string& name, PathStyle style) {
  return folder + Separator(style) + name;
}

std::string UrlToPath(std::string& address, PathStyle style) {
  if (address.compare(0, 4, "file") == 0) {
    // "file:///" goes, except for the last "/" where it begins the path itself.
    const std::size_t scheme = style == PathStyle::kWindows ? 8 : 7;
    address.erase(0, scheme);
    std::replace(address.begin(), address.end(), '/', Separator(style));
  }
  return address;
}

}  // namespace scrivo
