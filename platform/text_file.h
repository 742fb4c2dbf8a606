#pragma once

#include <string>

namespace scrivo {

// Writes a whole text file: `text`, in the bytes of the file's code page, and CR LF. An existing
// file is overwritten. Failures are the Errors of Files::Write.
void WriteTextFile(const std::string& path, const std::string& text);

}  // namespace scrivo
