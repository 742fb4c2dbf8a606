#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "project/source_files.h"

namespace scrivo {

// The files of a web whose pages are read without the navigation that FrontPage generates into
// them; nothing is written.
class BarlessFiles : public SourceFiles {
 public:
  // What was left out of the pages read so far.
  struct Sum {
    std::size_t pages = 0;         // that had bars
    std::uint64_t page_bytes = 0;  // of all pages read
    std::uint64_t bar_bytes = 0;
  };

  // `below` must outlive the object.
  explicit BarlessFiles(const SourceFiles& below) : below_(below) {}

  std::vector<SourceEntry> List(const std::string& folder) const override {
    return below_.List(folder);
  }
  std::unique_ptr<ByteSource> Open(const std::string& path, std::error_code* error) const override;

  Sum Total() const;

 private:
  struct Page {
    std::uint64_t bytes = 0;
    std::uint64_t bar_bytes = 0;
  };

  const SourceFiles& below_;
  mutable std::mutex mutex_;  // guards what follows
  mutable std::map<std::string, Page> pages_;
};

}  // namespace scrivo
