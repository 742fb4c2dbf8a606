#pragma once

#include <string>

namespace scrivo {

// A text (a label, a title; never a path) of the ANSI code page as a terminal shows it.
std::string ToTerminal(const std::string& ansi);

// A text from the command line in the ANSI code page. `lost` is set when the code page lacks a
// character of it, which becomes "?".
std::string FromTerminal(const std::string& text, bool* lost);

}  // namespace scrivo
