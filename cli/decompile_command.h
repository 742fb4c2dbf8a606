#pragma once

#include <string>

#include "ui/console/console.h"

namespace scrivo {

// What the command line says about a help file.
struct HelpFileOptions {
  std::string file;
  std::string folder;     // to unpack it into
  bool internal = false;  // also the streams of the help system
  bool web = false;       // make a FrontPage web of it
  bool keywords = false;  // with the index as keywords of the pages
  bool quiet = false;
};

// Unpacks the help file into the folder, as the decompile dialog does. Returns the exit status: 0
// when all went well. Throws Error with a text for the user.
//
// With `options.web` the folder becomes a FrontPage web, which is whole or not there at all. What
// of contents and index a web cannot hold is counted.
int UnpackFile(const HelpFileOptions& options, Console& console);

}  // namespace scrivo
