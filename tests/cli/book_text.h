#pragma once

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "chm/chm_reader.h"
#include "exporter/book_targets.h"
#include "exporter/help_book.h"

namespace scrivo {

// What a help file says, as lines that can be compared with those of another one.
struct BookText {
  std::vector<std::string> contents;  // "  label -> path" by level
  std::set<std::string> index;        // "keyword -> path" of each topic; sub-entries have a blank
  std::set<std::string> pages;        // paths
};

inline BookText ReadBook(ChmReader& reader) {
  const HelpBook book = OpenHelpBook(reader);
  Problems ignored;
  const std::vector<PlannedFile> files = PlanUnpacking(reader, NameRules::kPosix, false, &ignored);
  const BookTargets targets(files);
  BookText text;
  for (const SitemapItem& item : book.contents.items) {
    const BookTarget target = targets.Of(item, book.contents_name);
    text.contents.push_back(std::string(2 * static_cast<std::size_t>(item.level), ' ') + item.name +
                            " -> " + (target.kind == BookTarget::Kind::kFile ? target.path : ""));
  }
  for (const SitemapItem& item : book.index.items) {
    for (const SitemapTarget& target : item.targets) {
      const std::string level(static_cast<std::size_t>(item.level), ' ');
      text.index.insert(level + item.name + " -> " + targets.Of(target, book.index_name).path);
    }
  }
  for (const PlannedFile& file : files) {
    const bool is_derived_page = file.path.ends_with(".tmp.htm");
    if (IsPageName(file.path) && !is_derived_page) text.pages.insert(file.path);
  }
  return text;
}

}  // namespace scrivo
