#pragma once

#include <string>
#include <string_view>

namespace scrivo {

// UTF-8 text with its capital letters (Latin, Greek, Cyrillic, Armenian) made small, so that texts
// that differ in case only become equal, as file systems that ignore case compare names. Bytes that
// are not UTF-8 stay as they are.
std::string FoldCase(std::string_view utf8);

}  // namespace scrivo
