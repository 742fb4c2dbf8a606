#pragma once

#include <ostream>
#include <string>

#include "cli/export_command.h"
#include "ui/console/console.h"

namespace scrivo {

// Writes the topics of a help file, a help project or a web as Markdown in UTF-8: to `out`, or one
// file a topic into the folder when one is given. Returns the exit status and throws as
// ExportToSite does.
int ExportToText(const ExportOptionsGiven& given, Console& console, std::ostream& out);

}  // namespace scrivo
