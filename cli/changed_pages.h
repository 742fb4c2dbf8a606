#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "project/source_files.h"

namespace scrivo {

// The files of a web whose pages are read with a change made to them; nothing is written.
class ChangedPages : public SourceFiles {
 public:
  // Gives the changed page, or nothing when a page stays as it is. Called from several threads.
  using Change = std::function<std::optional<std::string>(std::string_view page)>;

  // What became of the pages read so far.
  struct Sum {
    std::size_t changed = 0;
    std::string
        first;  // path of the first changed page in the order of paths; "" when there is none
    // Of all pages read, changed or not.
    std::uint64_t bytes_before = 0, bytes_after = 0;
  };

  // `below` must outlive the object.
  ChangedPages(const SourceFiles& below, Change change)
      : below_(below), change_(std::move(change)) {}

  std::vector<SourceEntry> List(const std::string& folder) const override {
    return below_.List(folder);
  }
  std::unique_ptr<ByteSource> Open(const std::string& path, std::error_code* error) const override;

  Sum Total() const;

 private:
  struct Page {
    bool changed = false;
    std::uint64_t bytes_before = 0, bytes_after = 0;
  };

  const SourceFiles& below_;
  const Change change_;
  mutable std::mutex mutex_;  // guards what follows
  mutable std::map<std::string, Page> pages_;
};

}  // namespace scrivo
