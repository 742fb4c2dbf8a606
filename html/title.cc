#include "html/title.h"

#include "html/shown_text.h"

namespace scrivo {

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
