#pragma once

#include <string>
#include <vector>

#include "webs/contents_tree.h"
#include "webs/structure_file.h"
#include "webs/web_listing.h"
#include "webs/web_report.h"

namespace scrivo {

// The contents that the author arranged: the nodes of the structure file that hang below no link
// bar, siblings in the file's order. Nothing is lost: a node whose parent does not exist, and the
// first node of those that are each other's parents, become top-level entries; a node whose page
// is not on disk keeps its place without a file. All of that is reported under the name `file`
// with the node's line. A label that is not UTF-8 is taken for text in `code_page`.
ContentsTree BuildNavigationTree(std::vector<StructureNode> nodes, const WebListing& listing,
                                 int code_page, const std::string& file, WebReport& report);

}  // namespace scrivo
