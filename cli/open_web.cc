#include "cli/open_web.h"

#include <filesystem>

#include "platform/globals.h"
#include "platform/seams/services.h"
#include "webs/disk_host.h"

namespace scrivo {

void WebWarnings::Problem(const WebProblem& problem) {
  if (++problems_ > kMostShown) return;
  std::string place = problem.file;
  if (problem.line != 0) place.append(":").append(std::to_string(problem.line));
  console_.Warn(place + ": " + problem.reason);
}

void WebWarnings::Sum() {
  if (problems_ <= kMostShown) return;
  console_.Warn("and " + std::to_string(problems_ - kMostShown) + " more about this web");
}

std::shared_ptr<DiskWeb> OpenWebOf(const CompileOptions& options, WebWarnings& warnings) {
  if (options.code_page != 0) TheServices().system->SetAnsiCodePage(options.code_page);
  const std::shared_ptr<DiskWeb> web =
      OpenDiskWeb(AbsolutePath(options.web), options.reading, warnings);
  Globals().HostApplication = std::make_shared<DiskHost>(web);
  return web;
}

std::string AbsolutePath(const std::string& path) {
  std::error_code error;
  const std::filesystem::path absolute = std::filesystem::absolute(path, error).lexically_normal();
  if (error) return path;
  const std::string text = absolute.string();
  // "web/" and "web" are one folder; only a root keeps its separator.
  return absolute.has_filename() || absolute == absolute.root_path()
             ? text
             : text.substr(0, text.size() - 1);
}

}  // namespace scrivo
