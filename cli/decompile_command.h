#pragma once

#include <string>

#include "ui/console/console.h"

namespace scrivo {

// What the command line says about a help file.
struct HelpFileOptions {
  std::string file;
  std::string folder;     // to unpack it into
  bool internal = false;  // also the streams of the help system
  bool quiet = false;
};

// Unpacks the help file into the folder, as the decompile dialog does. Returns the exit status: 0
// when all went well. Throws Error with a text for the user.
int UnpackFile(const HelpFileOptions& options, Console& console);

}  // namespace scrivo
