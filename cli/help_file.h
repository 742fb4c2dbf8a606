#pragma once

// Opens a help file for the commands that read one.

#include <memory>
#include <string>
#include <vector>

#include "chm/chm_reader.h"

namespace scrivo {

struct HelpFile {
  std::unique_ptr<ChmReader> reader;    // null when the file cannot be used
  std::vector<std::string> complaints;  // what is wrong with it, a line each: "PATH: reason"
};

// Opens the help file at `path` (UTF-8).
HelpFile OpenHelpFile(const std::string& path);

}  // namespace scrivo
