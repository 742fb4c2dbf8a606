#include "html/bad_tags.h"

#include <algorithm>

#include "text/ascii_text.h"
#include "text/code_page.h"

namespace scrivo {
namespace {

constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }

}  // namespace

void BadTagFinder::See(const HtmlToken& token) {
  const std::size_t after = token.offset + 1;
  const char first = after < html_.size() ? html_[after] : '\0';
  switch (token.kind) {
    case HtmlToken::Kind::kText:
      if (html_[token.offset] == '<' && first != '/' && !IsDigit(first)) Add(token.offset);
      break;
    case HtmlToken::Kind::kOther:
      if (first == '?') Add(token.offset);
      break;
    case HtmlToken::Kind::kStartTag:
    case HtmlToken::Kind::kEndTag:
      // Only an end that is missing lets the attributes reach to the end of the document.
      if (token.content.data() + token.content.size() == html_.data() + html_.size()) {
        Add(token.offset);
      }
      break;
    case HtmlToken::Kind::kRaw:
      break;
  }
}

void BadTagFinder::Add(std::size_t offset) {
  if (offset < tag_end_) return;
  tag_end_ = std::min(html_.find('>', offset), html_.size());
  found_.push_back({offset, tag_end_ - offset - 1, tag_end_ < html_.size()});
}

std::string ShownTag(std::string_view html, const BadTag& tag, int code_page) {
  // No character takes more bytes than this, in any code page.
  constexpr std::size_t kMostBytes = 4;
  const std::string text = ToUtf8(
      html.substr(tag.offset + 1, std::min(tag.size, kMostBytes * (kShownTagCharacters + 1))),
      code_page);
  std::string shown;
  std::string_view rest = text;
  for (std::size_t count = 0; !rest.empty() && count < kShownTagCharacters; ++count) {
    const char32_t character = NextUtf8(&rest);
    AppendUtf8(character < ' ' ? U' ' : character, &shown);
  }
  if (!rest.empty()) shown += "...";
  return shown;
}

}  // namespace scrivo
