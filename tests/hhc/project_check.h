#pragma once

// Holds a compiled help file against the project that it was made from.

#include <cstddef>
#include <string>
#include <vector>

namespace scrivo {

struct ProjectCheck {
  std::size_t files = 0, contents_entries = 0, keywords = 0, words = 0;  // looked at
  std::vector<std::string> faults;                                       // the first hundred
};

// Checks that each listed file is stored byte for byte, that each entry of the contents file is in
// the binary contents at its place, each keyword of the index file in the binary index with its
// pages, and each word of each stored page in the search index at its positions, with nothing
// besides.
ProjectCheck CheckAgainstProject(const std::string& project_path, const std::string& help_path);

}  // namespace scrivo
