#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "html/page_kind.h"
#include "webs/web_listing.h"

namespace scrivo {

// One entry of a web's contents.
struct ContentsNode {
  std::string label;
  // The page's location or address, for a node whose page is not a file of this web; else "".
  std::string page;
  WebListing::Index file = WebListing::kNone;
  // Its children stand together: nodes first_child … first_child + child_count - 1.
  std::uint32_t first_child = 0;
  std::uint32_t child_count = 0;
  // Where it stands in the structure file, counted from 1; 0 when it comes from the folders.
  std::uint32_t line = 0;
};

// A web's contents. Node 0 is the root, which stands for no page; its children are the top-level
// entries. A node stands before its children.
struct ContentsTree {
  std::vector<ContentsNode> nodes{1};
};

// Whether a help file holds the file as a page: its name ends in .htm or .html, in any case.
inline bool IsHelpPage(const WebListing& listing, WebListing::Index file) {
  return KindOfPage(listing.FileName(file)) == PageKind::kPlain;
}

}  // namespace scrivo
