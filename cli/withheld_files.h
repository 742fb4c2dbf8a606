#pragma once

#include <memory>
#include <string>
#include <vector>

#include "project/source_files.h"

namespace scrivo {

// The files of a web's folder without those that are not for readers: nothing is found of them,
// whatever page links to it.
class WithheldFiles : public SourceFiles {
 public:
  // `folder`: the web's, without a separator at its end. `with_hidden`: they are wanted, and
  // nothing is withheld. `below` must outlive the object.
  WithheldFiles(const SourceFiles& below, std::string folder, bool with_hidden);

  std::vector<SourceEntry> List(const std::string& folder) const override;
  std::unique_ptr<ByteSource> Open(const std::string& path, std::error_code* error) const override;

 private:
  const SourceFiles& below_;
  const std::string folder_;
  const bool with_hidden_;
};

}  // namespace scrivo
