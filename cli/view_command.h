#pragma once

#include "cli/export_command.h"
#include "ui/console/console.h"

namespace scrivo {

// Shows a help file, a help project or a web in the user's browser: its site is made in the user's
// cache, where a second view finds it. Returns the exit status and throws as ExportToSite does.
int ViewAsSite(const ExportOptionsGiven& given, Console& console);

}  // namespace scrivo
