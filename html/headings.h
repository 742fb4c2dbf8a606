#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "html/tokenizer.h"
#include "text/code_page.h"

namespace scrivo {

// A heading of a page, H1 to H6.
struct PageHeading {
  int level = 1;
  std::string text;    // UTF-8, blanks at the ends cut off and others made one
  std::string anchor;  // UTF-8; a place in the page that is the heading's, or empty
};

// Finds the headings of a page that have text. One that is never closed ends where a heading, a
// list or a table cell starts.
class HeadingFinder {
 public:
  // A longer heading is a mistake of the page and is cut.
  static constexpr std::size_t kLongest = 4096;

  // `code_page`: of the page's bytes. Headings up to level `deepest` count.
  HeadingFinder(int code_page, int deepest, Undefined undefined = Undefined::kReplaced)
      : code_page_(code_page), deepest_(deepest), undefined_(undefined) {}

  // Takes the next token of the page.
  void See(const HtmlToken& token);

  // What was found. Call it once, at the end of the page.
  std::vector<PageHeading> Take();

 private:
  void StartTag(const HtmlToken& token, int level);
  void TakeAnchor(const HtmlToken& token, bool by_name);
  void Close();

  int code_page_, deepest_;
  Undefined undefined_;
  bool is_open_ = false;
  PageHeading heading_;  // while one is open
  std::string text_;     // its bytes so far
  std::vector<PageHeading> found_;
};

}  // namespace scrivo
