#pragma once

// What the program `hhc` does: hhc [options] project.hhp.

#include <ostream>
#include <string>
#include <vector>

namespace scrivo {

// What the program finds around it.
struct HhcSurroundings {
  std::string working_folder;     // full path, UTF-8, "/" separators
  bool gnu = false;               // the environment variable HHC_GNU is set
  std::string source_date_epoch;  // the environment variable of that name
};

// Runs the program with `arguments` (UTF-8, without its name). Returns the exit status: 1 when the
// help file was made and 0 when not, as callers of help compilers expect; with --gnu or HHC_GNU 0
// when it was made, 1 when not, 2 for a wrong command line.
int RunHhc(const std::vector<std::string>& arguments, const HhcSurroundings& surroundings,
           std::ostream& out, std::ostream& err);

}  // namespace scrivo
