#include "exporter/view_folder.h"

#include <algorithm>
#include <chrono>
#include <fstream>
#include <string_view>
#include <vector>

#include "bytes/folder_items.h"

namespace scrivo {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kNameLength = 32;
constexpr char kNoted[] = "keywords.html";
constexpr std::size_t kMostViews = 12;
constexpr std::chrono::hours kLongest{24 * 30};

std::vector<std::string> Split(const std::string& text, char separator) {
  std::vector<std::string> parts;
  std::size_t start = 0;
  while (start <= text.size()) {
    const std::size_t end = std::min(text.find(separator, start), text.size());
    if (end > start) parts.push_back(text.substr(start, end - start));
    start = end + 1;
  }
  return parts;
}

// The value of the first line "key=value" with one of these keys; empty when there is none.
std::string ValueIn(const fs::path& file, std::initializer_list<std::string_view> keys) {
  std::ifstream stream(file, std::ios::binary);
  std::string line;
  while (std::getline(stream, line)) {
    for (const std::string_view key : keys) {
      if (line.size() > key.size() && line.starts_with(key) && line[key.size()] == '=') {
        return line.substr(key.size() + 1);
      }
    }
  }
  return "";
}

// A path in the encoding of the variables.
fs::path PathOf(const std::string& text) {
  return fs::path(std::u8string(text.begin(), text.end()));
}

// When a site was looked at last; of one that is half made, when its folder changed.
fs::file_time_type TimeOf(const fs::path& view) {
  std::error_code error;
  const fs::file_time_type noted = fs::last_write_time(view / kNoted, error);
  return error ? fs::last_write_time(view, error) : noted;
}

std::string Or(const std::string& value, const std::string& other) {
  return value.empty() ? other : value;
}

// A path of the system, below the root that is asked.
fs::path InRoot(const Surroundings& surroundings, const std::string& path) {
  return surroundings.root / fs::path(path).relative_path();
}

std::vector<fs::path> ApplicationFolders(const Surroundings& surroundings, const fs::path& home) {
  std::vector<fs::path> folders;
  const std::string own = surroundings.variable("XDG_DATA_HOME");
  folders.push_back((own.empty() ? home / ".local/share" : fs::path(own)) / "applications");
  const std::string shared =
      Or(surroundings.variable("XDG_DATA_DIRS"), "/usr/local/share:/usr/share");
  for (const std::string& folder : Split(shared, ':')) {
    folders.push_back(InRoot(surroundings, folder) / "applications");
  }
  folders.push_back(InRoot(surroundings, "/var/lib/snapd/desktop/applications"));
  folders.push_back(InRoot(surroundings, "/var/lib/flatpak/exports/share/applications"));
  folders.push_back(home / ".local/share/flatpak/exports/share/applications");
  return folders;
}

// The name of the browser's desktop file, as the user or else the system has chosen it.
std::string ChosenBrowser(const Surroundings& surroundings, const fs::path& home) {
  std::vector<fs::path> lists;
  const std::string own = surroundings.variable("XDG_CONFIG_HOME");
  lists.push_back((own.empty() ? home / ".config" : fs::path(own)) / "mimeapps.list");
  for (const std::string& folder :
       Split(Or(surroundings.variable("XDG_CONFIG_DIRS"), "/etc/xdg"), ':')) {
    lists.push_back(InRoot(surroundings, folder) / "mimeapps.list");
  }
  for (const fs::path& folder : ApplicationFolders(surroundings, home)) {
    for (const char* name : {"gnome-mimeapps.list", "mimeapps.list", "defaults.list"}) {
      lists.push_back(folder / name);
    }
  }
  for (const fs::path& list : lists) {
    const std::string chosen = ValueIn(list, {"text/html", "x-scheme-handler/https"});
    if (!chosen.empty()) return chosen.substr(0, chosen.find(';'));
  }
  return "";
}

}  // namespace

bool BrowserIsConfined(const Surroundings& surroundings) {
  const std::string home_name = surroundings.variable("HOME");
  if (home_name.empty()) return false;
  const fs::path home = home_name;
  const std::string browser = ChosenBrowser(surroundings, home);
  std::error_code error;
  if (browser.empty()) {
    const auto exists = [&](const char* path) {
      return fs::exists(InRoot(surroundings, path), error);
    };
    return (exists("/snap/bin/firefox") || exists("/snap/bin/chromium")) &&
           !exists("/usr/lib/firefox-esr") && !exists("/usr/lib/chromium");
  }
  for (const fs::path& folder : ApplicationFolders(surroundings, home)) {
    const fs::path file = folder / browser;
    if (!fs::exists(file, error)) continue;
    const std::string place = file.string();
    if (place.find("/snapd/") != std::string::npos) return true;
    if (place.find("/flatpak/") != std::string::npos) return true;
    const std::string program = ValueIn(file, {"Exec"});
    return program.find("/snap/") != std::string::npos ||
           program.find("flatpak run") != std::string::npos;
  }
  return false;
}

fs::path ViewFolder(const Surroundings& surroundings) {
  const std::string windows = surroundings.variable("LOCALAPPDATA");
  if (!windows.empty()) return PathOf(windows) / "Scrivo" / "View";
  const std::string home = surroundings.variable("HOME");
  if (home.empty()) return {};
  if (!BrowserIsConfined(surroundings)) {
    const std::string cache = surroundings.variable("XDG_CACHE_HOME");
    return (cache.empty() ? fs::path(home) / ".cache" : fs::path(cache)) / "scrivo" / "view";
  }
  const std::string own = surroundings.variable("XDG_CONFIG_HOME");
  const fs::path folders =
      (own.empty() ? fs::path(home) / ".config" : fs::path(own)) / "user-dirs.dirs";
  std::string downloads = ValueIn(folders, {"XDG_DOWNLOAD_DIR"});
  downloads.erase(std::remove(downloads.begin(), downloads.end(), '"'), downloads.end());
  if (downloads.starts_with("$HOME/")) downloads = home + downloads.substr(5);
  if (!downloads.starts_with('/')) downloads = home + "/Downloads";
  return fs::path(downloads) / "Scrivo";
}

std::string MakeViewName(const std::string& digest) { return digest.substr(0, kNameLength); }

void NoteView(const fs::path& view) {
  std::error_code error;
  fs::last_write_time(view / kNoted, fs::file_time_type::clock::now(), error);
}

void ClearOldViews(const fs::path& folder, const std::string& kept) {
  std::error_code error;
  std::vector<std::pair<fs::file_time_type, fs::path>> views;
  for (const FolderItem& item : ItemsOfFolder(folder, &error)) {
    // What is half made carries a number behind its name.
    const std::string name = item.name.string();
    const fs::path path = folder / item.name;
    const bool is_view = name.size() >= kNameLength && item.is_folder &&
                         !fs::is_symlink(fs::symlink_status(path, error)) &&
                         name.find_first_not_of("0123456789abcdef") >= kNameLength &&
                         (name.size() == kNameLength || name[kNameLength] == '.');
    if (is_view && name != kept) views.emplace_back(TimeOf(path), path);
  }
  std::sort(views.rbegin(), views.rend());
  const fs::file_time_type now = fs::file_time_type::clock::now();
  for (std::size_t i = 0; i < views.size(); ++i) {
    const bool is_half = views[i].second.filename().string().size() > kNameLength;
    const auto age = now - views[i].first;
    if (i + 1 < kMostViews && age < (is_half ? std::chrono::hours(24) : kLongest)) continue;
    RemoveFolder(views[i].second);
  }
}

}  // namespace scrivo
