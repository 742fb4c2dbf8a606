#pragma once

#include <string>

#include "project/source_files.h"
#include "site/site.h"
#include "ui/console/console.h"

namespace scrivo {

// Copies a web as `files` shows it into the new folder `target`: what the web lists and the folders
// that the host keeps its pictures and styles in. A file that cannot be read, or whose copy has a
// longer path than the system takes, is told of and left out. Throws Error, with a text for the
// user, when the copy cannot be written; kUserInterrupt when the program is to end.
void CopyWeb(SiteWeb& web, const SourceFiles& files, const std::string& target, Console* console);

}  // namespace scrivo
