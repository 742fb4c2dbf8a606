#pragma once

#include <string>

#include "system/error.h"

namespace scrivo {

// The Error for a failure of the system: `code` is an errno value, `path` what it is about. A
// missing file in an existing folder is kFileNotFound, in a missing one kPathNotFound.
Error SystemError(int code, const std::string& path);

}  // namespace scrivo
