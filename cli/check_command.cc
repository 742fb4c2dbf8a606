#include "cli/check_command.h"

#include <sstream>

#include "checker/web_check.h"
#include "cli/check_report.h"
#include "cli/compile_report.h"
#include "cli/disk_path.h"
#include "cli/open_web.h"
#include "cli/web_account.h"
#include "cli/web_sources.h"
#include "project/source_files.h"

namespace scrivo {

int CheckWebOf(const CheckOptionsGiven& given, Console& console) {
  console.BeginStep("Checking " + given.web.web);
  WebProblemList problems;
  WebLanguage language;
  const std::shared_ptr<DiskWeb> web = OpenWebOf(given.web, problems, &language);
  TellOfWeb(given.web, *web, PagesGoTo::kThisCompiler, console);
  CheckOptions options;
  options.help_code_page = language.help_code_page;
  options.page_code_page = language.undeclared_code_page;
  options.on_page = [&](std::size_t done, std::size_t all) {
    StopIfInterrupted();
    console.ShowProgress(std::to_string(100 * done / all) + " %", "");
  };
  const std::string folder = web->BaseFolder()->LocalPath();
  const DiskFiles disk;
  const WithheldFiles files(disk, PortablePathOf(folder), given.web.with_hidden);
  const WebFindings found = CheckWeb(*web, files, PortablePathOf(folder), problems, options);
  console.EndSteps();
  if (given.json) {
    std::istringstream report(CheckReportJson(found, folder));
    for (std::string line; std::getline(report, line);) console.Print(line);
  } else {
    MessageLimit limit(given.web.all_messages);
    for (const std::string& line : CheckReportLines(found, &limit)) console.Print(line);
  }
  return found.findings.empty() ? 0 : 1;
}

}  // namespace scrivo
