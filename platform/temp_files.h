#pragma once

#include <string>

#include "platform/globals.h"

namespace scrivo {

// A path in `folder` that no file has: the first three characters of `prefix`, a number in
// hexadecimal digits, ".tmp". The file is made and removed again, so only the name is reserved.
// "" when the folder is missing or closed to writing and, in the Windows style, when the path is
// longer than 127 bytes of ANSI text. Never raises.
std::string GetTempFile(const std::string& folder, const std::string& prefix,
                        PathStyle style = Globals().path_style);

// The short form of an existing path, one that a command line takes without quotes (see
// Files::ShortForm); "" when there is none and, in the Windows style, when it does not fit 260
// bytes of ANSI text with its NUL. Never raises.
std::string GetShortPath(const std::string& path, PathStyle style = Globals().path_style);

}  // namespace scrivo
