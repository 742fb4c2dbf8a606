#pragma once

// Tags that are none: a "<" with something behind it that cannot start a tag, as in a "<" of a text
// that was not escaped or an XML declaration, and tags without an end. Authors want to hear of
// them.

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "html/tokenizer.h"

namespace scrivo {

struct BadTag {
  std::size_t offset = 0;  // of the "<" in the document
  std::size_t size = 0;    // of what follows it, up to the next ">" or the document's end
  bool is_closed = true;   // there is a ">" behind it
};

// Looks at the tokens of one document, which must outlive it. The cost is linear
// in the document, however many "<" it has.
class BadTagFinder {
 public:
  explicit BadTagFinder(std::string_view html) : html_(html) {}

  // Takes the next token of the document.
  void See(const HtmlToken& token);

  // What was found, in the order of the document.
  std::vector<BadTag> Take() { return std::move(found_); }

 private:
  void Add(std::size_t offset);

  std::string_view html_;
  std::size_t tag_end_ = 0;  // of the last one; a "<" before it belongs to it
  std::vector<BadTag> found_;
};

// What a message shows of a tag of `html`, in UTF-8: line ends become blanks, and what is beyond
// kShownTagCharacters becomes "...". `code_page` is the document's.
inline constexpr std::size_t kShownTagCharacters = 50;
std::string ShownTag(std::string_view html, const BadTag& tag, int code_page);

}  // namespace scrivo
