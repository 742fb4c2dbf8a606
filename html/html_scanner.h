#pragma once

// Reads a page once and gathers what a help compiler wants of it: title, links, keywords, words.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "html/bad_tags.h"
#include "search/search_alphabet.h"

namespace scrivo {

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

// A heading of a page, H1 to H6.
struct PageHeading {
  int level = 1;
  std::string text;    // UTF-8, blanks at the ends cut off and others made one
  std::string anchor;  // UTF-8; a place in the page that is the heading's, or empty
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

}  // namespace scrivo
