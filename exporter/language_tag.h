#pragma once

#include <cstdint>
#include <string_view>

namespace scrivo {

// The tag that HTML has for the language of a Windows language number (LCID): "ja" for 0x411. "en"
// for a language that is unknown here.
std::string_view LanguageTag(std::uint32_t lcid);

}  // namespace scrivo
