#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "html/tokenizer.h"
#include "text/code_page.h"

namespace scrivo {

// A page's bytes as the text that a reader sees, in UTF-8: character references replaced, and cut
// before the character that would pass `longest` bytes.
std::string ShownText(std::string_view bytes, int code_page, std::size_t longest,
                      Undefined undefined = Undefined::kReplaced);

// Whether nothing of a UTF-8 text can be seen: it holds blanks, line ends and no-break spaces only.
bool IsBlankText(std::string_view utf8);

// Finds a page's title: the first TITLE element with more than blanks in it, wherever it stands;
// one inside an SVG drawing is the drawing's.
class TitleFinder {
 public:
  // A longer title is a mistake of the page, such as one that is never closed, and is cut.
  static constexpr std::size_t kLongest = 4096;

  // `code_page`: of the page's bytes.
  explicit TitleFinder(int code_page, Undefined undefined = Undefined::kReplaced)
      : code_page_(code_page), undefined_(undefined) {}

  // Takes the next token of the page. True when it is the title's text.
  bool See(const HtmlToken& token);

  // In UTF-8, at most kLongest bytes, its character references replaced, blanks and line ends as
  // they stand; empty when the page has no title.
  const std::string& Title() const { return title_; }

 private:
  int code_page_;
  Undefined undefined_;
  bool in_drawing_ = false;
  std::string title_;
};

}  // namespace scrivo
