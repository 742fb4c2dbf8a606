#include "cli/open_web.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "platform/globals.h"
#include "project/source_files.h"
#include "system/services.h"
#include "text/visible_text.h"
#include "webs/disk_host.h"

namespace scrivo {
namespace {

// An absolute path with its ".." gone. Behind a link to a folder ".." is not the folder that the
// link lies in, so the system has to be asked; a link at the path's end stays one.
std::filesystem::path WithoutParents(const std::filesystem::path& path, std::error_code& error) {
  const std::filesystem::path name = path.filename();
  if (name == "..") return std::filesystem::weakly_canonical(path, error);
  const std::filesystem::path folder = std::filesystem::weakly_canonical(path.parent_path(), error);
  return name == "." ? folder : folder / name;
}

}  // namespace

void WebWarnings::Problem(const WebProblem& problem) {
  // Behind a colon stands what the system says, which may name files.
  if (!limit_.Shows(problem.reason.substr(0, problem.reason.find(": ")))) return;
  std::string place = problem.file;
  if (problem.line != 0) place.append(":").append(std::to_string(problem.line));
  console_.Warn(VisibleLine(place + ": " + problem.reason));
}

void WebWarnings::Sum() {
  for (const std::string& sum : limit_.Sums()) console_.Warn(sum);
}

std::shared_ptr<DiskWeb> OpenWebOf(const CompileOptions& options, WebReport& warnings,
                                   WebLanguage* language) {
  const std::string path = AbsolutePath(options.web);
  const WebLanguage web = LanguageOfWeb(options, path);
  TheServices().system->SetAnsiCodePage(web.written_code_page);
  DiskWebOptions reading = options.reading;
  reading.undeclared_code_page = web.undeclared_code_page;
  reading.help_code_page = web.help_code_page;
  reading.leaves_out_hidden = !options.with_hidden;
  if (language != nullptr) *language = web;
  return OpenDiskWeb(path, reading, warnings);
}

Locator LocatorFor(const std::shared_ptr<DiskWeb>& web) {
  const auto host = std::make_shared<DiskHost>(web);
  return [=](const std::string& address) { return host->RelativeLocation(*web, address); };
}

std::string AbsolutePath(const std::string& path) {
  namespace fs = std::filesystem;
  std::error_code error;
  fs::path absolute = fs::absolute(SystemPath(path), error);
  if (error) return path;
  if (std::find(absolute.begin(), absolute.end(), "..") == absolute.end()) {
    absolute = absolute.lexically_normal();
  } else {
    absolute = WithoutParents(absolute, error);
    if (error) return path;
  }
  std::string text = PortablePath(absolute);
  std::replace(text.begin(), text.end(), '/', Separator(Globals().path_style));
  // "web/" and "web" are one folder; only a root keeps its separator.
  return absolute.has_filename() || absolute == absolute.root_path()
             ? text
             : text.substr(0, text.size() - 1);
}

}  // namespace scrivo
