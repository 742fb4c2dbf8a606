#pragma once

// What the commands that show a help file take: a help file, a help project or a FrontPage web. The
// last two are compiled first, into a file that is gone afterwards.

#include <filesystem>
#include <memory>
#include <string>

#include "chm/chm_reader.h"
#include "cli/compile_options.h"
#include "ui/console/console.h"

namespace scrivo {

// A folder of its own below the system's folder for temporary files, which goes with all that is in
// it.
class ScratchFolder {
 public:
  // Throws std::runtime_error when none can be made.
  ScratchFolder();
  ~ScratchFolder();
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;
  const std::filesystem::path& Path() const { return path_; }

 private:
  std::filesystem::path path_;
};

struct HelpSource {
  std::unique_ptr<ScratchFolder> scratch;  // holds the help file when it was compiled for this
  std::unique_ptr<ChmReader> reader;       // null when there is not a help file; that has been told
  std::string file_name;                   // of the help file, UTF-8
};

// Opens `web.web`, whatever of the three it is; `web` says how a web is compiled. What is wrong is
// told on `console`, or printed to `err`, which must be the console's own.
HelpSource OpenHelpSource(const CompileOptions& web, Console& console);

}  // namespace scrivo
