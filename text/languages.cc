#include "text/languages.h"

#include <algorithm>
#include <cstdio>
#include <iterator>

#include "text/ascii_text.h"
#include "text/code_page.h"

namespace scrivo {
namespace {

struct Language {
  std::uint32_t lcid;
  std::string_view tag;
  std::string_view name;
};

// Of the entries of one language the first stands for it where no country is told.
constexpr Language kLanguages[] = {
    {0x436, "af", "Afrikaans"},
    {0x41C, "sq", "Albanian"},
    {0x401, "ar-sa", "Arabic (Saudi Arabia)"},
    {0xC01, "ar-eg", "Arabic (Egypt)"},
    {0x42D, "eu", "Basque"},
    {0x423, "be", "Belarusian"},
    {0x402, "bg", "Bulgarian"},
    {0x403, "ca", "Catalan"},
    {0x804, "zh-cn", "Chinese (PRC)"},
    {0x404, "zh-tw", "Chinese (Taiwan)"},
    {0xC04, "zh-hk", "Chinese (Hong Kong)"},
    {0x1004, "zh-sg", "Chinese (Singapore)"},
    {0x41A, "hr", "Croatian"},
    {0x405, "cs", "Czech"},
    {0x406, "da", "Danish"},
    {0x413, "nl-nl", "Dutch (Netherlands)"},
    {0x813, "nl-be", "Dutch (Belgium)"},
    {0x409, "en-us", "English (United States)"},
    {0x809, "en-gb", "English (United Kingdom)"},
    {0xC09, "en-au", "English (Australia)"},
    {0x1009, "en-ca", "English (Canada)"},
    {0x1409, "en-nz", "English (New Zealand)"},
    {0x1809, "en-ie", "English (Ireland)"},
    {0x425, "et", "Estonian"},
    {0x429, "fa", "Persian"},
    {0x40B, "fi", "Finnish"},
    {0x40C, "fr-fr", "French (France)"},
    {0x80C, "fr-be", "French (Belgium)"},
    {0xC0C, "fr-ca", "French (Canada)"},
    {0x100C, "fr-ch", "French (Switzerland)"},
    {0x407, "de-de", "German (Germany)"},
    {0x807, "de-ch", "German (Switzerland)"},
    {0xC07, "de-at", "German (Austria)"},
    {0x408, "el", "Greek"},
    {0x40D, "he", "Hebrew"},
    {0x439, "hi", "Hindi"},
    {0x40E, "hu", "Hungarian"},
    {0x40F, "is", "Icelandic"},
    {0x421, "id", "Indonesian"},
    {0x410, "it-it", "Italian (Italy)"},
    {0x810, "it-ch", "Italian (Switzerland)"},
    {0x411, "ja", "Japanese"},
    {0x43F, "kk", "Kazakh"},
    {0x412, "ko", "Korean"},
    {0x426, "lv", "Latvian"},
    {0x427, "lt", "Lithuanian"},
    {0x42F, "mk", "Macedonian"},
    {0x414, "nb", "Norwegian (Bokmal)"},
    {0x814, "nn", "Norwegian (Nynorsk)"},
    {0x415, "pl", "Polish"},
    {0x816, "pt-pt", "Portuguese (Portugal)"},
    {0x416, "pt-br", "Portuguese (Brazil)"},
    {0x418, "ro", "Romanian"},
    {0x419, "ru", "Russian"},
    {0xC1A, "sr", "Serbian (Cyrillic)"},
    {0x81A, "sr-latn", "Serbian (Latin)"},
    {0x41B, "sk", "Slovak"},
    {0x424, "sl", "Slovenian"},
    {0x40A, "es-es", "Spanish (Spain)"},
    {0x80A, "es-mx", "Spanish (Mexico)"},
    {0x2C0A, "es-ar", "Spanish (Argentina)"},
    {0x41D, "sv", "Swedish"},
    {0x41E, "th", "Thai"},
    {0x41F, "tr", "Turkish"},
    {0x422, "uk", "Ukrainian"},
    {0x420, "ur", "Urdu"},
    {0x42A, "vi", "Vietnamese"},
};

// Tags that mean an entry of another name.
constexpr struct {
  std::string_view tag, meant;
} kOtherTags[] = {{"no", "nb"},         {"iw", "he"},         {"in", "id"},
                  {"zh-hans", "zh-cn"}, {"zh-hant", "zh-tw"}, {"zh-mo", "zh-hk"}};

constexpr std::uint32_t kPrimary = 0x3FF;  // the bits of the language without its country

std::string_view Primary(std::string_view tag) { return tag.substr(0, tag.find('-')); }

const Language* WithNumber(std::uint32_t lcid) {
  const auto found = std::find_if(std::begin(kLanguages), std::end(kLanguages),
                                  [=](const Language& known) { return known.lcid == lcid; });
  return found == std::end(kLanguages) ? nullptr : &*found;
}

}  // namespace

std::string_view LanguageName(std::uint32_t lcid) {
  if (const Language* language = WithNumber(lcid)) return language->name;
  for (const Language& known : kLanguages) {
    if ((known.lcid & kPrimary) == (lcid & kPrimary)) {
      return known.name.substr(0, known.name.find(" ("));
    }
  }
  return {};
}

std::uint32_t LanguageFromTag(std::string_view tag) {
  std::string small = AsciiLowered(Trimmed(tag));
  std::replace(small.begin(), small.end(), '_', '-');
  for (const auto& other : kOtherTags) {
    if (small == other.tag) small = other.meant;
  }
  if (small.empty()) return 0;
  for (const Language& known : kLanguages) {
    if (known.tag == small) return known.lcid;
  }
  for (const Language& known : kLanguages) {
    if (Primary(known.tag) == Primary(small)) return known.lcid;
  }
  return 0;
}

std::string_view TagOfLanguage(std::uint32_t lcid) {
  const Language* language = WithNumber(lcid);
  return language == nullptr ? std::string_view() : language->tag;
}

std::uint32_t LanguageOfCodePage(int code_page) {
  switch (code_page) {
    case 874:
      return 0x41E;
    case 932:
      return 0x411;
    case 936:
      return 0x804;
    case 949:
      return 0x412;
    case 950:
      return 0x404;
    case 1250:
      return 0x415;
    case 1251:
      return 0x419;
    case 1253:
      return 0x408;
    case 1254:
      return 0x41F;
    case 1255:
      return 0x40D;
    case 1256:
      return 0x401;
    case 1257:
      return 0x427;
    case 1258:
      return 0x42A;
    default:
      return 0x409;
  }
}

int AnsiCodePageFor(int code_page) {
  switch (code_page) {
    case 866:
    case 10007:
    case 20866:
    case 21866:
    case 28595:
      return 1251;
    case 28592:
    case 28606:
      return 1250;
    case 28593:
      return 1254;
    case 28594:
    case 28600:
    case 28603:
      return 1257;
    case 28596:
      return 1256;
    case 28597:
      return 1253;
    case 10000:
    case 28604:
    case 28605:
      return 1252;
    default:
      return code_page;
  }
}

std::string LanguageOption(std::uint32_t lcid) {
  char number[16];
  std::snprintf(number, sizeof number, "0x%x", static_cast<unsigned>(lcid));
  const std::string_view name = LanguageName(lcid);
  return name.empty() ? number : std::string(number).append(" ").append(name);
}

}  // namespace scrivo
