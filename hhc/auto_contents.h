#pragma once

// A contents file (.hhc) made of the headings of the pages, for projects that ask for one.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "html/headings.h"

namespace scrivo {

class AutoContents {
 public:
  // Headings up to `depth` count.
  explicit AutoContents(int depth) : depth_(depth) {}

  // Adds the headings of a page, in order. The first one leads to the page itself, later ones to
  // their places. `address`: of the page, from the top of the help file, UTF-8.
  void AddPage(std::string_view address, const std::vector<PageHeading>& headings);

  bool Empty() const { return items_.empty(); }

  // The contents file, in `code_page`; characters that it lacks are written as references, which
  // few viewers resolve, and added to `*lost`.
  std::string Write(int code_page, std::size_t* lost) const;

 private:
  struct Item {
    int level;
    std::string name, local;  // UTF-8
  };

  int depth_;
  std::vector<Item> items_;
};

}  // namespace scrivo
