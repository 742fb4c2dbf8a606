#pragma once

// The files that go into a help file, and the order in which they are compiled: pages and sitemaps
// as they are found, then what the pages show, then style sheets and scripts.

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "hhc/page_loader.h"
#include "project/project_tree.h"

namespace scrivo {

class SourceList {
 public:
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  struct File {
    FoundFile found;
    FileKind kind = FileKind::kOther;
    int queue = 0;
  };

  // Adds a file that the project names, or one that a page links to, and gives its number. A file
  // that is there already, under its path in the help file in any letter case, keeps its place.
  std::size_t AddNamed(const FoundFile& found) { return Add(found, kPages); }
  std::size_t AddLinked(const FoundFile& found, LinkKind kind);

  // The number of the file with this path in the help file, or kNone.
  std::size_t Find(std::string_view archive_path) const;

  // Good until the next file is added.
  const File& At(std::size_t number) const { return files_[number]; }
  std::size_t Size() const { return files_.size(); }
  bool Empty() const { return files_.empty(); }

  // The number of the next file to load. kNone when all have been given out, or when the next is no
  // page and pages that may name more pages are still being loaded.
  std::size_t TakeNext();

  // To be called for each file of TakeNext, before the links in it are added.
  void Loaded(std::size_t number);

 private:
  enum Queue { kPages, kImages, kParts, kQueues };

  std::size_t Add(const FoundFile& found, Queue queue);

  std::vector<File> files_;
  std::unordered_map<std::string, std::size_t> by_path_;  // lower-case archive path
  std::array<std::vector<std::size_t>, kQueues> queues_;
  std::array<std::size_t, kQueues> next_{};
  std::size_t pages_loading_ = 0;
};

}  // namespace scrivo
