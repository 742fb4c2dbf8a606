#include "cli/export_command.h"

#include "cli/disk_path.h"
#include "cli/open_web.h"
#include "cli/run_summary.h"
#include "exporter/export_site.h"
#include "system/error.h"
#include "system/interruption.h"

namespace scrivo {

SiteMade MakeSite(const HelpSource& source, bool scripts, const std::filesystem::path& path,
                  bool force, Console& console) {
  SiteOutput folder(path, force);
  ExportOptions options;
  options.file_name = source.file_name;
  options.keep_scripts = scripts;
  options.on_progress = [&](std::size_t done, std::size_t total) {
    if (Interrupted()) throw Error(kUserInterrupt, "scrivo", "Interrupted");
    console.ShowProgress(std::to_string(100 * done / total) + " %", "");
  };
  console.BeginStep("Exporting " + source.file_name);
  const ExportResult result = ExportSite(*source.reader, options, folder);
  console.EndSteps();
  for (const std::string& problem : result.problems) console.Fail(problem);
  return {result.problems.empty() ? 0 : 1, result.pages, folder.Bytes()};
}

int ExportToSite(const ExportOptionsGiven& given, Console& console) {
  const HelpSource source = OpenHelpSource(given.web, console);
  if (source.reader == nullptr) return 1;
  const SiteMade made =
      MakeSite(source, given.scripts, DiskPathOf(AbsolutePath(given.folder)), given.force, console);
  console.Note("Made a site in " + given.folder + ": " + std::to_string(made.pages) +
               (made.pages == 1 ? " page, " : " pages, ") + SizeText(made.bytes) + ", " +
               DurationText(console.Seconds()) + ". Open its index.html in a browser.");
  return made.status;
}

}  // namespace scrivo
