#include "html/title.h"

#include "text/ascii_text.h"
#include "text/code_page.h"
#include "text/html_entities.h"

namespace scrivo {

std::string ShownText(std::string_view bytes, int code_page, std::size_t longest,
                      Undefined undefined) {
  std::string text = DecodeEntities(ToUtf8(bytes, code_page, undefined));
  if (text.size() <= longest) return text;
  while (longest > 0 && (static_cast<unsigned char>(text[longest]) & 0xC0) == 0x80) --longest;
  text.resize(longest);
  return text;
}

bool IsBlankText(std::string_view utf8) {
  constexpr std::string_view kNoBreakSpace = "\xC2\xA0";
  while (!utf8.empty()) {
    if (IsBlank(utf8[0])) {
      utf8.remove_prefix(1);
    } else if (utf8.starts_with(kNoBreakSpace)) {
      utf8.remove_prefix(kNoBreakSpace.size());
    } else {
      return false;
    }
  }
  return true;
}

bool TitleFinder::See(const HtmlToken& token) {
  if (token.Starts("svg")) in_drawing_ = !token.content.ends_with('/');
  if (token.Ends("svg")) in_drawing_ = false;
  if (token.kind != HtmlToken::Kind::kRaw || !token.Is("title")) return false;
  if (in_drawing_ || !title_.empty()) return false;
  title_ = ShownText(token.content, code_page_, kLongest, undefined_);
  if (IsBlankText(title_)) title_.clear();
  return !title_.empty();
}

}  // namespace scrivo
