#pragma once

#include <cstdint>
#include <string_view>

namespace scrivo {

// The English name of the language of an LCID ("German" for 0x407, 0x807, ...); empty when it is
// none that help files are known in.
std::string_view LanguageName(std::uint32_t lcid);

}  // namespace scrivo
