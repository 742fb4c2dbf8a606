#include "text/visible_text.h"

#include <algorithm>

#include "text/code_page.h"

namespace scrivo {
namespace {

void AppendHex(unsigned char byte, std::string* out) {
  static constexpr std::string_view kDigits = "0123456789ABCDEF";
  *out += "\\x";
  *out += kDigits[byte >> 4];
  *out += kDigits[byte & 15];
}

bool IsControl(char32_t c) { return c < 0x20 || (c >= 0x7F && c < 0xA0); }

bool TurnsDirection(char32_t c) {
  return (c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069);
}

bool HasNoWidth(char32_t c) {
  return (c >= 0x200B && c <= 0x200F) || c == 0x2028 || c == 0x2029 || c == 0xFEFF;
}

// Whether all of a text is printed as it is, as most are.
bool IsPlain(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return c >= 0x20 && c < 0x7F; });
}

// `is_hidden` tells characters, `is_hidden_byte` bytes that are no UTF-8.
template <typename OfCharacter, typename OfByte>
std::string Escaped(std::string_view text, OfCharacter is_hidden, OfByte is_hidden_byte) {
  if (IsPlain(text)) return std::string(text);
  std::string visible;
  while (!text.empty()) {
    const std::string_view before = text;
    const char32_t character = NextUtf8(&text);
    const std::string_view taken = before.substr(0, before.size() - text.size());
    const bool is_utf8 = IsUtf8(taken);
    for (const char c : taken) {
      const auto byte = static_cast<unsigned char>(c);
      if (is_utf8 ? is_hidden(character) : is_hidden_byte(byte)) {
        AppendHex(byte, &visible);
      } else {
        visible += c;
      }
    }
  }
  return visible;
}

bool IsControlCharacter(char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }

}  // namespace

std::string VisibleText(std::string_view text, std::string_view kept) {
  return Escaped(
      text,
      [kept](char32_t c) {
        return IsControl(c) &&
               (c >= 0x80 || kept.find(static_cast<char>(c)) == std::string_view::npos);
      },
      IsControl);
}

std::string VisibleLine(std::string_view line) {
  return Escaped(
      line, [](char32_t c) { return (IsControl(c) && c != '\t') || TurnsDirection(c); }, IsControl);
}

std::string PrintableName(std::string_view name) {
  return Escaped(
      name, [](char32_t c) { return IsControl(c) || TurnsDirection(c) || HasNoWidth(c); },
      [](unsigned char) { return true; });
}

bool HasControlCharacters(const std::string& text) {
  return std::any_of(text.begin(), text.end(), IsControlCharacter);
}

std::string WithoutControlCharacters(std::string text) {
  std::replace_if(text.begin(), text.end(), IsControlCharacter, ' ');
  return text;
}

}  // namespace scrivo
