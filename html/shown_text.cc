#include "html/shown_text.h"

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

}  // namespace scrivo
