#pragma once

#include <cstdint>
#include <string>

#include "cli/compile_options.h"

namespace scrivo {

// What the texts of a web and of the help file made of it are in.
struct WebLanguage {
  int undeclared_code_page = 0;  // of the web's texts of which nobody says what they are
  int written_code_page = 0;     // of the project's files: the help file's, or UTF-8 if so chosen
  int help_code_page = 0;        // of the texts in the help file; that of its language
  std::uint32_t language = 0;    // of the help file (LCID)
};

// What the options say, else what the web in the folder `path` tells: its host's notes, then its
// pages' declarations, then windows-1252. The language always goes with the code page. Throws Error
// when --language contradicts the web, or the web cannot be read.
WebLanguage LanguageOfWeb(const CompileOptions& options, const std::string& path);

}  // namespace scrivo
