#pragma once

#include <string>
#include <string_view>

namespace scrivo {

// UTF-16 as Windows has it in file names and in the texts of objects, in bytes, and back: nothing
// is lost either way. It is UTF-8, except that a surrogate that stands alone is three bytes too,
// as UTF-8 would have it if it could (WTF-8).
std::string FromWindowsText(std::u16string_view wide);

// Bytes that are neither UTF-8 nor such a surrogate become U+FFFD.
std::u16string ToWindowsText(std::string_view text);

}  // namespace scrivo
