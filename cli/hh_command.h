#pragma once

// What the program `hh` does: hh -decompile FOLDER FILE.

#include <iosfwd>
#include <string>
#include <vector>

namespace scrivo {

// Runs the program with `arguments` (UTF-8, without its name). Prints nothing but complaints, to
// `err`, and with -v the files written, one a line, to `out`. Returns the exit status: 0 when all
// was unpacked under its own name, 1 when not, 2 when the arguments are no such command line.
int RunHh(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err);

}  // namespace scrivo
