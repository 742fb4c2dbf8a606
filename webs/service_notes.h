#pragma once

#include <string>
#include <string_view>

#include "platform/path_style.h"
#include "system/files.h"

namespace scrivo {

// What the host noted of the texts of a web as a whole, in _vti_pvt/service.cnf.
struct ServiceNotes {
  std::string charset;   // a name such as "gb2312"; "" when it noted none
  std::string language;  // a tag such as "zh-tw"; "" when it noted none
};

// Reads the text of such a file: lines "name:TT|value". Lines of any other form are passed over.
ServiceNotes ParseServiceNotes(std::string_view text);

// The notes of the web in the folder `path`, which has no separator at its end. None when the file
// does not exist or cannot be read: they only choose defaults.
ServiceNotes ReadServiceNotes(Files& files, const std::string& path, PathStyle style);

}  // namespace scrivo
