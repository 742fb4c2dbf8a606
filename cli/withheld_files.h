#pragma once

#include <memory>
#include <string>
#include <vector>

#include "project/source_files.h"

namespace scrivo {

// The files of a web's folder for the compiler, without those that are not for readers: it takes
// none of them in, whatever page links to it.
class WithheldFiles : public SourceFiles {
 public:
  // `folder`: the web's, without a separator at its end. `below` must outlive the object.
  WithheldFiles(const SourceFiles& below, std::string folder);

  std::vector<SourceEntry> List(const std::string& folder) const override;
  std::unique_ptr<ByteSource> Open(const std::string& path, std::error_code* error) const override;

 private:
  const SourceFiles& below_;
  const std::string folder_;
};

}  // namespace scrivo
