#pragma once

#include <string>
#include <utility>
#include <vector>

#include "system/files.h"
#include "webs/disk_web.h"
#include "webs/page_head.h"
#include "webs/web_report.h"
#include "webs/web_text.h"

namespace scrivo {

// What a page tells the index and the contents.
struct PageFacts {
  std::string title;     // "" when it has none
  std::string keywords;  // index entries separated by "," or ";"; "" when there are none
  std::vector<std::pair<std::string, std::string>> metas;  // other named meta tags, small names
};

// Reads pages of one web.
class PageReader {
 public:
  PageReader(Files& files, const DiskWebOptions& options, WebText* web_text, WebReport& report);

  // Reads the page at `path`, and the host's notes about it at `notes_path` for what the page
  // itself does not say; "" when there are no notes. A page that cannot be read is reported, and
  // only its notes count.
  PageFacts Read(const std::string& path, const std::string& notes_path);

 private:
  std::string ReadPage(const std::string& path);
  std::string IndexEntries(const std::string& keywords, const std::string& title,
                           const std::vector<std::string>& headings) const;

  Files& files_;
  const std::vector<IndexSource> index_;
  WebText& web_text_;
  WebReport& report_;
  Headings headings_ = Headings::kNo;
  bool wants_keywords_ = false;
  const bool without_bars_;
};

}  // namespace scrivo
