#include "webs/hidden_files.h"

#include <algorithm>

#include "text/ascii_text.h"

namespace scrivo {

bool IsHiddenName(std::string_view name) {
  return name.starts_with('.') || StartsWithIgnoringCase(name, "_vti_") ||
         EqualsIgnoringCase(name, "_private");
}

bool IsHiddenLocation(std::string_view location) {
  while (!location.empty()) {
    const std::size_t end = std::min(location.find('/'), location.size());
    if (IsHiddenName(location.substr(0, end))) return true;
    location.remove_prefix(std::min(end + 1, location.size()));
  }
  return false;
}

bool IsUnfinishedName(std::string_view name) {
  const std::size_t last = name.find_last_not_of("0123456789");
  if (last == std::string_view::npos) return false;
  if (last + 1 < name.size() && name[last] == '-') name = name.substr(0, last);
  return name.ends_with(".scrivo-new") || name.ends_with(".scrivo-work");
}

}  // namespace scrivo
