#include "platform/paths.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "system/services.h"
#include "system/system_services.h"
#include "text/code_page.h"

namespace scrivo {
namespace {

constexpr char kUtf8Mark[] = "\xEF\xBB\xBF";

// The name in the code page; nothing when that lacks a character of it.
std::optional<std::string> InCodePage(const std::string& name) {
  std::size_t lost = 0;
  std::string ansi = FromUtf8(name, TheServices().system->AnsiCodePage(), &lost);
  return lost == 0 ? std::optional<std::string>(std::move(ansi)) : std::nullopt;
}

}  // namespace

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

std::string NameToAnsi(const std::string& name, PathStyle style) {
  return style == PathStyle::kPosix ? name : InCodePage(name).value_or(name);
}

std::string ToRegistry(const std::string& text, PathStyle style) {
  return style == PathStyle::kPosix ? text : InCodePage(text).value_or(kUtf8Mark + text);
}

std::string FromRegistry(const std::string& bytes, PathStyle style) {
  if (style == PathStyle::kPosix) return bytes;
  return bytes.starts_with(kUtf8Mark) ? bytes.substr(sizeof kUtf8Mark - 1) : FromAnsi(bytes);
}

std::string NameText(const std::string& name) { return IsUtf8(name) ? name : FromAnsi(name); }

}  // namespace scrivo
