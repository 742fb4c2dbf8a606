#include <algorithm>
#include <string>

#include "text/code_page.h"

namespace scrivo {
namespace {

struct NamedCodePage {
  std::string_view name;
  int code_page;
};

// Names as pages write them. The older ISO names stand for the Windows page that contains them, as
// in browsers: authors say "iso-8859-1" and write the quotes and dashes of windows-1252.
constexpr NamedCodePage kCharsets[] = {
    {"utf-8", kUtf8CodePage}, {"utf8", kUtf8CodePage},
    {"us-ascii", 1252},       {"ascii", 1252},
    {"iso-8859-1", 1252},     {"iso8859-1", 1252},
    {"iso_8859-1", 1252},     {"latin1", 1252},
    {"x-ansi", 1252},         {"iso-8859-2", 28592},
    {"latin2", 28592},        {"iso-8859-5", 28595},
    {"iso-8859-7", 28597},    {"iso-8859-8", 1255},
    {"iso-8859-8-i", 1255},   {"iso-8859-9", 1254},
    {"latin5", 1254},         {"iso-8859-11", 874},
    {"iso-8859-15", 28605},   {"tis-620", 874},
    {"koi8-r", 20866},        {"koi8-u", 21866},
    {"ibm866", 866},          {"shift_jis", 932},
    {"shift-jis", 932},       {"sjis", 932},
    {"x-sjis", 932},          {"ms_kanji", 932},
    {"windows-31j", 932},     {"gb2312", 936},
    {"gb_2312-80", 936},      {"gbk", 936},
    {"x-gbk", 936},           {"gb18030", 936},
    {"euc-kr", 949},          {"ks_c_5601-1987", 949},
    {"korean", 949},          {"big5", 950},
    {"big5-hkscs", 950},      {"x-x-big5", 950},
};

bool IsKnown(int code_page) {
  return (code_page >= 1250 && code_page <= 1258) || code_page == 866 || code_page == 874 ||
         IsDoubleByte(code_page);
}

std::optional<int> NumberAfter(std::string_view name, std::string_view prefix) {
  if (!name.starts_with(prefix)) return std::nullopt;
  name.remove_prefix(prefix.size());
  if (name.empty() || name.size() > 5) return std::nullopt;
  int number = 0;
  for (const char c : name) {
    if (c < '0' || c > '9') return std::nullopt;
    number = number * 10 + (c - '0');
  }
  return IsKnown(number) ? std::optional<int>(number) : std::nullopt;
}

}  // namespace

std::optional<int> CodePageFromName(std::string_view charset) {
  constexpr std::string_view kIgnored = " \t\r\n\f\"'";
  const std::size_t begin = charset.find_first_not_of(kIgnored);
  if (begin == std::string_view::npos) return std::nullopt;
  charset = charset.substr(begin, charset.find_last_not_of(kIgnored) - begin + 1);
  std::string name(charset);
  for (char& c : name) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  for (const NamedCodePage& known : kCharsets) {
    if (known.name == name) return known.code_page;
  }
  for (const std::string_view prefix : {"windows-", "x-cp", "cp", "ms"}) {
    if (const auto number = NumberAfter(name, prefix)) return number;
  }
  return std::nullopt;
}

int CodePageOfLanguage(unsigned lcid) {
  switch (lcid & 0xFFFF) {  // languages written in two scripts
    case 0x0404:            // Chinese, Taiwan
    case 0x0C04:            // Chinese, Hong Kong
    case 0x1404:            // Chinese, Macau
    case 0x7C04:            // Chinese, traditional
      return 950;
    case 0x0C1A:  // Serbian, Cyrillic
    case 0x1C1A:
    case 0x201A:  // Bosnian, Cyrillic
    case 0x281A:
    case 0x301A:
    case 0x082C:  // Azeri, Cyrillic
    case 0x0843:  // Uzbek, Cyrillic
      return 1251;
  }
  switch (lcid & 0x3FF) {
    case 0x04:
      return 936;
    case 0x11:
      return 932;
    case 0x12:
      return 949;
    case 0x1E:
      return 874;
    case 0x05:  // Czech
    case 0x0E:  // Hungarian
    case 0x15:  // Polish
    case 0x18:  // Romanian
    case 0x1A:  // Croatian, Serbian, Bosnian
    case 0x1B:  // Slovak
    case 0x1C:  // Albanian
    case 0x24:  // Slovenian
    case 0x42:  // Turkmen
      return 1250;
    case 0x02:  // Bulgarian
    case 0x19:  // Russian
    case 0x22:  // Ukrainian
    case 0x23:  // Belarusian
    case 0x28:  // Tajik
    case 0x2F:  // Macedonian
    case 0x3F:  // Kazakh
    case 0x40:  // Kyrgyz
    case 0x44:  // Tatar
    case 0x50:  // Mongolian
      return 1251;
    case 0x08:
      return 1253;
    case 0x1F:  // Turkish
    case 0x2C:  // Azeri, Latin
    case 0x43:  // Uzbek, Latin
      return 1254;
    case 0x0D:
      return 1255;
    case 0x01:  // Arabic
    case 0x20:  // Urdu
    case 0x29:  // Persian
      return 1256;
    case 0x25:  // Estonian
    case 0x26:  // Latvian
    case 0x27:  // Lithuanian
      return 1257;
    case 0x2A:
      return 1258;
    default:
      return 1252;
  }
}

}  // namespace scrivo
