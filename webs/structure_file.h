#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "webs/web_report.h"

namespace scrivo {

// One node of a navigation structure as it stands in the file.
struct StructureNode {
  std::uint64_t id = 0;
  std::uint64_t parent = 0;  // 0: top level
  std::string page;          // relative to the web's root; the whole address of a page elsewhere
  std::string label;
  bool leaves_web = false;  // `page` is not a page of this web
  std::size_t line = 0;     // where it stands, counted from 1

  // A custom link bar: it and what hangs below it are not part of the tree.
  bool IsLinkBar() const { return page.starts_with("sid:"); }
};

// Reads the text of a web's _vti_pvt/structure.cnf: UTF-8, lines ending in LF or CR LF.
//
//   3.0.0.507                        version
//   1054                             the next free id
//   id,url,type,label,parent,time,n  one line for each node, then n property lines name:TT|value
//
// A backslash makes the next character part of the text. Nodes come back in the file's order.
// A line that does not fit is reported under the name `file` with its number, and skipped; a text
// that cannot be such a file at all is reported once.
std::vector<StructureNode> ParseStructure(std::string_view text, const std::string& file,
                                          WebReport& report);

}  // namespace scrivo
