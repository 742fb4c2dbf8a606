#include "project/sitemap_encoding.h"

#include <algorithm>
#include <cstdint>

#include "html/charset.h"
#include "html/tokenizer.h"
#include "text/ascii_text.h"
#include "text/code_page.h"
#include "text/html_entities.h"

namespace scrivo {
namespace {

std::string_view CharsetName(int code_page) {
  constexpr struct {
    int code_page;
    std::string_view name;
  } kNames[] = {{874, "windows-874"},   {932, "shift_jis"},     {936, "gb2312"},
                {949, "euc-kr"},        {950, "big5"},          {1250, "windows-1250"},
                {1251, "windows-1251"}, {1253, "windows-1253"}, {1254, "windows-1254"},
                {1255, "windows-1255"}, {1256, "windows-1256"}, {1257, "windows-1257"},
                {1258, "windows-1258"}};
  for (const auto& known : kNames) {
    if (known.code_page == code_page) return known.name;
  }
  return "windows-1252";
}

// The document with its non-ASCII characters in the code page, those of its references too: a
// reference to one of the first 256 characters would mean a byte of the code page from now on.
std::string Encoded(std::string_view utf8, int code_page, std::size_t* lost) {
  std::string out;
  out.reserve(utf8.size());
  while (true) {
    const std::size_t ampersand = utf8.find('&');
    out += EncodedWithReferences(utf8.substr(0, ampersand), code_page, lost);
    if (ampersand == std::string_view::npos) return out;
    utf8.remove_prefix(ampersand);
    std::size_t length = 0;
    const char32_t character = ReadEntity(utf8, EntityPlace::kAttribute, &length);
    if (length == 0 || character < 0x80) {
      length = std::max<std::size_t>(length, 1);
      out += utf8.substr(0, length);
    } else {
      std::string bytes;
      AppendUtf8(character, &bytes);
      out += EncodedWithReferences(bytes, code_page, lost);
    }
    utf8.remove_prefix(length);
  }
}

// Where in a tag the label stands behind `name` and "=", quotes left out; empty when it is not
// there.
std::string_view LabelIn(std::string_view tag, std::string_view name) {
  for (std::size_t at = 0; at + name.size() < tag.size(); ++at) {
    if (!StartsWithIgnoringCase(tag.substr(at), name)) continue;
    const std::size_t equals = tag.find_first_not_of(" \t\r\n", at + name.size());
    if (equals == std::string_view::npos || tag[equals] != '=') continue;
    const std::size_t start = tag.find_first_not_of(" \t\r\n\"'", equals + 1);
    if (start == std::string_view::npos) return {};
    return tag.substr(start, tag.find_first_of(" \t\r\n\"';/?", start) - start);
  }
  return {};
}

// The document with another charset wherever it declares UTF-8 or UTF-16.
std::string WithCharset(std::string_view html, std::string_view charset) {
  std::string out;
  std::size_t copied = 0;
  HtmlTokenizer tokens(html);
  HtmlToken token;
  while (tokens.Next(&token)) {
    const bool is_xml = token.kind == HtmlToken::Kind::kOther && token.content.starts_with("<?xml");
    if (!is_xml && !token.Starts("meta")) continue;
    const std::string_view label = LabelIn(token.content, is_xml ? "encoding" : "charset");
    if (!StartsWithIgnoringCase(label, "utf") && !StartsWithIgnoringCase(label, "unicode")) {
      continue;
    }
    const auto start = static_cast<std::size_t>(label.data() - html.data());
    out.append(html.substr(copied, start - copied)).append(charset);
    copied = start + label.size();
  }
  return out.append(html.substr(copied));
}

}  // namespace

std::string EncodedWithReferences(std::string_view utf8, int code_page, std::size_t* lost,
                                  Undefined undefined) {
  std::size_t lost_here = 0;
  std::string encoded = FromUtf8(utf8, code_page, &lost_here, undefined);
  if (lost_here == 0) return encoded;
  *lost += lost_here;
  encoded.clear();
  while (!utf8.empty()) {
    std::string_view rest = utf8;
    const char32_t character = NextUtf8(&rest);
    lost_here = 0;
    const std::string bytes =
        FromUtf8(utf8.substr(0, utf8.size() - rest.size()), code_page, &lost_here, undefined);
    if (lost_here > 0 && (character >= 0x100 || IsDoubleByte(code_page))) {
      encoded.append("&#")
          .append(std::to_string(static_cast<std::uint32_t>(character)))
          .append(";");
    } else {
      encoded += bytes;
    }
    utf8 = rest;
  }
  return encoded;
}

std::optional<std::string> SitemapForViewers(std::string_view bytes, int code_page,
                                             std::size_t* lost) {
  const std::optional<std::string> decoded = Utf16AsUtf8(bytes);
  std::string_view text = decoded ? *decoded : bytes;
  const bool is_utf8 = CodePageOfPage(text).value_or(code_page) == kUtf8CodePage;
  if (code_page == kUtf8CodePage || !is_utf8 || AsciiPrefix(text) == text.size()) {
    return std::nullopt;
  }
  if (text.starts_with(kUtf8Mark)) text.remove_prefix(kUtf8Mark.size());
  return WithCharset(Encoded(text, code_page, lost), CharsetName(code_page));
}

}  // namespace scrivo
