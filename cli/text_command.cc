#include "cli/text_command.h"

#include "cli/disk_path.h"
#include "cli/help_source.h"
#include "cli/open_web.h"
#include "exporter/export_text.h"

namespace scrivo {

int ExportToText(const ExportOptionsGiven& given, Console& console, std::ostream& out) {
  const HelpSource source = OpenHelpSource(given.web, console);
  if (source.reader == nullptr) return 1;
  TextResult result;
  if (given.folder.empty()) {
    result =
        WriteText(*source.reader, source.file_name, [&](const std::string& text) { out << text; });
  } else {
    SiteOutput folder(DiskPathOf(AbsolutePath(given.folder)), given.force);
    result = WriteTextFiles(*source.reader, source.file_name, folder);
    console.Note("Wrote " + std::to_string(result.pages) +
                 (result.pages == 1 ? " topic" : " topics") + " into " + given.folder);
  }
  for (const std::string& problem : result.problems) console.Fail(problem);
  return result.problems.empty() ? 0 : 1;
}

}  // namespace scrivo
