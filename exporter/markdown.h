#pragma once

// A page as Markdown (CommonMark, with the tables of GFM): headings, nested lists, tables, code,
// quotations, links and pictures; what else a page has is left out.

#include <functional>
#include <string>
#include <string_view>

namespace scrivo {

struct MarkdownRules {
  int heading_shift = 0;  // H1 becomes a heading of level 1 + heading_shift; none is deeper than 6
  // A first heading with this text is left out: the caller has put it there already.
  std::string_view known_title;
  // Where an address of the page leads in the result; empty: the text stands without a link.
  std::function<std::string(std::string_view address)> link, picture;
  // What an anchor of the page is called in the result; empty: it is left out. Asked for each that
  // stands in the page, in order.
  std::function<std::string(std::string_view name)> anchor;
};

// `html` is UTF-8, and so is the result; it ends with a line end unless it is empty. Linear in the
// page for any input; nothing is an error.
std::string PageAsMarkdown(std::string_view html, const MarkdownRules& rules);

// Text with what has a meaning in Markdown escaped.
std::string MarkdownText(std::string_view utf8);

}  // namespace scrivo
