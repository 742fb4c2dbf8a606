#include "html/headings.h"

#include <utility>

#include "html/title.h"
#include "html/tokenizer.h"
#include "text/ascii_text.h"
#include "text/code_page.h"
#include "text/html_entities.h"

namespace scrivo {
namespace {

// Tags that show that a heading was never closed.
bool IsBeyondHeading(const HtmlToken& tag) {
  if (tag.kind == HtmlToken::Kind::kEndTag) {
    return tag.Is("td") || tag.Is("table") || tag.Is("body") || tag.Is("html");
  }
  return tag.Is("td") || tag.Is("table") || tag.Is("ul") || tag.Is("ol");
}

// The text on one line, without blanks at its ends.
std::string OnOneLine(std::string_view text) {
  std::string line;
  for (const char c : text) {
    if (!IsBlank(c)) {
      line.push_back(c);
    } else if (!line.empty() && line.back() != ' ') {
      line.push_back(' ');
    }
  }
  if (line.ends_with(' ')) line.pop_back();
  return line;
}

}  // namespace

void HeadingFinder::See(const HtmlToken& token) {
  switch (token.kind) {
    case HtmlToken::Kind::kText:
      if (is_open_ && text_.size() < kLongest) text_.append(token.content);
      break;
    case HtmlToken::Kind::kStartTag:
    case HtmlToken::Kind::kEndTag: {
      const int level = HeadingLevel(token.name);
      if (is_open_ && (level != 0 || IsBeyondHeading(token))) Close();
      if (is_open_ && !IsInlineElement(token.name)) text_.push_back(' ');
      if (token.kind == HtmlToken::Kind::kStartTag) StartTag(token, level);
      break;
    }
    case HtmlToken::Kind::kRaw:
    case HtmlToken::Kind::kOther:
      break;
  }
}

// A heading's place is its own id, or else that of an anchor within it.
void HeadingFinder::StartTag(const HtmlToken& token, int level) {
  if (level != 0 && level <= deepest_) {
    is_open_ = true;
    heading_ = {};
    heading_.level = level;
    text_.clear();
    TakeAnchor(token, false);
  } else if (is_open_ && token.Is("a")) {
    TakeAnchor(token, true);
  }
}

void HeadingFinder::TakeAnchor(const HtmlToken& token, bool by_name) {
  std::string_view content = token.content;
  HtmlAttribute attribute;
  while (heading_.anchor.empty() && NextAttribute(&content, &attribute)) {
    if (EqualsIgnoringCase(attribute.name, "id") ||
        (by_name && EqualsIgnoringCase(attribute.name, "name"))) {
      heading_.anchor =
          DecodeEntities(ToUtf8(Trimmed(attribute.value), code_page_), EntityPlace::kAttribute);
    }
  }
}

void HeadingFinder::Close() {
  is_open_ = false;
  heading_.text = OnOneLine(ShownText(text_, code_page_, kLongest, undefined_));
  if (!IsBlankText(heading_.text)) found_.push_back(std::move(heading_));
}

std::vector<PageHeading> HeadingFinder::Take() {
  if (is_open_) Close();
  return std::move(found_);
}

}  // namespace scrivo
