#include "html/charset.h"

#include <algorithm>
#include <cstddef>

#include "html/elements.h"
#include "html/tokenizer.h"
#include "text/ascii_text.h"
#include "text/code_page.h"

namespace scrivo {
namespace {

// A declaration counts up to here even behind the head's end: browsers look through the first
// kilobyte, and editors of help pages put more before it.
constexpr std::size_t kSearched = 4096;
// Well-formed UTF-8 with as many characters past ASCII is not an accident.
constexpr std::ptrdiff_t kPlainEvidence = 10;
constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

std::optional<int> CodePageFromLabel(std::string_view label) {
  // Names of UTF-16, in which nobody could have read the label.
  constexpr std::string_view kUtf16Labels[] = {"utf-16",          "utf-16le",    "utf-16be",
                                               "unicode",         "ucs-2",       "csunicode",
                                               "iso-10646-ucs-2", "unicodefeff", "unicodefffe"};
  for (const std::string_view utf16 : kUtf16Labels) {
    if (EqualsIgnoringCase(Trimmed(label), utf16)) return kUtf8CodePage;
  }
  return CodePageFromName(label);
}

// The value in `name = value` of a longer text, with or without quotes, up to a blank or ";".
std::string_view ValueIn(std::string_view text, std::string_view name) {
  for (; text.size() > name.size(); text.remove_prefix(1)) {
    if (!StartsWithIgnoringCase(text, name)) continue;
    std::string_view rest = text.substr(name.size());
    rest = rest.substr(std::min(rest.find_first_not_of(" \t\r\n\f"), rest.size()));
    if (!rest.starts_with('=')) continue;
    rest = Trimmed(rest.substr(1));
    if (rest.starts_with('"') || rest.starts_with('\'')) {
      return rest.substr(1, std::min(rest.find(rest[0], 1), rest.size()) - 1);
    }
    return rest.substr(0, rest.find_first_of("; \t\r\n\f"));
  }
  return {};
}

std::optional<int> CodePageOfMeta(const HtmlToken& meta) {
  if (const auto charset = meta.Attribute("charset")) {
    if (const auto code_page = CodePageFromLabel(*charset)) return code_page;
  }
  auto kind = meta.Attribute("http-equiv");
  if (!kind) kind = meta.Attribute("name");  // a slip that is seen now and then
  if (!kind || !EqualsIgnoringCase(Trimmed(*kind), "content-type")) return std::nullopt;
  return CodePageFromLabel(ValueIn(meta.Attribute("content").value_or(""), "charset"));
}

bool HoldsUtf8Character(std::string_view bytes) {
  while (!bytes.empty()) {
    const std::string_view before = bytes;
    const char32_t character = NextUtf8(&bytes);
    if (character >= 0x80 && (character != 0xFFFD || before.starts_with(kReplacement))) return true;
  }
  return false;
}

// Whether text has characters that no page has: bytes without a meaning, or control characters,
// which stand for such bytes in most code pages.
bool IsBroken(std::string_view utf8) {
  while (!utf8.empty()) {
    const char32_t character = NextUtf8(&utf8);
    if (character == 0xFFFD || (character >= 0x80 && character < 0xA0)) return true;
  }
  return false;
}

// Whether UTF-8 says more of `past_ascii`, which is well-formed UTF-8, than the declared code page.
bool IsPlainlyUtf8(std::string_view past_ascii, int declared) {
  const auto characters = std::count_if(past_ascii.begin(), past_ascii.end(), [](char c) {
    return static_cast<unsigned char>(c) >= 0xC0;  // each has one first byte
  });
  return characters >= kPlainEvidence || IsBroken(ToUtf8(past_ascii, declared));
}

}  // namespace

std::optional<int> DeclaredCodePage(std::string_view html) {
  std::optional<int> of_xml;
  HtmlTokenizer tokens(html);
  HtmlToken token;
  bool in_body = false;
  while (tokens.Next(&token) && !(in_body && token.offset >= kSearched)) {
    if (token.Starts("meta")) {
      if (const auto code_page = CodePageOfMeta(token)) return code_page;
    }
    if (token.kind == HtmlToken::Kind::kOther && token.content.starts_with("<?xml ")) {
      of_xml = CodePageFromLabel(ValueIn(token.content, "encoding"));
    }
    in_body = in_body || token.Ends("head") ||
              (token.kind == HtmlToken::Kind::kStartTag && StartsBody(token.name));
  }
  return of_xml;
}

std::optional<int> CodePageOfPage(std::string_view html) {
  if (html.starts_with(kUtf8Mark)) return kUtf8CodePage;
  const std::optional<int> declared = DeclaredCodePage(html);
  const std::string_view past_ascii = html.substr(AsciiPrefix(html));
  if (past_ascii.empty()) return declared;
  if (IsUtf8(past_ascii)) {
    return declared && !IsPlainlyUtf8(past_ascii, *declared) ? declared : kUtf8CodePage;
  }
  if (declared == kUtf8CodePage && !HoldsUtf8Character(past_ascii)) return std::nullopt;
  return declared;
}

std::optional<std::string> Utf16AsUtf8(std::string_view bytes) {
  const bool little = bytes.starts_with("\xFF\xFE");
  if (!little && !bytes.starts_with("\xFE\xFF")) return std::nullopt;
  std::string utf8;
  utf8.reserve(bytes.size());
  char32_t high_surrogate = 0;  // one whose second half is due
  for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
    const char32_t low = static_cast<unsigned char>(bytes[at + (little ? 0 : 1)]);
    const char32_t high = static_cast<unsigned char>(bytes[at + (little ? 1 : 0)]);
    const char32_t unit = high << 8 | low;
    const bool is_second_half = unit >= 0xDC00 && unit <= 0xDFFF;
    if (high_surrogate != 0 && is_second_half) {
      AppendUtf8(0x10000 + ((high_surrogate - 0xD800) << 10) + (unit - 0xDC00), &utf8);
      high_surrogate = 0;
      continue;
    }
    if (high_surrogate != 0) utf8 += kReplacement;
    high_surrogate = unit >= 0xD800 && unit <= 0xDBFF ? unit : 0;
    if (high_surrogate == 0) AppendUtf8(unit, &utf8);
  }
  if (high_surrogate != 0) utf8 += kReplacement;
  return utf8;
}

std::string DecodeGuessing(std::string_view bytes, int code_page, Undefined undefined) {
  if (bytes.starts_with(kUtf8Mark)) bytes.remove_prefix(kUtf8Mark.size());
  return IsUtf8(bytes) ? std::string(bytes) : ToUtf8(bytes, code_page, undefined);
}

}  // namespace scrivo
