#pragma once

#include <string>
#include <vector>

namespace scrivo::host {

// The names of a page's meta tags, in small letters and in their order, each once. Empty for a
// file that cannot be read. `path` is that of the file on disk.
std::vector<std::string> MetaTagNames(const std::string& path);

}  // namespace scrivo::host
