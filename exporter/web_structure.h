#pragma once

// The host's own files of a FrontPage web that is made of a help file.

#include <cstddef>
#include <map>
#include <string>

#include "exporter/book_targets.h"
#include "exporter/help_book.h"

namespace scrivo {

// A help file's contents as a navigation structure.
struct WebStructure {
  std::string text;  // of _vti_pvt/structure.cnf
  std::size_t entries = 0;
  // Entries that lose something: their place within a page; their target, as it is a page outside,
  // which the structure holds and a compiled help file does not, or does not exist; the contents of
  // other help files that were to be included.
  std::size_t anchors = 0, outside = 0, missing = 0, merged = 0;
  std::map<std::string, std::string> labels;  // of the pages by path: the first of each
  std::string home;  // the label of the web's home page; empty when the contents do not show it
};
WebStructure MakeWebStructure(const HelpBook& book, const BookTargets& targets);

// The text of _vti_pvt/service.cnf: charset, language and title.
std::string WebServiceText(const HelpBook& book);

// The text of the host's notes about a page, _vti_cnf/PAGE: its title, in UTF-8.
std::string PageNotesText(const std::string& title);

}  // namespace scrivo
