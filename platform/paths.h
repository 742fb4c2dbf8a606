#pragma once

#include <string>

#include "platform/globals.h"

namespace scrivo {

// What follows the last separator of a path ("\" or "/", by the style alone); all of a path that
// has none.
std::string GetFileName(const std::string& path, PathStyle style = Globals().path_style);

// The part of a path before its last separator; "" when there is none.
std::string GetFolder(const std::string& path, PathStyle style = Globals().path_style);

// `folder`, a separator and `name`. Nothing is left out when `folder` ends in a separator itself:
// systems take two for one.
std::string JoinPath(const std::string& folder, const std::string& name,
                     PathStyle style = Globals().path_style);

// The folder that a "file" address means, such as C:\Manuals for file:///C:/Manuals in the Windows
// style and /srv/manuals for file:///srv/manuals in the POSIX style. An address that does not begin
// with "file" (case counts) is the result as it is. `address` is rewritten with the result.
std::string UrlToPath(std::string& address, PathStyle style = Globals().path_style);

// A path is not text: bytes in the POSIX style, UTF-16 (inside: text/wtf8.h) in the Windows style.
// Where a path, or an address made of one, stands in ANSI text, such as a project file or the
// registry, it must still find its file, which "?" would not. In the POSIX style a name always
// stays as it is.

// The name as files in ANSI text hold it. In the Windows style these are the bytes of the code
// page, or, when that lacks a character of the name, the name as it is inside, for readers that
// take UTF-8.
std::string NameToAnsi(const std::string& name, PathStyle style = Globals().path_style);

// A name or text as the registry holds it, and back. As above; what the code page cannot hold
// begins with a byte order mark, by which it is known.
std::string ToRegistry(const std::string& text, PathStyle style = Globals().path_style);
std::string FromRegistry(const std::string& bytes, PathStyle style = Globals().path_style);

// The name as text, to show it: what is not UTF-8 is taken for text in the ANSI code page.
std::string NameText(const std::string& name);

}  // namespace scrivo
