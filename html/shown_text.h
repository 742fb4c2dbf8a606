#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "text/code_page.h"

namespace scrivo {

// A page's bytes as the text that a reader sees, in UTF-8: character references replaced, and cut
// before the character that would pass `longest` bytes.
std::string ShownText(std::string_view bytes, int code_page, std::size_t longest,
                      Undefined undefined = Undefined::kReplaced);

// Whether nothing of a UTF-8 text can be seen: it holds blanks, line ends and no-break spaces only.
bool IsBlankText(std::string_view utf8);

}  // namespace scrivo
