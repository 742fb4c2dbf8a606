#include "html/charset.h"

#include <algorithm>
#include <cstddef>

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

// One place where a page names a known charset.
struct Declaration {
  std::string_view label;    // the name, as it stands there; empty when there is none
  std::string_view element;  // the whole of <meta charset=NAME>, which older viewers do not know
  bool is_xml = false;
};

bool IsContentType(const HtmlToken& meta) {
  auto kind = meta.Attribute("http-equiv");
  if (!kind) kind = meta.Attribute("name");  // a slip that is seen now and then
  return kind && EqualsIgnoringCase(Trimmed(*kind), "content-type");
}

// `element` is the whole of it.
Declaration DeclarationOfMeta(const HtmlToken& meta, std::string_view element) {
  const bool is_content_type = IsContentType(meta);
  const auto charset = meta.Attribute("charset");
  if (charset && CodePageFromLabel(*charset)) {
    const bool is_all = is_content_type || !meta.Attribute("content");
    return {*charset, is_all ? element : std::string_view()};
  }
  if (!is_content_type) return {};
  const std::string_view label = ValueIn(meta.Attribute("content").value_or(""), "charset");
  return {CodePageFromLabel(label) ? label : std::string_view(), {}};
}

// Finds the declarations of a page where DeclaredCodePage looks for them.
class DeclarationFinder {
 public:
  explicit DeclarationFinder(std::string_view html) : html_(html), tokens_(html) {}

  // The next one; one without a label behind the last.
  Declaration Next() {
    HtmlToken token;
    while (tokens_.Next(&token) && !(in_body_ && token.offset >= kSearched)) {
      in_body_ = in_body_ || token.Ends("head") ||
                 (token.kind == HtmlToken::Kind::kStartTag && StartsBody(token.name));
      Declaration found;
      if (token.Starts("meta")) {
        found =
            DeclarationOfMeta(token, html_.substr(token.offset, tokens_.Position() - token.offset));
      } else if (token.kind == HtmlToken::Kind::kOther && token.content.starts_with("<?xml ")) {
        found = {ValueIn(token.content, "encoding"), {}, true};
        if (!CodePageFromLabel(found.label)) found = {};
      }
      if (!found.label.empty()) return found;
    }
    return {};
  }

 private:
  const std::string_view html_;
  HtmlTokenizer tokens_;
  bool in_body_ = false;
};

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
  DeclarationFinder declarations(html);
  while (true) {
    const Declaration found = declarations.Next();
    if (found.label.empty()) return of_xml;
    if (!found.is_xml) return CodePageFromLabel(found.label);
    of_xml = CodePageFromLabel(found.label);
  }
}

std::optional<int> CodePageOfPage(std::string_view html) {
  if (html.starts_with(kUtf8Mark)) return kUtf8CodePage;
  const std::optional<int> declared = DeclaredCodePage(html);
  const std::string_view past_ascii = html.substr(AsciiPrefix(html));
  if (past_ascii.empty()) return declared;
  if (IsUtf8(past_ascii)) {
    const bool is_other = declared && declared != kUtf8CodePage;
    return is_other && !IsPlainlyUtf8(past_ascii, *declared) ? declared : kUtf8CodePage;
  }
  if (declared == kUtf8CodePage && !HoldsUtf8Character(past_ascii)) return std::nullopt;
  return declared;
}

std::optional<std::string> WithUtf8Declared(std::string_view html) {
  const std::optional<int> declared = DeclaredCodePage(html);
  if (!declared || declared == kUtf8CodePage || html.starts_with(kUtf8Mark) ||
      CodePageOfPage(html) != kUtf8CodePage) {
    return std::nullopt;
  }
  constexpr std::string_view kElement =
      "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=utf-8\"";
  std::string changed;
  std::size_t copied = 0;  // bytes of the page that `changed` has
  DeclarationFinder declarations(html);
  while (true) {
    const Declaration found = declarations.Next();
    if (found.label.empty()) break;
    if (CodePageFromLabel(found.label) == kUtf8CodePage) continue;
    const std::string_view replaced = found.element.empty() ? found.label : found.element;
    const auto start = static_cast<std::size_t>(replaced.data() - html.data());
    changed.append(html.substr(copied, start - copied));
    copied = start + replaced.size();
    if (found.element.empty()) {
      changed.append("utf-8");
    } else {
      changed.append(kElement).append(found.element.ends_with("/>") ? " />" : ">");
    }
  }
  return changed.append(html.substr(copied));
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
