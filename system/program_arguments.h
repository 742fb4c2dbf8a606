#pragma once

#include <string>
#include <vector>

namespace scrivo {

// The arguments behind the program's name, of what main was given: the bytes as they are on POSIX;
// on Windows the wide command line (text/wtf8.h), which names any file.
std::vector<std::string> ProgramArguments(int argc, char** argv);

}  // namespace scrivo
