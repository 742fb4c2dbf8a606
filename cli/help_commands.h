#pragma once

// What `scrivo list FILE.chm` and `scrivo info FILE.chm` do.

#include <iosfwd>
#include <string>

namespace scrivo {

// Prints the files in the help file at `path` (UTF-8) to `out`, in UTF-8: size and name, a line
// each, in the order of the directory, and a last line with their number and total size. With
// `internal` the streams of the help system too. What is wrong goes to `err`. Returns the exit
// status: 0, or 1 when the file or one of its entries cannot be read.
int RunList(const std::string& path, bool internal, std::ostream& out, std::ostream& err);

// Prints what the help file at `path` (UTF-8) says about itself to `out`, in UTF-8: title, default
// topic, language, window, compiler, number of files, and the contents as a tree. What is wrong
// goes to `err`. Returns the exit status: 0, or 1 when a part of it cannot be read.
int RunInfo(const std::string& path, std::ostream& out, std::ostream& err);

}  // namespace scrivo
