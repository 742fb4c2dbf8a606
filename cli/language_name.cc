#include "cli/language_name.h"

#include <algorithm>
#include <iterator>

namespace scrivo {
namespace {

struct Language {
  std::uint32_t primary;  // the low ten bits of an LCID
  std::string_view name;
};

constexpr Language kLanguages[] = {
    {0x01, "Arabic"},
    {0x02, "Bulgarian"},
    {0x03, "Catalan"},
    {0x04, "Chinese"},
    {0x05, "Czech"},
    {0x06, "Danish"},
    {0x07, "German"},
    {0x08, "Greek"},
    {0x09, "English"},
    {0x0A, "Spanish"},
    {0x0B, "Finnish"},
    {0x0C, "French"},
    {0x0D, "Hebrew"},
    {0x0E, "Hungarian"},
    {0x0F, "Icelandic"},
    {0x10, "Italian"},
    {0x11, "Japanese"},
    {0x12, "Korean"},
    {0x13, "Dutch"},
    {0x14, "Norwegian"},
    {0x15, "Polish"},
    {0x16, "Portuguese"},
    {0x18, "Romanian"},
    {0x19, "Russian"},
    {0x1A, "Croatian or Serbian"},
    {0x1B, "Slovak"},
    {0x1C, "Albanian"},
    {0x1D, "Swedish"},
    {0x1E, "Thai"},
    {0x1F, "Turkish"},
    {0x20, "Urdu"},
    {0x21, "Indonesian"},
    {0x22, "Ukrainian"},
    {0x23, "Belarusian"},
    {0x24, "Slovenian"},
    {0x25, "Estonian"},
    {0x26, "Latvian"},
    {0x27, "Lithuanian"},
    {0x29, "Persian"},
    {0x2A, "Vietnamese"},
    {0x2D, "Basque"},
    {0x2F, "Macedonian"},
    {0x36, "Afrikaans"},
    {0x39, "Hindi"},
};

}  // namespace

std::string_view LanguageName(std::uint32_t lcid) {
  const auto found =
      std::find_if(std::begin(kLanguages), std::end(kLanguages),
                   [lcid](const Language& language) { return language.primary == (lcid & 0x3FF); });
  return found == std::end(kLanguages) ? std::string_view() : found->name;
}

}  // namespace scrivo
