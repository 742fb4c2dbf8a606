#pragma once

#include <string_view>

namespace scrivo {

// Kinds of elements, by name in any case.

// Stands inside a line of text; the tags of all others end a word.
bool IsInlineElement(std::string_view name);

// Can only stand in a body: a page may go without its <body> tag.
bool StartsBody(std::string_view name);

// 1 to 6 for H1 to H6, 0 for every other element.
int HeadingLevel(std::string_view name);

}  // namespace scrivo
