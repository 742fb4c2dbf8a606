#include "cli/export_command.h"

#include <cstdint>
#include <filesystem>
#include <random>
#include <stdexcept>
#include <vector>

#include "bytes/folder_items.h"
#include "cli/disk_path.h"
#include "cli/help_source.h"
#include "cli/open_web.h"
#include "cli/run_summary.h"
#include "exporter/digest.h"
#include "exporter/export_site.h"
#include "exporter/export_text.h"
#include "exporter/view_folder.h"
#include "system/error.h"
#include "system/interruption.h"
#include "system/program.h"
#include "system/services.h"

namespace scrivo {
namespace {

namespace fs = std::filesystem;

// Everything that the site depends on.
std::string DigestOf(const HelpSource& source, bool scripts) {
  Digest digest;
  const std::string rest =
      std::string(SCRIVO_VERSION) + (scripts ? " scripts " : " ") + source.file_name;
  digest.Add({reinterpret_cast<const std::uint8_t*>(rest.data()), rest.size()});
  std::vector<std::uint8_t> buffer(1 << 20);
  const ByteSource& bytes = source.reader->Source();
  for (std::uint64_t at = 0; at < bytes.Size(); at += buffer.size()) {
    const std::uint64_t count = std::min<std::uint64_t>(buffer.size(), bytes.Size() - at);
    const std::span<std::uint8_t> part(buffer.data(), static_cast<std::size_t>(count));
    if (bytes.ReadAt(at, part)) digest.Add(part);
  }
  return digest.Finish();
}

std::string Shown(const fs::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

}  // namespace

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

int ViewAsSite(const ExportOptionsGiven& given, Console& console) {
  const HelpSource source = OpenHelpSource(given.web, console);
  if (source.reader == nullptr) return 1;
  Surroundings surroundings;
  surroundings.variable = EnvironmentVariable;
  const fs::path folder = ViewFolder(surroundings);
  if (folder.empty()) throw std::runtime_error("HOME: not set, so there is no folder for the site");
  const std::string name = MakeViewName(DigestOf(source, given.scripts));
  const fs::path place = folder / name;
  fs::create_directories(folder);
  int status = 0;
  std::error_code error;
  if (!fs::exists(place / "index.html", error)) {
    // Under another name until it is whole: so two views at once do no harm either.
    const fs::path half = folder / (name + "." + std::to_string(std::random_device()()));
    status = MakeSite(source, given.scripts, half, false, console).status;
    fs::rename(half, place, error);
    if (error) {
      RemoveFolder(half);
      if (!fs::exists(place / "index.html", error)) {
        throw std::runtime_error(Shown(place) + ": the site cannot be put there");
      }
    }
  }
  NoteView(place);
  ClearOldViews(folder, name);
  ShellRequest request;
  request.wide = true;
  request.verb = "open";
  request.file = Shown(place / "index.html");
  constexpr std::int32_t kLastFailure = 32;
  if (TheServices().shell->Execute(request) <= kLastFailure) {
    console.Fail(request.file + ": no browser could be started; open this file in one");
    return 1;
  }
  console.Note("Opened " + request.file);
  return status;
}

}  // namespace scrivo
