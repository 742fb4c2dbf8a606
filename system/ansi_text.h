#pragma once

#include <string>
#include <string_view>

namespace scrivo {

// Text inside is UTF-8. Here it becomes the bytes of the ANSI code page, at the edges that need
// them (the files that the add-in writes, the registry, calls that take ANSI text), and comes back
// from there. Lengths and cuts at these edges are of such bytes.

// Text for people. What the code page lacks becomes "?", or on Windows a letter that looks like it.
std::string ToAnsi(std::string_view text);
std::string FromAnsi(std::string_view ansi);

// The code page of the text that console programs print: on Windows the ANSI code page, UTF-8
// elsewhere.
int PipeCodePage();

}  // namespace scrivo
