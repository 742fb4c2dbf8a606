#pragma once

// Which code page the bytes of a page, a sitemap or a project line are in.

#include <optional>
#include <string>
#include <string_view>

#include "text/code_page.h"

namespace scrivo {

inline constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

// What the bytes of a page tell of their code page, by the first of these that tells any:
// 1. a UTF-8 byte order mark;
// 2. its declaration, unless the bytes are UTF-8 and plainly meant so: text of ten characters past
//    ASCII is not well-formed by chance, nor is text that the declared code page has no characters
//    for. UTF-8 that is declared where not one character is well-formed counts for nothing;
// 3. that the bytes are well-formed UTF-8 with a character past ASCII.
// Nothing when none does: the reader's own default serves. A page in UTF-16 is to be made UTF-8
// first.
std::optional<int> CodePageOfPage(std::string_view html);

// The code page that a page declares in its head or first kilobytes: by the first META element
// whose charset is known, else by its XML declaration. What stands in comments, scripts, styles and
// titles is not a declaration, and UTF-16, in which it could not be read, means UTF-8.
std::optional<int> DeclaredCodePage(std::string_view html);

// A page whose declarations name another code page than UTF-8, which its bytes are by plain
// evidence, with "utf-8" in their place: a viewer believes what a page declares. The short form of
// the declaration, <meta charset=NAME>, becomes the long one, which old viewers know too. Nothing
// when that is not so. A page that begins with a byte order mark stays as it is, since viewers
// believe that.
std::optional<std::string> WithUtf8Declared(std::string_view html);

// A document that begins with a UTF-16 byte order mark as UTF-8, with a mark of its own; nothing
// when it does not begin so. Half a surrogate pair becomes U+FFFD, half a unit at the end is
// dropped.
std::optional<std::string> Utf16AsUtf8(std::string_view bytes);

// A short text such as a project line: UTF-8 when it is well-formed UTF-8 with a character past
// ASCII, else `code_page`. Gives UTF-8.
std::string DecodeGuessing(std::string_view bytes, int code_page,
                           Undefined undefined = Undefined::kReplaced);

}  // namespace scrivo
