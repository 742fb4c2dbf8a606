#pragma once

#include <string>
#include <string_view>

namespace scrivo {

// UTF-8 text with its capital letters (Latin, Greek, Cyrillic, Armenian) made small, so that texts
// that differ in case only become equal. Bytes that are no UTF-8 stay as they are.
std::string FoldCase(std::string_view utf8);

// A key whose byte order puts texts as a person would: in any case, a run of digits by its value
// ("Step 2" before "Step 10").
std::string PersonOrderKey(std::string_view utf8);

}  // namespace scrivo
