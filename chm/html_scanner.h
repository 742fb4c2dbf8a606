#pragma once

// Reads a page once and gathers what a help compiler wants of it: title, links, keywords, words.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "chm/auto_contents.h"
#include "chm/bad_tags.h"
#include "chm/search_alphabet.h"

namespace scrivo::chm {

enum class LinkKind {
  kAnchor,  // A and AREA: the links that readers click
  kPage,    // frames, refreshes: pages that belong to the page
  kImage,
  kPart,  // style sheets, scripts, sounds, objects
};

struct PageLink {
  LinkKind kind = LinkKind::kAnchor;
  std::string address;  // in the page's code page, character references replaced
  std::size_t offset = 0;
};

struct PageScan {
  int code_page = 0;  // of the page's bytes
  std::string title;  // UTF-8, blanks at the ends cut off, line ends and tabs made blanks
  bool has_title = false;
  std::string base;  // BASE href, as written; empty when there is none
  std::vector<PageLink> links;
  std::vector<std::string> keywords;      // UTF-8, of index objects in the page
  std::vector<std::string> associations;  // UTF-8, "ALink Name" of the same objects
  std::vector<BadTag> bad_tags;
  std::vector<PageHeading> headings;
};

// Scans `html`. `code_page` is the project's: that of a page which names none and is no UTF-8, and
// the one that words are turned into. Words go to `words` unless it is null. Linear in the page for
// any input; nothing is an error.
PageScan ScanHtml(std::string_view html, int code_page, WordCollector* words);

}  // namespace scrivo::chm
