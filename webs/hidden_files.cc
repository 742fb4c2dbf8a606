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

}  // namespace scrivo
