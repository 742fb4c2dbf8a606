#pragma once

#include <string>

namespace scrivo {

// A new temporary path in the working folder, ending in ".tmp". Raises Error (kPathNotFound)
// naming the folder when no file can be made there, as in a web that is not on disk.
std::string NewTemporaryPath();

// The same with every ".tmp" in it, the folder's included, replaced by `extension`.
std::string NewProjectPath(const std::string& extension);

}  // namespace scrivo
