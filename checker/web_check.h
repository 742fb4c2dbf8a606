#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "checker/finding.h"
#include "project/source_files.h"
#include "webs/disk_web.h"
#include "webs/web_report.h"

namespace scrivo {

struct CheckOptions {
  int help_code_page = 1252;  // of contents and index in the help file
  int page_code_page = 1252;  // of pages that do not tell theirs
  std::function<void(std::size_t done, std::size_t all)> on_page;  // may throw
};

struct WebFindings {
  std::size_t pages = 0;
  std::size_t contents_entries = 0;
  std::vector<Finding> findings;  // by kind, then in the order of the web's files
};

// Finds what is wrong with a web. `folder` is the web's, as `files` takes it,
// which withholds what is to stay out of the help file; `problems` gets what
// the web reports, and may hold what it has reported already.
WebFindings CheckWeb(DiskWeb& web, const SourceFiles& files, const std::string& folder,
                     const WebProblemList& problems, const CheckOptions& options);

}  // namespace scrivo
