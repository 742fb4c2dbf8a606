#pragma once

// Splits HTML as found in the wild into text, tags and comments, in one pass over the bytes.
//
// Nothing is copied: tokens point into the document, which must outlive them. Any input is
// accepted; what is not markup is text. The cost is linear in the document for every input: a
// search for an end that is missing is made once, not again for each tag that lacks it.

#include <cstddef>
#include <optional>
#include <string_view>

#include "text/ascii_text.h"

namespace scrivo {

struct HtmlToken {
  enum class Kind {
    kText,      // `content` is text with its character references
    kRaw,       // the content of an element that holds no tags; `name` is the element
    kStartTag,  // `name` and the attributes in `content`
    kEndTag,    // `name`
    kOther,     // comment, declaration or processing instruction
  };
  Kind kind = Kind::kText;
  std::string_view name;     // as written
  std::string_view content;  // without the delimiters
  std::size_t offset = 0;    // of the token in the document

  // Whether `name` is `lower`, which is given in small letters.
  bool Is(std::string_view lower) const { return EqualsIgnoringCase(name, lower); }
  bool Starts(std::string_view lower) const { return kind == Kind::kStartTag && Is(lower); }
  bool Ends(std::string_view lower) const { return kind == Kind::kEndTag && Is(lower); }

  // The first attribute of that name (given in small letters), as written and without its quotes:
  // empty when it has no value, nothing when it is not there. Only for a start tag.
  std::optional<std::string_view> Attribute(std::string_view lower) const;
};

// Elements whose content is text and no tags: script and style, title and textarea, xmp. In a title
// and a textarea character references are replaced, in the others they are not. The content ends
// at the element's own end tag. A title that is never closed ends at the next tag, and one counts
// as never closed when the head ends, the body starts or another title starts first.
class HtmlTokenizer {
 public:
  // Start tags named `own_tag` (any case) are given with empty content, right after their name: a
  // reader with rules of its own for the attributes takes them from there and then moves on.
  explicit HtmlTokenizer(std::string_view html, std::string_view own_tag = {})
      : html_(html), own_tag_(own_tag) {}

  // The next token; false at the end of the document.
  bool Next(HtmlToken* token);

  // Where the next token starts, for a reader that takes part of the document itself.
  std::size_t Position() const { return position_; }
  void SetPosition(std::size_t offset) { position_ = offset; }

 private:
  bool ReadTag(HtmlToken* token);
  void ReadOther(HtmlToken* token);
  std::size_t CommentEnd(std::size_t from);
  void ReadRaw(HtmlToken* token);
  std::size_t RawEnd() const;
  std::size_t TitleEnd() const;
  std::size_t TagEnd(std::size_t from);
  std::size_t ClosingQuote(char quote, std::size_t from);

  std::string_view html_, own_tag_;
  std::size_t position_ = 0;
  std::string_view raw_element_;  // while its content is due
  // Searches that found nothing up to the end need not be made again.
  bool no_double_quote_ = false, no_single_quote_ = false, no_comment_end_ = false;
};

struct HtmlAttribute {
  std::string_view name;   // as written
  std::string_view value;  // without quotes, character references kept; empty when there is none
};

// Takes the next attribute off the front of a start tag's content; false when none is left.
bool NextAttribute(std::string_view* content, HtmlAttribute* attribute);

// Kinds of elements, by name in any case.

// Stands inside a line of text; the tags of all others end a word.
bool IsInlineElement(std::string_view name);

// Can only stand in a body: a page may go without its <body> tag.
bool StartsBody(std::string_view name);

// 1 to 6 for H1 to H6, 0 for every other element.
int HeadingLevel(std::string_view name);

}  // namespace scrivo
