#pragma once

// Reads a page once and gathers what a help compiler wants of it: title, links, headings, keywords,
// words.

#include <string>
#include <string_view>
#include <vector>

#include "html/bad_tags.h"
#include "html/headings.h"
#include "html/links.h"
#include "search/word_collector.h"

namespace scrivo {

struct PageScan {
  int code_page = 0;  // of the page's bytes
  std::string title;  // UTF-8, blanks at the ends cut off, line ends and tabs made blanks
  std::string base;   // BASE href, as written; empty when there is none
  std::vector<PageLink> links;
  std::vector<std::string> keywords;      // UTF-8, of index objects in the page
  std::vector<std::string> associations;  // UTF-8, "ALink Name" of the same objects
  std::vector<BadTag> bad_tags;
  std::vector<PageHeading> headings;
};

// Scans `html`, which is not in UTF-16. `code_page` is the project's: that of a page which tells
// none, and the one that words are turned into. Words go to `words` unless it is null. Linear in
// the page for any input; nothing is an error.
PageScan ScanPage(std::string_view html, int code_page, WordCollector* words);

}  // namespace scrivo
