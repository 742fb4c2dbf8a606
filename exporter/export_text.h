#pragma once

// Turns a help file into Markdown, for reading, comparing, and for other programs.

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "chm/chm_reader.h"
#include "exporter/site_output.h"

namespace scrivo {

struct TextResult {
  std::size_t pages = 0;
  // What could not be read, a sentence each that names the file.
  std::vector<std::string> problems;
};

// All topics of `reader` in the order of its contents, each under a heading of its level, those
// outside the contents behind them; given to `write` piece by piece. `file_name` is the help file's
// own. Links lead to anchors in the text: "#folder/page.htm" for a page, "#folder/page.htm:part"
// for a place in it, as in the address of a site.
TextResult WriteText(ChmReader& reader, const std::string& file_name,
                     const std::function<void(const std::string&)>& write);

// The same as one file a topic, with the pictures and what pages link to beside them, and the
// contents as index.md.
// Finishes the folder; throws as SiteOutput does.
TextResult WriteTextFiles(ChmReader& reader, const std::string& file_name, SiteOutput& folder);

}  // namespace scrivo
