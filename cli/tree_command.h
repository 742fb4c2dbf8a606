#pragma once

#include "cli/compile_options.h"
#include "ui/console/console.h"

namespace scrivo {

// Prints the web's contents, each node with its label and its page's location, and then the pages
// that the contents do not show. Returns the exit status. Throws Error with a text for the user.
int PrintTree(const CompileOptions& options, Console& console);

}  // namespace scrivo
