#pragma once

#include "cli/compile_options.h"
#include "ui/console/console.h"

namespace scrivo {

// What the command line says about a check; the web is `web.web`.
struct CheckOptionsGiven {
  CompileOptions web;
  bool json = false;
};

// Prints what is wrong with a web, for people or as JSON. Returns the exit status: 0 when nothing
// was found, 1 when something was. Throws Error with a text for the user.
int CheckWebOf(const CheckOptionsGiven& options, Console& console);

}  // namespace scrivo
