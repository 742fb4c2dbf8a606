#pragma once

// The topics of a help file by what links of its objects name: learnt page by page, then from the
// index.

#include <string>
#include <string_view>
#include <unordered_map>

#include "exporter/help_book.h"
#include "exporter/help_objects.h"
#include "exporter/page_rewriter.h"
#include "exporter/site_names.h"

namespace scrivo {

class BookTopics {
 public:
  // Notes the title of the page at `place`, and what the page itself has for the index and for
  // links by association.
  void AddPage(const RewrittenPage& page, const std::string& title, const std::string& place);

  // Adds what the book's index and its associations lead to. Once, behind all pages, whose titles
  // stand for those that the index does not give.
  void AddIndex(const HelpBook& book, const SiteNames& names);

  const HelpTopics& Topics() const { return topics_; }

 private:
  std::string TitleAt(const std::string& place) const;

  HelpTopics topics_;
  std::unordered_map<std::string, std::string> titles_;  // by place
};

// Whether a page asks for topics by keyword or association, and so has to wait until all are known.
bool AsksForTopics(std::string_view html);

}  // namespace scrivo
