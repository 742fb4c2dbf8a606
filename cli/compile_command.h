#pragma once

#include "cli/compile_options.h"
#include "ui/console/console.h"

namespace scrivo {

// Compiles a web into a help file. Returns the exit status: 0 when the file was made, 1 when it
// was not, or when there were messages and `options.strict` is set. An existing file is lost only
// to a new one. Throws Error with a text for the user; kUserInterrupt when the program is to end.
int CompileWeb(const CompileOptions& options, Console& console);

// The same for a help file that is only a step on the way: what was made is not told.
int CompileWebForUse(const CompileOptions& options, Console& console);

// Writes the project files of a web, keeps them and prints their paths. Returns the exit status.
// Throws Error as above; then no project file is left.
int WriteProjectOf(const CompileOptions& options, Console& console);

}  // namespace scrivo
