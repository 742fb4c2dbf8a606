#include "html/text_charset.h"

#include "text/ascii_text.h"
#include "text/code_page.h"

namespace scrivo {
namespace {

// Browsers look for the charset in the first kilobyte; editors of help pages put more before it.
constexpr std::size_t kHead = 4096;

}  // namespace

int DeclaredCodePage(std::string_view html) {
  if (html.starts_with(kUtf8Mark)) return kUtf8CodePage;
  const std::string head = AsciiLowered(html.substr(0, kHead));
  std::size_t meta = 0;
  while ((meta = head.find("<meta", meta)) != std::string::npos) {
    std::size_t end = head.find('>', meta);
    if (end == std::string::npos) end = head.size();
    const std::string_view tag = std::string_view(head).substr(meta, end - meta);
    std::size_t at = tag.find("charset");
    if (at != std::string_view::npos) {
      at = tag.find('=', at);
      if (at != std::string_view::npos) {
        std::string_view value = tag.substr(at + 1);
        while (!value.empty() && (IsBlank(value[0]) || value[0] == '"' || value[0] == '\'')) {
          value.remove_prefix(1);
        }
        const auto page = CodePageFromName(value.substr(0, value.find_first_of(" \t\r\n\"'/;>")));
        if (page) return *page;
      }
    }
    meta = end;
  }
  return 0;
}

bool LooksLikeUtf8(std::string_view bytes) {
  return AsciiPrefix(bytes) != bytes.size() && IsUtf8(bytes);
}

std::string DecodeGuessing(std::string_view bytes, int code_page) {
  if (bytes.starts_with(kUtf8Mark)) bytes.remove_prefix(kUtf8Mark.size());
  return IsUtf8(bytes) ? std::string(bytes) : ToUtf8(bytes, code_page);
}

}  // namespace scrivo
