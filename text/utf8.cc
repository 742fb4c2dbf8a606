#include <cstdint>
#include <cstring>

#include "text/code_page.h"

namespace scrivo {
namespace {

bool IsContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

// What a lead byte promises: the length of its sequence and the bounds of its second byte, which
// exclude overlong forms, surrogates and numbers past 0x10FFFF. Length 0: no lead byte.
struct Lead {
  std::size_t length;
  unsigned char low, high;
};

Lead LeadOf(unsigned char c) {
  if (c >= 0xC2 && c <= 0xDF) return {2, 0x80, 0xBF};
  if (c == 0xE0) return {3, 0xA0, 0xBF};
  if (c == 0xED) return {3, 0x80, 0x9F};
  if (c >= 0xE1 && c <= 0xEF) return {3, 0x80, 0xBF};
  if (c == 0xF0) return {4, 0x90, 0xBF};
  if (c >= 0xF1 && c <= 0xF3) return {4, 0x80, 0xBF};
  if (c == 0xF4) return {4, 0x80, 0x8F};
  return {0, 0, 0};
}

}  // namespace

void AppendUtf8(char32_t character, std::string* out) {
  if (character > 0x10FFFF || (character >= 0xD800 && character <= 0xDFFF))
    character = kReplacementCharacter;
  if (character < 0x80) {
    out->push_back(static_cast<char>(character));
  } else if (character < 0x800) {
    out->push_back(static_cast<char>(0xC0 | (character >> 6)));
    out->push_back(static_cast<char>(0x80 | (character & 0x3F)));
  } else if (character < 0x10000) {
    out->push_back(static_cast<char>(0xE0 | (character >> 12)));
    out->push_back(static_cast<char>(0x80 | ((character >> 6) & 0x3F)));
    out->push_back(static_cast<char>(0x80 | (character & 0x3F)));
  } else {
    out->push_back(static_cast<char>(0xF0 | (character >> 18)));
    out->push_back(static_cast<char>(0x80 | ((character >> 12) & 0x3F)));
    out->push_back(static_cast<char>(0x80 | ((character >> 6) & 0x3F)));
    out->push_back(static_cast<char>(0x80 | (character & 0x3F)));
  }
}

char32_t NextUtf8(std::string_view* utf8) {
  const unsigned char first = static_cast<unsigned char>(utf8->front());
  if (first < 0x80) {
    utf8->remove_prefix(1);
    return first;
  }
  const Lead lead = LeadOf(first);
  std::size_t good = 1;
  char32_t value = lead.length == 0 ? 0 : first & (0x7F >> lead.length);
  while (good < lead.length && good < utf8->size() && IsContinuation((*utf8)[good])) {
    const unsigned char c = static_cast<unsigned char>((*utf8)[good]);
    if (good == 1 && (c < lead.low || c > lead.high)) break;
    value = (value << 6) | (c & 0x3F);
    ++good;
  }
  utf8->remove_prefix(good);
  return good == lead.length ? value : kReplacementCharacter;
}

std::size_t AsciiPrefix(std::string_view bytes) {
  constexpr std::uint64_t kHighBits = 0x8080808080808080;
  std::size_t n = 0;
  std::uint64_t eight = 0;
  // Eight bytes at a time: most text is ASCII, and all pages of a project pass through here.
  for (; n + sizeof eight <= bytes.size(); n += sizeof eight) {
    std::memcpy(&eight, bytes.data() + n, sizeof eight);
    if ((eight & kHighBits) != 0) break;
  }
  while (n < bytes.size() && static_cast<unsigned char>(bytes[n]) < 0x80) ++n;
  return n;
}

bool IsUtf8(std::string_view bytes) {
  while (true) {
    bytes.remove_prefix(AsciiPrefix(bytes));
    if (bytes.empty()) return true;
    const std::size_t before = bytes.size();
    // U+FFFD itself is three bytes long, a replaced sequence at most three but never a whole one.
    const std::string_view rest = bytes;
    if (NextUtf8(&bytes) == kReplacementCharacter &&
        rest.substr(0, before - bytes.size()) != "\xEF\xBF\xBD") {
      return false;
    }
  }
}

std::u16string ToUtf16(std::string_view utf8) {
  std::u16string wide;
  wide.reserve(utf8.size());
  while (!utf8.empty()) {
    const char32_t c = NextUtf8(&utf8);
    if (const auto byte = KeptByte(c)) {  // as Windows does with most such bytes
      wide.push_back(static_cast<unsigned char>(*byte));
    } else if (c < 0x10000) {
      wide.push_back(static_cast<char16_t>(c));
    } else {
      wide.push_back(static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10)));
      wide.push_back(static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF)));
    }
  }
  return wide;
}

}  // namespace scrivo
