#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/globals.h"
#include "system/files.h"
#include "webs/web_report.h"

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

// What the host noted of a web as a whole, in _vti_pvt/service.cnf.
struct ServiceNotes {
  std::string charset;   // a name such as "gb2312"; "" when it noted none
  std::string language;  // a tag such as "zh-tw"; "" when it noted none
  // The names of its welcome pages, the best first.
  std::vector<std::string> welcome_names;
};

// Reads the text of such a file: lines "name:TT|value". Lines of any other form are passed over.
ServiceNotes ParseServiceNotes(std::string_view text);

// The notes of the web in the folder `path`, which has no separator at its end. None when the file
// does not exist, and none when it cannot be read, which is reported: they choose defaults.
ServiceNotes ReadServiceNotes(Files& files, const std::string& path, PathStyle style,
                              WebReport& report);

}  // namespace scrivo
