#pragma once

#include <string>
#include <string_view>

namespace scrivo {

// A key that sorts keywords (UTF-8) as an index shows them when keys are compared byte by byte:
// punctuation, then digits, then letters; marks on letters count less than the letters, case less
// than the marks (lower case first); hyphens and apostrophes count least of all. It follows the
// order in which Windows sorts words, which the viewer expects of the index.
std::string KeywordSortKey(std::string_view keyword);

}  // namespace scrivo
