#pragma once

// Where the sites lie that are made only to be looked at.

#include <filesystem>
#include <functional>
#include <string>

namespace scrivo {

// What is asked of the surroundings; tests answer it themselves.
struct Surroundings {
  // The value of an environment variable, UTF-8 where paths are text; empty when it is not set.
  std::function<std::string(const std::string& name)> variable;
  std::filesystem::path root = "/";  // of the system's own files
};

// Whether the user's browser is kept from hidden folders, as those in a snap or flatpak are.
bool BrowserIsConfined(const Surroundings& surroundings);

// The folder that such sites lie in, one folder each: in the user's cache, or where the browser can
// read, which is the folder of downloads. Empty when the surroundings tell no place.
std::filesystem::path ViewFolder(const Surroundings& surroundings);

// Notes that a site there is looked at now: ClearOldViews goes by that. The time stands at a file
// of the site, since not every system lets programs set the time of a folder.
void NoteView(const std::filesystem::path& view);

// Removes from such a folder what was not looked at for long, and the oldest when there are many;
// only folders that MakeViewName named. The one named `kept` stays.
void ClearOldViews(const std::filesystem::path& folder, const std::string& kept);

// The name of a site by the digest of what it is made from.
std::string MakeViewName(const std::string& digest);

}  // namespace scrivo
