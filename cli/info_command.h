#pragma once

// What `scrivo info FILE.chm` does.

#include <iosfwd>
#include <string>

namespace scrivo {

// Prints what the help file at `path` (UTF-8) says about itself to `out`, in UTF-8: title, default
// topic, language, window, compiler, number of files, and the contents as a tree. What is wrong
// goes to `err`. Returns the exit status: 0, or 1 when a part of it cannot be read.
int RunInfo(const std::string& path, std::ostream& out, std::ostream& err);

}  // namespace scrivo
