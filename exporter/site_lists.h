#pragma once

// The contents and the index of an exported site: as data for the browser's side, and as plain
// lists for those without scripts. Addresses are relative to the folder of the pages, or whole
// ones.

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "exporter/site_names.h"
#include "project/sitemap.h"

namespace scrivo {

struct ContentsEntry {
  int level = 0;        // 0 at the top; at most one more than the entry before it
  std::string title;    // UTF-8
  std::string address;  // empty when it leads nowhere
};

struct KeywordEntry {
  int level = 0;
  std::string word;                                         // UTF-8
  std::vector<std::pair<std::string, std::string>> topics;  // title and address
  std::string see;                                          // the keyword to see instead
};

// Whether `address` is one of the web: only such addresses leave a site, since what a help file
// says must not start anything.
bool IsWebAddress(std::string_view address);

// Addresses of a sitemap's target as the site has them; empty for what leads nowhere in a browser.
// `from` is the name of the sitemap's file in the help file.
std::string SiteAddress(const SitemapTarget& target, const SiteNames& names, std::string_view from);

// The index in the order of its words, equal words of one level joined. Input in any order of the
// words, sub-entries behind the entry that they belong to.
std::vector<KeywordEntry> SortedKeywords(std::vector<KeywordEntry> keywords);

std::string ContentsScript(const std::vector<ContentsEntry>& contents, std::string_view home);
std::string KeywordsScript(const std::vector<KeywordEntry>& keywords);

std::string ContentsList(const std::vector<ContentsEntry>& contents);
std::string KeywordsList(const std::vector<KeywordEntry>& keywords);

}  // namespace scrivo
