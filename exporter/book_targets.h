#pragma once

// What the addresses in a help file's contents and index lead to, among the files that it is
// unpacked into.

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "exporter/help_book.h"
#include "exporter/site_names.h"
#include "unpack/unpack_plan.h"

namespace scrivo {

struct BookTarget {
  enum class Kind { kNone, kFile, kOutside } kind = Kind::kNone;
  std::string path;         // of the file, or the whole address
  bool has_anchor = false;  // the address names a place within the file
};

class BookTargets {
 public:
  // `files` as they are unpacked.
  explicit BookTargets(const std::vector<PlannedFile>& files);

  // The first target of an item that leads to a file, else the first that leads outside; `from` is
  // the name of the contents or index in the help file.
  BookTarget Of(const SitemapItem& item, std::string_view from) const;
  BookTarget Of(const SitemapTarget& target, std::string_view from) const;

 private:
  BookTarget Resolve(std::string_view address, std::string_view from) const;

  SiteNames names_;
  std::map<std::string, std::string> paths_;  // by place in `names_`
};

}  // namespace scrivo
