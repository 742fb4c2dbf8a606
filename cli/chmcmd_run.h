#pragma once

#include <ostream>
#include <string>

namespace scrivo {

// Compiles the help project `project` (a full path) with chmcmd and writes to `out` what the
// vendor's compiler would: its lines, its messages, and at the end the size of what was made.
// Returns the vendor's exit status: 1 when the compiled file was made, 0 when not; then there is
// none, not even an empty or an old one. Reaches the system through TheServices().
int CompileWithChmcmd(const std::string& project, std::ostream& out);

}  // namespace scrivo
