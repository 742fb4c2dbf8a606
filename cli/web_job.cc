#include "cli/web_job.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "chm/container_header.h"
#include "cli/disk_path.h"
#include "cli/open_web.h"
#include "cli/suggestion.h"
#include "platform/globals.h"
#include "platform/paths.h"
#include "system/error.h"
#include "system/services.h"
#include "text/code_page.h"
#include "text/languages.h"
#include "text/visible_text.h"
#include "webs/hidden_files.h"

namespace scrivo {
namespace {

std::string TitleFor(const CompileOptions& options, int code_page, DiskWeb& web) {
  if (options.title.empty()) {
    // The home page may stand further down in the contents than DefaultTitle looks for it.
    const std::shared_ptr<SiteFile> home = web.HomePage();
    return WithoutControlCharacters(web.HomeNode() || !home ? DefaultTitle(web)
                                                            : home->NavigationEntry()->Label());
  }
  std::size_t lost = 0;
  FromUtf8(options.title, code_page, &lost);
  if (lost == 0) return options.title;
  throw Error(kInvalidProcedureCall, "scrivo",
              "--title: \"" + options.title +
                  "\" contains characters that the code page of the help file lacks. Choose "
                  "another code page with --code-page.");
}

// The help file in the current folder, named after the title without what no file name can hold.
std::string OutputFor(const CompileOptions& options, const std::string& title) {
  if (!options.output.empty()) return AbsolutePath(options.output);
  std::string name = DefaultOutputName(title);
  std::replace_if(
      name.begin(), name.end(),
      [](char c) { return std::string_view("\\*?\"<>|").find(c) != std::string_view::npos; }, '_');
  return AbsolutePath(name);
}

// The location of the first file of the web that `output` is, whatever its name; empty when it is
// none.
std::string SourceAt(const std::filesystem::path& output, DiskWeb& web, const Locator& locate) {
  const std::filesystem::path folder = DiskPathOf(web.BaseFolder()->LocalPath());
  std::error_code ignored;
  for (const std::shared_ptr<SiteFile>& file : AllFiles(web)) {
    const std::string location = locate(file->Url());
    if (std::filesystem::equivalent(folder / DiskPathOf(location), output, ignored)) {
      return location;
    }
  }
  return "";
}

// Throws Error when `output` cannot be a new help file, or is something that nobody wants replaced
// by one. `wanted` is how the user has put it.
void ThrowUnlessFileCanBe(const std::string& output, const std::string& wanted, DiskWeb& web,
                          const Locator& locate) {
  const auto refuse = [&](std::int32_t number, const std::string& reason) {
    throw Error(number, "scrivo", output + ": the help file cannot be made: " + reason);
  };
  if (HasControlCharacters(output)) {  // no line of a project file can carry it
    refuse(kPathFileAccessError,
           "the path contains a line break or another control character. Choose another folder "
           "with -o.");
  }
  const std::filesystem::path name = DiskPathOf(wanted).filename();
  if (TheServices().files->FolderExists(output) ||
      (!wanted.empty() && (name.empty() || name == "." || name == ".."))) {
    refuse(kPathFileAccessError, "it is a folder. Name a file in it.");
  }
  const std::filesystem::path path = DiskPathOf(output);
  std::error_code ignored;
  if (!std::filesystem::exists(path, ignored)) return;
  if (!std::filesystem::is_regular_file(path, ignored)) {
    refuse(kPathFileAccessError, "it is a device, a pipe or a socket. Name a file.");
  }
  std::error_code error;
  // A help file that lies in the web is an earlier output.
  if (StartsAsHelpFile(path, &error)) return;
  if (const std::string source = SourceAt(path, web, locate); !source.empty()) {
    refuse(kPathFileAccessError,
           "it is " + source + ", a file of the web. Name another file with -o.");
  }
  if (error == std::errc::no_such_file_or_directory) return;  // removed meanwhile
  if (error) refuse(kPathFileAccessError, "what it holds cannot be read: " + error.message() + ".");
  if (std::filesystem::file_size(path, ignored) > 0) {
    refuse(kPathFileAccessError,
           "it exists and is not a help file. Remove it, or name another file with "
           "-o.");
  }
}

std::string DefaultPageFor(const CompileOptions& options, DiskWeb& web, const Locator& locate) {
  const std::string& wanted = options.default_page;
  if (wanted.empty()) {
    if (const std::shared_ptr<SiteFile> home = web.HomePage()) return home->Url();
    for (const std::shared_ptr<SiteNode>& node : AllNodes(web)) {
      if (node->File()) return node->Url();
    }
    return "";
  }
  std::vector<std::string> locations;
  for (const std::shared_ptr<SiteFile>& file : AllFiles(web)) {
    const std::string address = file->Url();
    const std::string location = locate(address);
    if (wanted == location || wanted == address) return address;
    locations.push_back(location);
  }
  if (!options.with_hidden && IsHiddenLocation(wanted)) {
    throw Error(kFileNotFound, "scrivo",
                wanted + ": the page is left out. To take in such files, add --with-hidden.");
  }
  const std::string suggestion = Suggest(wanted, locations);
  throw Error(kFileNotFound, "scrivo",
              wanted + ": no such page in the web. " +
                  (suggestion.empty() ? "" : "Did you mean " + suggestion + "? ") +
                  "\"scrivo tree WEB\" lists the pages.");
}

}  // namespace

CompileJob JobFor(const CompileOptions& options, const WebLanguage& language, DiskWeb& web,
                  const Locator& locate) {
  CompileJob job;
  job.title = TitleFor(options, language.help_code_page, web);
  job.output = OutputFor(options, job.title);
  ThrowUnlessFileCanBe(job.output, options.output, web, locate);
  job.language = LanguageOption(language.language);
  job.default_page = DefaultPageFor(options, web, locate);
  job.use_index = options.use_index;
  job.favorites = options.favorites;
  job.without_bars = options.reading.without_bars;
  job.keep_charsets = options.keep_charsets;
  job.with_hidden = options.with_hidden;
  job.keep_project = options.keep_project;
  return job;
}

}  // namespace scrivo
