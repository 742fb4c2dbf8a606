#include "cli/help_source.h"

#include <random>
#include <stdexcept>

#include "bytes/folder_items.h"
#include "cli/compile_command.h"
#include "cli/compile_report.h"
#include "cli/disk_path.h"
#include "cli/help_file.h"
#include "cli/hhc_command.h"
#include "cli/open_web.h"
#include "hhc/compiler.h"
#include "project/source_files.h"
#include "text/ascii_text.h"

namespace scrivo {
namespace {

namespace fs = std::filesystem;

constexpr char kCompiledName[] = "book.chm";

std::string Utf8(const fs::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

bool HasExtension(const fs::path& path, std::string_view extension) {
  return EqualsIgnoringCase(Utf8(path.extension()), extension);
}

void OpenCompiled(const fs::path& path, Console& console, HelpSource* source) {
  HelpFile file = OpenHelpFile(PortablePath(path));
  for (const std::string& complaint : file.complaints) {
    if (file.reader == nullptr) {
      console.Fail(complaint);
    } else {
      console.Warn(complaint);
    }
  }
  source->reader = std::move(file.reader);
}

// Compiles the project into the scratch folder. False when no help file was made.
bool CompileProjectInto(const fs::path& project_file, const fs::path& output, bool all_messages,
                        Console& console, std::string* file_name) {
  console.BeginStep("Compiling " + Utf8(project_file));
  CompileRequest request;
  request.project_path = PortablePath(project_file.filename());
  request.working_folder = PortablePath(project_file.parent_path());
  request.output = PortablePath(output);
  request.compiler_name = kCompilerName;
  request.threads = CompilerThreads();
  CompileReport report(console, 0, all_messages);
  const DiskFiles files;
  const CompileResult result = CompileProject(request, files, &report);
  console.EndSteps();
  report.TellLost();
  report.TellSums();
  if (!result.project_found) {
    console.Fail(Utf8(project_file) + ": the project file cannot be read");
    return false;
  }
  *file_name = result.file_name;
  return result.made;
}

// Compiles the web into the scratch folder. False when no help file was made.
bool CompileWebInto(const CompileOptions& web, const fs::path& output, Console& console,
                    std::string* file_name) {
  CompileOptions options = web;
  options.output = Utf8(output);
  options.view = false;
  options.keep_project = false;
  const int status = CompileWebForUse(options, console);
  *file_name = Utf8(DiskPathOf(AbsolutePath(web.web)).filename()) + ".chm";
  return fs::exists(output) && (status == 0 || !web.strict);
}

}  // namespace

ScratchFolder::ScratchFolder() {
  std::random_device random;
  for (int attempt = 0; attempt < 100; ++attempt) {
    fs::path path = fs::temp_directory_path() / ("scrivo-" + std::to_string(random()));
    std::error_code error;
    if (!fs::create_directory(path, error)) continue;
    fs::permissions(path, fs::perms::owner_all, error);
    path_ = std::move(path);
    return;
  }
  throw std::runtime_error(Utf8(fs::temp_directory_path()) + ": no folder can be made here");
}

ScratchFolder::~ScratchFolder() { RemoveFolder(path_); }

HelpSource OpenHelpSource(const CompileOptions& web, Console& console) {
  HelpSource source;
  const fs::path path = DiskPathOf(AbsolutePath(web.web));
  const bool is_web = fs::is_directory(path);
  if (!is_web && !HasExtension(path, ".hhp")) {
    source.file_name = Utf8(path.filename());
    OpenCompiled(path, console, &source);
    return source;
  }
  source.scratch = std::make_unique<ScratchFolder>();
  const fs::path output = source.scratch->Path() / kCompiledName;
  const bool made =
      is_web ? CompileWebInto(web, output, console, &source.file_name)
             : CompileProjectInto(path, output, web.all_messages, console, &source.file_name);
  if (made) OpenCompiled(output, console, &source);
  return source;
}

}  // namespace scrivo
