#pragma once

#include <string>
#include <string_view>

namespace scrivo {

// What the host noted of a page in the file of the same name in the _vti_cnf folder beside it.
// May be older than the page. Texts are UTF-8, as far as the host wrote them so.
struct VtiNotes {
  std::string title;
  std::string keywords;
  std::string charset;  // a name such as "windows-1252"
};

// Reads such a file: lines "name:TT|value" in which a backslash stands before a character that
// would mean something else. In the list of meta tags blanks part the items, and a blank inside an
// item has a backslash of its own. Lines of any other form are passed over.
VtiNotes ParseVtiNotes(std::string_view text);

}  // namespace scrivo
