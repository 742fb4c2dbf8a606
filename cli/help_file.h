#pragma once

// Opens a help file for the commands that read one.

#include <iosfwd>
#include <memory>
#include <string>

#include "chm/chm_reader.h"

namespace scrivo {

struct HelpFile {
  std::unique_ptr<ChmReader> reader;  // null when the file cannot be used
  bool flawless = false;              // whether nothing was wrong with it
};

// Opens the help file at `path` (UTF-8). What is wrong is printed to `err`, a line each, after
// `program` and the path.
HelpFile OpenHelpFile(const std::string& path, const std::string& program, std::ostream& err);

}  // namespace scrivo
