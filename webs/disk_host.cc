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
  const std::string base = web.Url();
  if (!StartsWith(address, base, style_)) return address;
  if (address.size() == base.size()) return "";
  return address[base.size()] == '/' ? address.substr(base.size() + 1) : address;
}

std::string DiskHost::Version() { return SCRIVO_VERSION; }

}  // namespace scrivo
