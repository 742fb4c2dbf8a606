#include "hhc/page_text.h"

#include <string>

#include "text/code_page.h"
#include "text/html_entities.h"

namespace scrivo {

PageText::PageText(int page_code_page, int project_code_page, WordCollector* words)
    : page_code_page_(page_code_page),
      project_code_page_(project_code_page),
      same_(page_code_page == project_code_page),
      breaker_(project_code_page, words) {}

void PageText::Add(std::string_view content) {
  breaker_.SetInTitle(in_title_);
  while (!content.empty()) {
    const std::size_t ampersand = content.find('&');
    AddBytes(content.substr(0, ampersand));
    if (ampersand == std::string_view::npos) return;
    content.remove_prefix(ampersand);
    std::size_t length = 0;
    const char32_t character = ReadEntity(content, EntityPlace::kText, &length);
    if (length == 0) {
      breaker_.Byte('&');
      length = 1;
    } else {
      AddCharacter(character);
    }
    content.remove_prefix(length);
  }
}

void PageText::AddPlain(std::string_view content) {
  breaker_.SetInTitle(in_title_);
  AddBytes(content);
}

void PageText::AddBytes(std::string_view bytes) {
  if (same_) {
    breaker_.Text(bytes);
    return;
  }
  while (!bytes.empty()) {
    const std::size_t ascii = AsciiPrefix(bytes);
    breaker_.Text(bytes.substr(0, ascii));
    bytes.remove_prefix(ascii);
    if (bytes.empty()) return;
    if (page_code_page_ == kUtf8CodePage) {
      AddCharacter(NextUtf8(&bytes));
      continue;
    }
    // Other pages: turn the run past ASCII (with what follows a lead byte) into UTF-8 first.
    const std::string utf8 = ToUtf8(bytes, page_code_page_);
    std::string_view rest = utf8;
    while (!rest.empty()) AddCharacter(NextUtf8(&rest));
    return;
  }
}

void PageText::AddCharacter(char32_t character) {
  if (character < 0x80) {
    breaker_.Byte(static_cast<unsigned char>(character));
    return;
  }
  auto [found, added] = known_.try_emplace(character);
  if (added) {
    std::string utf8;
    AppendUtf8(character, &utf8);
    std::size_t lost = 0;
    found->second = FromUtf8(utf8, project_code_page_, &lost);
    // What the project's code page lacks separates words.
    if (lost > 0) found->second.assign(1, ' ');
  }
  breaker_.Text(found->second);
}

}  // namespace scrivo
