#include "text/wtf8.h"

#include "text/code_page.h"

namespace scrivo {
namespace {

bool IsHighSurrogate(char16_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool IsLowSurrogate(char16_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

// The surrogate that stands at the front of `text` in three bytes; 0 when none does.
char16_t SurrogateAt(std::string_view text) {
  if (text.size() < 3 || text[0] != '\xED') return 0;
  const auto second = static_cast<unsigned char>(text[1]);
  const auto third = static_cast<unsigned char>(text[2]);
  if (second < 0xA0 || second > 0xBF || (third & 0xC0) != 0x80) return 0;
  return static_cast<char16_t>(0xD000 | (second & 0x3F) << 6 | (third & 0x3F));
}

}  // namespace

std::string FromWindowsText(std::u16string_view wide) {
  std::string text;
  text.reserve(wide.size());
  for (std::size_t i = 0; i < wide.size(); ++i) {
    const char16_t unit = wide[i];
    if (IsHighSurrogate(unit) && i + 1 < wide.size() && IsLowSurrogate(wide[i + 1])) {
      const char32_t low = wide[++i];
      AppendUtf8(0x10000 + ((unit - char32_t{0xD800}) << 10) + (low - 0xDC00), &text);
    } else if (IsHighSurrogate(unit) || IsLowSurrogate(unit)) {
      text.push_back('\xED');
      text.push_back(static_cast<char>(0x80 | ((unit >> 6) & 0x3F)));
      text.push_back(static_cast<char>(0x80 | (unit & 0x3F)));
    } else {
      AppendUtf8(unit, &text);
    }
  }
  return text;
}

std::u16string ToWindowsText(std::string_view text) {
  std::u16string wide;
  wide.reserve(text.size());
  while (!text.empty()) {
    if (const char16_t surrogate = SurrogateAt(text); surrogate != 0) {
      wide.push_back(surrogate);
      text.remove_prefix(3);
      continue;
    }
    const char32_t c = NextUtf8(&text);
    if (c < 0x10000) {
      wide.push_back(static_cast<char16_t>(c));
    } else {
      wide.push_back(static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10)));
      wide.push_back(static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF)));
    }
  }
  return wide;
}

}  // namespace scrivo
