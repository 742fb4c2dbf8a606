#pragma once

// What the program `hh` does: hh -decompile FOLDER FILE.

#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace scrivo {

// The command line of the unpacker: -decompile FOLDER FILE.
struct DecompileArguments {
  std::string folder;
  std::string file;
  bool verbose = false;   // -v: print the name of each file written
  bool internal = false;  // --internal: also the streams of the help system
};

// Understands the arguments of a program (without its name); nothing when they are something else
// than a decompile. -v and --internal may stand before -decompile, before FOLDER or at the end.
//
// Callers are known to pass paths with blanks unquoted, so that a path arrives as several
// arguments. They are put together again (with one blank each, more cannot be known) in the one way
// in which `is_file` holds for FILE; when several do, in the one in which `is_folder` holds for
// FOLDER too. Nothing when that leaves none or more than one.
std::optional<DecompileArguments> ParseDecompileArguments(
    const std::vector<std::string>& arguments,
    const std::function<bool(const std::string&)>& is_file,
    const std::function<bool(const std::string&)>& is_folder);

// Runs the program with `arguments` (UTF-8, without its name). Prints nothing but complaints, to
// `err`, and with -v the files written, one a line, to `out`. Returns the exit status: 0 when all
// was unpacked under its own name, 1 when not, 2 when the arguments are no such command line.
int RunHh(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err);

}  // namespace scrivo
