#include "writers/project.h"

#include "html/page_kind.h"
#include "platform/paths.h"
#include "system/system_services.h"

namespace scrivo {
namespace {

constexpr char kFixedOptions[] =
    "[OPTIONS]\r\n"
    "Auto Index = Yes\r\n"
    "Binary Index = Yes\r\n";
constexpr char kBinaryContents[] = "Binary TOC = Yes\r\n";
constexpr char kCompatibility[] = "Compatibility = 1.1 Or later\r\n";
constexpr char kFixedOptionsBeforeTitle[] =
    "Display compile progress=Yes\r\n"
    "Full-text search=Yes\r\n";

// The window's navigation-pane style; the two differ in the flag of the favourites tab, 0x1000.
constexpr char kStyleWithFavorites[] = "0x23520";
constexpr char kStyleWithoutFavorites[] = "0x22520";

// A file's own name, without its folders, in the path style of either system.
std::string NameOf(const std::string& path) { return path.substr(path.find_last_of("\\/") + 1); }

// The window definitions. The first line, which ends in a comma, is unfinished on purpose; the
// compiler takes the second.
std::string WindowLines(const CompileJob& job, const SitemapPaths& paths) {
  std::string line = "default=,\"";
  line += NameOf(paths.contents) + "\",";
  std::string text = line + "\r\n" + line;
  text += job.use_index ? std::string("\"").append(NameOf(paths.index)) + "\",,,,,,," : ",,,,,,,";
  text += job.favorites ? kStyleWithFavorites : kStyleWithoutFavorites;
  return text + ",,0x3006,,,,,,,,0\r\n";
}

}  // namespace

std::string ProjectSettings(const CompileJob& job, const SitemapPaths& paths, const Locator& locate,
                            const StatementRunner& run) {
  std::string text = kFixedOptions;
  if (job.binary_contents) text += kBinaryContents;
  text += kCompatibility;
  text += "Compiled file=" + NameToAnsi(job.output) + "\r\n";
  text += "Contents file=" + NameToAnsi(paths.contents) + "\r\n";
  text += "Default window=default\r\n";
  run([&] { text += "Default topic=" + NameToAnsi(StartPageLocation(job, locate)) + "\r\n"; });
  text += kFixedOptionsBeforeTitle;
  text += "Language=" + job.language + "\r\n";
  text += "Title=" + ToAnsi(job.title) + "\r\n";
  if (job.use_index) text += "Index File = " + NameToAnsi(paths.index) + "\r\n";
  text += "\r\n[WINDOWS]\r\n\r\n";
  text += WindowLines(job, paths);
  return text + "\r\n[FILES]\r\n";
}

std::string ProjectPages(const CompileJob& job, const SiteFiles& files, const Locator& locate,
                         const StatementRunner& run) {
  std::string text;
  std::string output;
  run([&] { output = locate(job.output); });
  for (const std::shared_ptr<SiteFile>& file : files) {
    bool is_page = false;
    run([&] { is_page = IsProjectPage(*file); });
    if (!is_page) continue;
    run([&] {
      const std::string location = locate(file->Url());
      if (location != output) text += "\r\n" + NameToAnsi(location);
    });
  }
  return text;
}

std::string ProjectDerivedPage(const std::string& path) { return "\r\n" + NameToAnsi(path); }

bool IsProjectPage(SiteFile& file) { return KindOfExtension(file.Extension()) == PageKind::kPlain; }

}  // namespace scrivo
