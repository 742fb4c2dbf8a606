#pragma once

#include <string>
#include <vector>

#include "system/files.h"

namespace scrivo {

// A help project put into the form that chmcmd takes.
struct ChmcmdProject {
  std::string text;    // the project file to give it
  std::string output;  // full path of the compiled file; "" when the project names none
  std::vector<std::string> missing;  // files that the project names and that are not there
};

// Rewrites the project file `text`, which lies in `folder` (a full path without a separator at its
// end). chmcmd takes a full path for one below the project's folder, stops without a word of use
// at the first listed file that is missing, and wants no blanks around "=": so paths inside the
// folder become relative, missing files are left out and named, and options are written tightly.
// A window definition that ends in a comma, which another one follows, is left out.
ChmcmdProject PrepareForChmcmd(const std::string& text, const std::string& folder, Files& files);

}  // namespace scrivo
