#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace scrivo {

// What a page says: the text that its readers see. All texts are UTF-8.
struct PageContent {
  std::string title;  // of its TITLE element, blanks made one; empty when it has none
  std::string text;   // blanks made one
  // Where headings stand in `text`, in ascending order: from and behind.
  struct Stretch {
    std::size_t begin, end;
  };
  std::vector<Stretch> headings;
};

}  // namespace scrivo
