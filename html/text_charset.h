#pragma once

// Which code page the bytes of a text are in.

#include <string>
#include <string_view>

namespace scrivo {

inline constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

// The code page that a page or sitemap names itself: a UTF-8 byte order mark, or the charset of a
// META element among its first kilobytes. 0 when it names none that is known.
int DeclaredCodePage(std::string_view html);

// Whether a text is UTF-8 by its form: it is well-formed and has a character past ASCII.
bool LooksLikeUtf8(std::string_view bytes);

// A short text such as a project line: UTF-8 when it is well-formed UTF-8 with a character past
// ASCII, else `code_page`. Gives UTF-8.
std::string DecodeGuessing(std::string_view bytes, int code_page);

}  // namespace scrivo
