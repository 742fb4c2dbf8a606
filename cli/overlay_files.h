#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "project/source_files.h"

namespace scrivo {

// Files that lie over those of one folder, in memory: the compiler finds both, and nothing is
// written. A file in memory hides one of its name, in any letter case, in the folder.
class OverlayFiles : public SourceFiles {
 public:
  // `folder` without a separator at its end; `files` are texts by name. `below` must outlive the
  // object.
  OverlayFiles(const SourceFiles& below, std::string folder,
               std::map<std::string, std::string> files);

  std::vector<SourceEntry> List(const std::string& folder) const override;
  std::unique_ptr<ByteSource> Open(const std::string& path, std::error_code* error) const override;

 private:
  const SourceFiles& below_;
  const std::string folder_;
  const std::map<std::string, std::string> files_;
};

}  // namespace scrivo
