#include "exporter/language_tag.h"

namespace scrivo {

std::string_view LanguageTag(std::uint32_t lcid) {
  // Chinese and Portuguese are written in more than one way.
  switch (lcid) {
    case 0x0404:
    case 0x0C04:
    case 0x1404:
      return "zh-Hant";
    case 0x0804:
    case 0x1004:
      return "zh-Hans";
    case 0x0416:
      return "pt-BR";
  }
  struct Language {
    std::uint32_t primary;
    std::string_view tag;
  };
  constexpr Language kLanguages[] = {
      {0x01, "ar"}, {0x02, "bg"}, {0x03, "ca"}, {0x04, "zh"}, {0x05, "cs"}, {0x06, "da"},
      {0x07, "de"}, {0x08, "el"}, {0x09, "en"}, {0x0A, "es"}, {0x0B, "fi"}, {0x0C, "fr"},
      {0x0D, "he"}, {0x0E, "hu"}, {0x0F, "is"}, {0x10, "it"}, {0x11, "ja"}, {0x12, "ko"},
      {0x13, "nl"}, {0x14, "nb"}, {0x15, "pl"}, {0x16, "pt"}, {0x18, "ro"}, {0x19, "ru"},
      {0x1A, "hr"}, {0x1B, "sk"}, {0x1C, "sq"}, {0x1D, "sv"}, {0x1E, "th"}, {0x1F, "tr"},
      {0x21, "id"}, {0x22, "uk"}, {0x23, "be"}, {0x24, "sl"}, {0x25, "et"}, {0x26, "lv"},
      {0x27, "lt"}, {0x29, "fa"}, {0x2A, "vi"}, {0x2B, "hy"}, {0x2D, "eu"}, {0x2F, "mk"},
      {0x36, "af"}, {0x37, "ka"}, {0x39, "hi"}, {0x3E, "ms"}, {0x3F, "kk"}, {0x56, "gl"}};
  for (const Language& language : kLanguages) {
    if (language.primary == (lcid & 0x3FF)) return language.tag;
  }
  return "en";
}

}  // namespace scrivo
