#include "platform/user_dirs.h"

#include <algorithm>
#include <string_view>

namespace scrivo {
namespace {

// The text between the quotes that the shell would see, a backslash taking the meaning from the
// character behind it.
std::string Unquoted(std::string_view text) {
  std::string value;
  for (std::size_t i = 0; i < text.size() && text[i] != '"'; ++i) {
    if (text[i] == '\\' && i + 1 < text.size()) ++i;
    value += text[i];
  }
  return value;
}

}  // namespace

std::string DocumentsFolder(const std::string& user_dirs, const std::string& home) {
  constexpr std::string_view kKey = "XDG_DOCUMENTS_DIR=\"";
  constexpr std::string_view kHome = "$HOME";
  std::string folder = home + "/Documents";
  for (std::size_t start = 0; start < user_dirs.size();) {
    const std::size_t end = std::min(user_dirs.find('\n', start), user_dirs.size());
    std::string_view line = std::string_view(user_dirs).substr(start, end - start);
    start = end + 1;
    line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
    if (line.substr(0, kKey.size()) != kKey) continue;
    line.remove_prefix(kKey.size());
    if (line.substr(0, kHome.size()) == kHome) {
      folder = home + Unquoted(line.substr(kHome.size()));
    } else if (line.substr(0, 1) == "/") {
      folder = Unquoted(line);
    }
  }
  while (folder.size() > 1 && folder.back() == '/') folder.pop_back();
  return folder;
}

}  // namespace scrivo
