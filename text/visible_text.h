#pragma once

// Text from outside, such as names of files and titles of pages, as a terminal may get it. What it
// must not get raw is shown as "\x1B", one "\xNN" for each byte.

#include <string>
#include <string_view>

namespace scrivo {

// `text` without raw control characters (C0, DEL and C1), which move the cursor, change colours and
// more. The characters of `kept` stay, and so do bytes that are no UTF-8, except those that are
// control characters to a terminal of single bytes (0x80 to 0x9F).
std::string VisibleText(std::string_view text, std::string_view kept);

// A line without its end: as above with tabs kept, and without characters that turn the direction
// of writing round, so that it reads as it is.
std::string VisibleLine(std::string_view line);

// A name: without any of these, characters of no width, and bytes that are no UTF-8.
std::string PrintableName(std::string_view name);

// Whether a text holds a control character, such as a line break. In a project file, where each
// line is an option, it would end the line and begin another option.
bool HasControlCharacters(const std::string& text);

// `text` with a blank in place of each control character.
std::string WithoutControlCharacters(std::string text);

}  // namespace scrivo
