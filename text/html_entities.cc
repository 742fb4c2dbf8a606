#include "text/html_entities.h"

#include <algorithm>
#include <iterator>

#include "text/code_page.h"

namespace scrivo {
namespace {

struct NamedEntity {
  std::string_view name;
  char32_t character;
  bool stands_alone;  // counts without ";"
};

constexpr NamedEntity kNamed[] = {
#include "text/entity_table.inc"
};

// The longest name is "thetasym"; a longer run of letters cannot be one.
constexpr std::size_t kLongestName = 8;
// Digits past this many cannot be a character; leading zeros are rare enough not to matter.
constexpr std::size_t kMostDigits = 10;

constexpr bool IsAlnum(char c) {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

constexpr int DigitValue(char c, int base) {
  if (c >= '0' && c <= '9') return c - '0';
  if (base == 16 && c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (base == 16 && c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

char32_t NumberedCharacter(char32_t number) {
  if (number >= 0x80 && number <= 0x9F) {
    const std::string utf8 = ToUtf8(std::string(1, static_cast<char>(number)), 1252);
    std::string_view rest = utf8;
    return NextUtf8(&rest);
  }
  if (number == 0 || number > 0x10FFFF || (number >= 0xD800 && number <= 0xDFFF)) {
    return kReplacementCharacter;
  }
  return number;
}

char32_t ReadNumber(std::string_view text, std::size_t* length) {
  std::size_t at = 2;  // past "&#"
  int base = 10;
  if (at < text.size() && (text[at] == 'x' || text[at] == 'X')) {
    base = 16;
    ++at;
  }
  const std::size_t first = at;
  char32_t number = 0;
  while (at < text.size() && at - first < kMostDigits) {
    const int digit = DigitValue(text[at], base);
    if (digit < 0) break;
    number = number > 0x10FFFF
                 ? number
                 : number * static_cast<char32_t>(base) + static_cast<char32_t>(digit);
    ++at;
  }
  if (at == first) {
    *length = 0;
    return 0;
  }
  if (at < text.size() && text[at] == ';') ++at;
  *length = at;
  return NumberedCharacter(number);
}

const NamedEntity* FindName(std::string_view name) {
  const auto* found = std::lower_bound(
      std::begin(kNamed), std::end(kNamed), name,
      [](const NamedEntity& e, std::string_view wanted) { return e.name < wanted; });
  return found != std::end(kNamed) && found->name == name ? found : nullptr;
}

char32_t ReadName(std::string_view text, EntityPlace place, std::size_t* length) {
  std::size_t run = 0;
  while (run < kLongestName && 1 + run < text.size() && IsAlnum(text[1 + run])) ++run;
  const char after = 1 + run < text.size() ? text[1 + run] : '\0';
  if (after == ';') {
    if (const NamedEntity* whole = FindName(text.substr(1, run))) {
      *length = run + 2;
      return whole->character;
    }
  }
  // Without ";" the longest name that the run begins with counts: "&notit" is "&not" and "it".
  for (std::size_t n = run; n >= 2; --n) {
    const NamedEntity* entity = FindName(text.substr(1, n));
    if (entity == nullptr || !entity->stands_alone) continue;
    const char next = 1 + n < text.size() ? text[1 + n] : '\0';
    if (place == EntityPlace::kAttribute && (next == '=' || IsAlnum(next))) break;
    *length = n + 1;
    return entity->character;
  }
  *length = 0;
  return 0;
}

}  // namespace

char32_t ReadEntity(std::string_view text, EntityPlace place, std::size_t* length) {
  if (text.size() > 1 && text[1] == '#') return ReadNumber(text, length);
  return ReadName(text, place, length);
}

std::string DecodeEntities(std::string_view utf8, EntityPlace place) {
  std::string out;
  out.reserve(utf8.size());
  while (true) {
    const std::size_t ampersand = utf8.find('&');
    out.append(utf8.substr(0, ampersand));
    if (ampersand == std::string_view::npos) return out;
    utf8.remove_prefix(ampersand);
    std::size_t length = 0;
    const char32_t character = ReadEntity(utf8, place, &length);
    if (length == 0) {
      out.push_back('&');
      length = 1;
    } else {
      AppendUtf8(character, &out);
    }
    utf8.remove_prefix(length);
  }
}

}  // namespace scrivo
