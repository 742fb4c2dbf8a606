#pragma once

// What `scrivo list FILE.chm` does.

#include <iosfwd>
#include <string>

namespace scrivo {

// Prints the files in the help file at `path` (UTF-8) to `out`, in UTF-8: size and name, a line
// each, in the order of the directory, and a last line with their number and total size. With
// `internal` the streams of the help system too. What is wrong goes to `err`. Returns the exit
// status: 0, or 1 when the file or one of its entries cannot be read.
int RunList(const std::string& path, bool internal, std::ostream& out, std::ostream& err);

}  // namespace scrivo
