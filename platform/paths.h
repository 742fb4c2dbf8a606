#pragma once

#include <string>

#include "platform/globals.h"
#include "platform/path_style.h"

namespace scrivo {

// The part of a path after its last separator ("\" or "/", by the style alone); the whole path
// when there is none.
std::string GetFileName(const std::string& path, PathStyle style = Globals().path_style);

// The part of a path before its last separator; "" when there is none.
std::string GetFolder(const std::string& path, PathStyle style = Globals().path_style);

// `folder`, a separator and `name`. Nothing is left out when `folder` ends in a separator itself:
// systems take two for one.
std::string JoinPath(const std::string& folder, const std::string& name,
                     PathStyle style = Globals().path_style);

// The folder that a "file" address means: file:///C:/Webs/site gives C:\Webs\site in the Windows
// style and file:///srv/site gives /srv/site in the POSIX style. An address that does not begin
// with "file" (case counts) is the result as it is. `address` is rewritten with the result.
std::string UrlToPath(std::string& address, PathStyle style = Globals().path_style);

}  // namespace scrivo
