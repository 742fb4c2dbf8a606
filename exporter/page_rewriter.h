#pragma once

// A page of a help file on its way into a site: UTF-8, with links that work in any browser and
// without what only the help viewer can run.

#include <string>
#include <string_view>
#include <vector>

#include "exporter/help_objects.h"
#include "exporter/page_content.h"
#include "exporter/site_names.h"

namespace scrivo {

struct RewriteRules {
  bool keep_scripts = false;  // leaves the page's own scripts in
  // Goes to the start of the head, "{up}" replaced by the way to the folder of the pages.
  std::string head;
};

struct RewrittenPage {
  std::string html;
  PageContent content;
  // What the page itself has for the index, and for links by association; UTF-8.
  std::vector<std::string> keywords, associations;
};

// A page's bytes as UTF-8; `code_page` is that of a page which tells none.
std::string PageInUtf8(std::string bytes, int code_page);

// Rewrites the page `name` of the help file ("/folder/page.htm"), whose bytes are `html` in UTF-8
// and whose place in the site is `place`. Linear in the page for any input; nothing is an error.
RewrittenPage RewritePage(std::string_view html, std::string_view name, std::string_view place,
                          const SiteNames& names, const HelpTopics& topics,
                          const RewriteRules& rules);

// A style sheet with its addresses mapped; the bytes are otherwise untouched.
std::string RewriteStyleSheet(std::string_view css, std::string_view name, std::string_view place,
                              const SiteNames& names);

}  // namespace scrivo
