#include "cli/withheld_files.h"

#include <utility>

#include "webs/hidden_files.h"

namespace scrivo {

WithheldFiles::WithheldFiles(const SourceFiles& below, std::string folder, bool with_hidden)
    : below_(below), folder_(std::move(folder)), with_hidden_(with_hidden) {}

std::vector<SourceEntry> WithheldFiles::List(const std::string& folder) const {
  std::vector<SourceEntry> entries = below_.List(folder);
  if (with_hidden_) return entries;
  if (folder != folder_ && !folder.starts_with(folder_ + "/")) return entries;
  for (SourceEntry& entry : entries) entry.is_withheld = IsHiddenName(entry.name);
  return entries;
}

std::unique_ptr<ByteSource> WithheldFiles::Open(const std::string& path,
                                                std::error_code* error) const {
  return below_.Open(path, error);
}

}  // namespace scrivo
