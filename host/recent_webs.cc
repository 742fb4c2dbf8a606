#include "host/recent_webs.h"

#include "errors/frame.h"
#include "platform/settings.h"
#include "text/ascii_text.h"

namespace scrivo::host {
namespace {

constexpr char kApplication[] = "ScrivoHost", kSection[] = "Recent webs";

std::string KeyOf(std::size_t index) { return "Web" + std::to_string(index + 1); }

void Write(const std::vector<std::string>& paths) {
  IgnoringErrors([&] {
    for (std::size_t i = 0; i < RecentWebs::kMost; ++i) {
      SaveSetting(kApplication, kSection, KeyOf(i), i < paths.size() ? paths[i] : "");
    }
  });
}

std::vector<std::string> Without(std::vector<std::string> paths, const std::string& path) {
  std::erase_if(paths, [&](const std::string& other) { return EqualsIgnoringCase(other, path); });
  return paths;
}

}  // namespace

std::vector<std::string> RecentWebs::Read() {
  std::vector<std::string> paths;
  IgnoringErrors([&] {
    for (std::size_t i = 0; i < kMost; ++i) {
      std::string path = GetSetting(kApplication, kSection, KeyOf(i));
      if (!path.empty()) paths.push_back(std::move(path));
    }
  });
  return paths;
}

void RecentWebs::Remember(const std::string& path) {
  std::vector<std::string> paths = Without(Read(), path);
  paths.insert(paths.begin(), path);
  if (paths.size() > kMost) paths.resize(kMost);
  Write(paths);
}

void RecentWebs::Forget(const std::string& path) { Write(Without(Read(), path)); }

std::string ShortenedPath(const std::string& path, std::size_t length) {
  if (path.size() <= length) return path;
  const std::size_t head = path.find_first_of("\\/", 1) + 1;
  std::size_t tail = path.size() > length - head - 3 ? path.size() - (length - head - 3) : head;
  const std::size_t name = path.find_first_of("\\/", tail);
  if (name != std::string::npos) tail = name;
  return path.substr(0, head) + "..." + path.substr(tail);
}

}  // namespace scrivo::host
