#pragma once

// Text as literals of the languages that an exported site is made of. What comes from a help file
// is data: it never ends the literal that it stands in.

#include <cstdint>
#include <string>
#include <string_view>

namespace scrivo {

// Appends UTF-8 text as a JavaScript string, quotes included. Also safe within a script element.
void AppendScriptString(std::string_view utf8, std::string* out);

// Appends UTF-8 text for HTML, between tags or inside a quoted attribute.
void AppendHtmlText(std::string_view utf8, std::string* out);

// Appends a path as an address: what has a meaning in addresses, and all that is not ASCII, becomes
// %XX. "/" stays.
void AppendAddress(std::string_view path, std::string* out);

// Appends a number as the search reads it (reader/search.js, Numbers): one character up to 56, two
// up to 1880.
void AppendNumber(std::uint64_t number, std::string* out);

// Takes such a number off the front of `*text`; 0 when there is none.
std::uint64_t TakeNumber(std::string_view* text);

}  // namespace scrivo
