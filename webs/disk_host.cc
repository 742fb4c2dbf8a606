#include "webs/disk_host.h"

#include <algorithm>
#include <string_view>

namespace scrivo {
namespace {

char LowerAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool StartsWith(std::string_view text, std::string_view start, PathStyle style) {
  if (text.size() < start.size()) return false;
  if (style == PathStyle::kPosix) return text.starts_with(start);
  return std::equal(start.begin(), start.end(), text.begin(),
                    [](char a, char b) { return LowerAscii(a) == LowerAscii(b); });
}

}  // namespace

std::string DiskHost::RelativeLocation(SiteWeb& web, const std::string& address) {
  std::string base = web.Url();
  std::string place = address;
  if (!StartsWith(place, base, style_)) {
    // A path on disk, such as that of the help file, is a place in the web too.
    base = web.BaseFolder()->LocalPath();
    if (style_ == PathStyle::kWindows) {
      std::replace(base.begin(), base.end(), '\\', '/');
      std::replace(place.begin(), place.end(), '\\', '/');
    }
    if (!StartsWith(place, base, style_)) return address;
  }
  if (place.size() == base.size()) return "";
  return place[base.size()] == '/' ? place.substr(base.size() + 1) : address;
}

std::string DiskHost::Version() { return SCRIVO_VERSION; }

}  // namespace scrivo
