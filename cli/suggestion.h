#pragma once

#include <string>
#include <vector>

namespace scrivo {

// The candidate that `word` was probably meant to be: the one that the fewest inserted, removed,
// replaced or swapped letters lead to, at most a third of its length (the first of several), or
// the only one that begins with `word`. "" when there is none.
std::string Suggest(const std::string& word, const std::vector<std::string>& candidates);

}  // namespace scrivo
