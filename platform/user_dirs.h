#pragma once

#include <string>

namespace scrivo {

// The user's documents folder as the text of a "user-dirs.dirs" file (xdg-user-dirs) tells it: the
// last line XDG_DOCUMENTS_DIR="…", whose value begins with "$HOME/" or "/". Without one, the
// folder "Documents" in `home`.
std::string DocumentsFolder(const std::string& user_dirs, const std::string& home);

}  // namespace scrivo
