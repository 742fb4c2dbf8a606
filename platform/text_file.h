#pragma once

#include <string>

namespace scrivo {

// Writes a whole text file: `text`, already in the file's code page, and CR LF. An existing file
// is overwritten. Failures are the Errors of Files::Write.
void WriteTextFile(const std::string& path, const std::string& text);

}  // namespace scrivo
