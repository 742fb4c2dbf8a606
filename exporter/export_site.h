#pragma once

// Turns a help file into a site that any browser shows, from a disk or from a web server.
//
//   index.html, keywords.html   the site, which without scripts is its contents; the index as a
//   list pages/                      the help file's own files, pages in UTF-8 data/ contents,
//   index and search, as scripts that the browser's side loads reader/                     the
//   browser's side

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "chm/chm_reader.h"
#include "exporter/site_output.h"

namespace scrivo {

struct ExportOptions {
  std::string file_name;      // the help file's own name, "guide.chm"
  bool keep_scripts = false;  // leaves the pages' own scripts in
  // Is told how far it is: files done and in all.
  std::function<void(std::size_t done, std::size_t total)> on_progress;
};

struct ExportResult {
  std::size_t pages = 0, contents_entries = 0, keywords = 0;
  // What could not be exported, a sentence each that names the file.
  std::vector<std::string> problems;
};

// Writes the site of `reader` into `folder`, and finishes the folder. What the help file holds is
// no error, except when it has no page at all; throws std::runtime_error for that, and as
// SiteOutput does.
ExportResult ExportSite(ChmReader& reader, const ExportOptions& options, SiteOutput& folder);

}  // namespace scrivo
