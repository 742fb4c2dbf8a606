#include "cli/overlay_files.h"

#include <algorithm>
#include <utility>

#include "text/ascii_text.h"

namespace scrivo {

OverlayFiles::OverlayFiles(const SourceFiles& below, std::string folder,
                           std::map<std::string, std::string> files)
    : below_(below), folder_(std::move(folder)), files_(std::move(files)) {}

std::vector<SourceEntry> OverlayFiles::List(const std::string& folder) const {
  std::vector<SourceEntry> entries = below_.List(folder);
  if (folder != folder_) return entries;
  std::erase_if(entries, [&](const SourceEntry& entry) {
    return std::any_of(files_.begin(), files_.end(), [&](const auto& file) {
      return EqualsIgnoringCase(entry.name, file.first);
    });
  });
  for (const auto& [name, text] : files_) entries.push_back({name, false, false});
  return entries;
}

std::unique_ptr<ByteSource> OverlayFiles::Open(const std::string& path,
                                               std::error_code* error) const {
  const std::size_t slash = path.rfind('/');
  if (slash != std::string::npos && path.compare(0, slash, folder_) == 0) {
    const auto file = files_.find(path.substr(slash + 1));
    if (file != files_.end()) {
      return std::make_unique<MemorySource>(
          std::vector<std::uint8_t>(file->second.begin(), file->second.end()));
    }
  }
  return below_.Open(path, error);
}

}  // namespace scrivo
