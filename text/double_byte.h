#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "text/code_page.h"

namespace scrivo {

// The double-byte code pages: on Windows converted by the system, elsewhere by tables of our own.
// The contract is that of ToUtf8 and FromUtf8 in code_page.h; `code_page` is one for which
// IsDoubleByte is true.
std::string DoubleByteToUtf8(std::string_view bytes, int code_page, Undefined undefined);
std::string DoubleByteFromUtf8(std::string_view utf8, int code_page, std::size_t* lost,
                               Undefined undefined);

}  // namespace scrivo
