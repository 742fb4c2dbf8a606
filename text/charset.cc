#include <algorithm>
#include <string>

#include "text/code_page.h"

namespace scrivo {
namespace {

struct NamedCodePage {
  std::string_view name;
  int code_page;
};

// The labels that browsers take for each code page, separated by blanks; those made of its number
// come below. The older ISO labels stand for the Windows page that contains theirs, as in browsers:
// authors say "iso-8859-1" and write the quotes and dashes of windows-1252.
constexpr struct {
  int code_page;
  std::string_view labels;
} kCharsets[] = {
    {kUtf8CodePage, "unicode-1-1-utf-8 unicode11utf8 unicode20utf8 utf-8 utf8 x-unicode20utf8"},
    {866, "866 csibm866 ibm866"},
    {28592,
     "csisolatin2 iso-8859-2 iso-ir-101 iso8859-2 iso88592 iso_8859-2 iso_8859-2:1987 l2 latin2"},
    {28593,
     "csisolatin3 iso-8859-3 iso-ir-109 iso8859-3 iso88593 iso_8859-3 iso_8859-3:1988 l3 latin3"},
    {28594,
     "csisolatin4 iso-8859-4 iso-ir-110 iso8859-4 iso88594 iso_8859-4 iso_8859-4:1988 l4 latin4"},
    {28595,
     "csisolatincyrillic cyrillic iso-8859-5 iso-ir-144 iso8859-5 iso88595 iso_8859-5 "
     "iso_8859-5:1988"},
    {28596,
     "arabic asmo-708 csiso88596e csiso88596i csisolatinarabic ecma-114 iso-8859-6 iso-8859-6-e "
     "iso-8859-6-i iso-ir-127 iso8859-6 iso88596 iso_8859-6 iso_8859-6:1987"},
    {28597,
     "csisolatingreek ecma-118 elot_928 greek greek8 iso-8859-7 iso-ir-126 iso8859-7 iso88597 "
     "iso_8859-7 iso_8859-7:1987 sun_eu_greek"},
    {1255,
     "csiso88598e csiso88598i csisolatinhebrew hebrew iso-8859-8 iso-8859-8-e iso-8859-8-i "
     "iso-ir-138 iso8859-8 iso88598 iso_8859-8 iso_8859-8:1988 logical visual"},
    {28600, "csisolatin6 iso-8859-10 iso-ir-157 iso8859-10 iso885910 l6 latin6"},
    {28603, "iso-8859-13 iso8859-13 iso885913"},
    {28604, "iso-8859-14 iso8859-14 iso885914"},
    {28605, "csisolatin9 iso-8859-15 iso8859-15 iso885915 iso_8859-15 l9"},
    {28606, "iso-8859-16"},
    {20866, "cskoi8r koi koi8 koi8-r koi8_r"},
    {21866, "koi8-ru koi8-u"},
    {10000, "csmacintosh mac macintosh x-mac-roman"},
    {10007, "x-mac-cyrillic x-mac-ukrainian"},
    {874, "dos-874 iso-8859-11 iso8859-11 iso885911 tis-620"},
    {1252,
     "ansi_x3.4-1968 ascii cp819 csisolatin1 ibm819 iso-8859-1 iso-ir-100 iso8859-1 iso88591 "
     "iso_8859-1 iso_8859-1:1987 l1 latin1 us-ascii x-ansi x-user-defined"},
    {1254,
     "csisolatin5 iso-8859-9 iso-ir-148 iso8859-9 iso88599 iso_8859-9 iso_8859-9:1989 l5 latin5"},
    {936, "chinese csgb2312 csiso58gb231280 gb18030 gb2312 gb_2312 gb_2312-80 gbk iso-ir-58 x-gbk"},
    {950, "big5 big5-hkscs cn-big5 csbig5 x-x-big5"},
    {932, "csshiftjis ms_kanji shift-jis shift_jis sjis windows-31j x-sjis"},
    {949,
     "cseuckr csksc56011987 euc-kr iso-ir-149 korean ks_c_5601-1987 ks_c_5601-1989 ksc5601 "
     "ksc_5601"},
};

bool HoldsLabel(std::string_view labels, std::string_view label) {
  while (!labels.empty()) {
    const std::size_t end = std::min(labels.find(' '), labels.size());
    if (labels.substr(0, end) == label) return true;
    labels.remove_prefix(std::min(end + 1, labels.size()));
  }
  return false;
}

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
  if (number == kUtf8CodePage) return number;
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
  for (const auto& known : kCharsets) {
    if (HoldsLabel(known.labels, name)) return known.code_page;
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
