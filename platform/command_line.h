#pragma once

#include <string>
#include <vector>

namespace scrivo {

// How a command line is cut into words where the system starts programs with words rather than with
// a line (the POSIX systems). Blanks and tabs part the words. A quoted first word is the program's
// path as it stands between its quotes. In the other words quotes hold blanks together, and a
// backslash takes the meaning from a blank, a tab, a line end, a quote or a backslash behind it; in
// quotes, only from a quote or a backslash. Any other backslash is an ordinary character.

// The words of a command line, the program first; none when it is blank.
std::vector<std::string> SplitCommandLine(const std::string& command_line);

// The one word as a command line takes it without quotes.
std::string EscapeWord(const std::string& word);

}  // namespace scrivo
