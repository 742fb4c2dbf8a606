#pragma once

#include <string>

#include "platform/globals.h"
#include "platform/path_style.h"

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

}  // namespace scrivo
