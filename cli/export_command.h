#pragma once

#include <filesystem>
#include <ostream>
#include <string>

#include "cli/compile_options.h"
#include "cli/help_source.h"
#include "ui/console/console.h"

namespace scrivo {

// What the command line says about a site; the source is `web.web`.
struct ExportOptionsGiven {
  CompileOptions web;  // how a web is compiled
  std::string folder;
  bool force = false;    // also into a folder that is not empty
  bool scripts = false;  // leave the pages' own scripts in
};

// Makes a site of a help file, a help project or a web. Returns the exit status: 0 when all of it
// was exported, 1 when something could not be, which has been told. Throws std::runtime_error when
// there is no site.
int ExportToSite(const ExportOptionsGiven& given, Console& console);

struct SiteMade {
  int status = 0;  // the exit status
  std::size_t pages = 0;
  std::uint64_t bytes = 0;
};

// Makes the site of an open source in the folder `path`. Throws as ExportToSite does.
SiteMade MakeSite(const HelpSource& source, bool scripts, const std::filesystem::path& path,
                  bool force, Console& console);

// Writes the topics of a help file, a help project or a web as Markdown in UTF-8: to `out`, or one
// file a topic into the folder when one is given. Returns the exit status and throws as
// ExportToSite does.
int ExportToText(const ExportOptionsGiven& given, Console& console, std::ostream& out);

// Shows a help file, a help project or a web in the user's browser: its site is made in the user's
// cache, where a second view finds it. Returns the exit status and throws as ExportToSite does.
int ViewAsSite(const ExportOptionsGiven& given, Console& console);

}  // namespace scrivo
