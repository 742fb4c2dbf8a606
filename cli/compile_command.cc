#include "cli/compile_command.h"

#include <algorithm>
#include <cstdlib>

#include "bytes/output_file.h"
#include "cli/compile_report.h"
#include "cli/disk_path.h"
#include "cli/foreign_compiler.h"
#include "cli/help_project.h"
#include "cli/hhc_command.h"
#include "cli/open_web.h"
#include "cli/run_summary.h"
#include "cli/web_account.h"
#include "cli/web_job.h"
#include "cli/web_sources.h"
#include "errors/frame.h"
#include "hhc/compiler.h"
#include "system/error.h"
#include "system/interruption.h"
#include "system/services.h"

namespace scrivo {
namespace {

// Results of the shell up to this one are failures.
constexpr std::int32_t kLastShellFailure = 32;

// An opened web and what is to become of it.
struct WebToCompile {
  WebToCompile(const CompileOptions& options, PagesGoTo pages, Console& console)
      : warnings(console, options.all_messages),
        web(OpenWebOf(options, warnings, &language)),
        locate(LocatorFor(web)) {
    TellOfWeb(options, *web, pages, console);
    job = JobFor(options, language, *web, locate);
    counts = CountWeb(*web, options.use_index, [&](std::size_t done, std::size_t all) {
      console.ShowProgress(std::to_string(100 * done / all) + " %", "");
    });
    if (job.use_index && counts.index_entries == 0) {
      console.Warn("no keywords found, so the help file has no index\n" +
                   NoIndexHint(options.reading.index));
    }
    StopIfInterrupted();
  }

  // Tells what reading the web has shown, and of characters that are lost also what the compiler
  // has found, where the web's own account does not say more. `report` may be null.
  void TellWarnings(CompileReport* report) {
    if (!web->ReportLostCharacters() && report != nullptr) report->TellLost();
    if (report != nullptr) report->TellSums();
    warnings.Sum();
  }

  WebWarnings warnings;
  WebLanguage language;
  std::shared_ptr<DiskWeb> web;
  Locator locate;
  CompileJob job;
  WebCounts counts;
};

// The seconds since 1970 that the file is to say it was made at: none, so that the same web gives
// the same file, unless the environment names them.
std::int64_t TimeToRecord() {
  std::int64_t seconds = 0;
  const char* const epoch = std::getenv("SOURCE_DATE_EPOCH");
  if (epoch == nullptr || *epoch == '\0' || ReadSourceDateEpoch(epoch, &seconds)) return seconds;
  throw Error(kInvalidProcedureCall, "scrivo",
              std::string("SOURCE_DATE_EPOCH: \"") + epoch +
                  "\" is not a number of seconds. Correct or unset it.");
}

// Compiles the web with the project's files laid over it in memory.
bool CompileInMemory(const HelpProject& project, const CompileJob& job, CompileReport* report,
                     Console& console) {
  CompileRequest request;
  request.working_folder = PortablePathOf(project.folder);
  request.project_path = project.name;
  request.output = PortablePathOf(job.output);
  request.more_files = project.unlisted;
  request.compiler_name = kCompilerName;
  request.time = TimeToRecord();
  request.threads = CompilerThreads();
  const WebSources files(project, job);
  const CompileResult result = CompileProject(request, files, report);
  if (result.stopped) throw Error(kUserInterrupt, "scrivo", "Interrupted");
  files.TellChanges(console);
  return result.made;
}

// Another compiler gets a folder that is there; ours makes it.
void ThrowUnlessMade(const ParentFolders& folders, const std::string& output) {
  if (!folders.Error()) return;
  throw Error(kPathFileAccessError, "scrivo",
              output + ": the folder cannot be made: " + folders.Error().message());
}

bool Compile(const CompileOptions& options, WebToCompile* web, CompileReport* report,
             Console& console) {
  const CompileJob& job = web->job;
  if (!options.compiler.empty()) {
    const std::string compiler = ForeignCompilerPath(options.compiler);
    ParentFolders folders(DiskPathOf(job.output));
    ThrowUnlessMade(folders, job.output);
    const bool made = CompileWithForeign(compiler, *web->web, job, web->locate, report, &console);
    if (made) folders.Keep();
    return made;
  }
  if (!job.keep_project) {
    return CompileInMemory(
        MakeHelpProject(*web->web, job, web->locate, kProjectBaseName, ProjectUse::kInProcess), job,
        report, console);
  }
  const std::string folder = web->web->BaseFolder()->LocalPath();
  const std::string base_name = FreeProjectBaseName(folder);
  const auto make = [&](ProjectUse use) {
    return MakeHelpProject(*web->web, job, web->locate, base_name, use);
  };
  const HelpProject kept = make(ProjectUse::kToKeep);
  TellUnlisted(kept, console);
  WrittenProject written(kept);
  const bool made = CompileInMemory(make(ProjectUse::kInProcess), job, report, console);
  written.Keep();
  return made;
}

// A quiet run has not told the warnings, which are now what it fails for.
void TellWhyStrictFails(const CompileOptions& options, const CompileReport& report,
                        Console& console) {
  if (!options.quiet || report.Errors() > 0) return;
  std::string text = "the compiler reported problems, which --strict does not allow:";
  for (const std::string& message : report.Texts()) text += "\n" + message;
  console.Fail(text);
}

void Show(const std::string& help_file, Console& console) {
  ShellRequest request;
  request.verb = "open";
  request.file = help_file;
  if (TheServices().shell->Execute(request) > kLastShellFailure) return;
  console.Warn(help_file + ": no program could be started to open it");
}

void TellMade(const std::string& output, Console& console) {
  const std::string inside = WhatIsInside(output);
  console.Note("Made " + output + ": " + inside + (inside.empty() ? "" : ", ") +
               SizeText(TheServices().files->Size(output)) + ", " +
               DurationText(console.Seconds()));
}

int CompileTelling(const CompileOptions& options, bool tell_result, Console& console) {
  console.BeginStep("Reading " + options.web);
  WebToCompile web(options, PagesGoTo::kThisCompiler, console);
  const std::string& output = web.job.output;
  const bool had_earlier = TheServices().files->FileExists(output);

  if (web.job.keep_project && web.job.without_bars) {
    console.Remark("The project that is kept names the pages on disk, which keep their bars.");
  }
  console.BeginStep("Compiling");
  CompileReport report(console, web.counts.files, options.all_messages);
  const bool made = Compile(options, &web, &report, console);
  console.EndSteps();
  if (!made) {
    web.TellWarnings(&report);
    const std::string outcome =
        output + ": no help file was made" + (had_earlier ? "; the earlier file is kept" : "");
    // What is an error is told once; the outcome stands behind it.
    if (console.Failures() > 0) {
      console.Remark(outcome);
    } else {
      console.Fail(outcome);
    }
    return 1;
  }
  // The file is there: that memory or the output ends in telling so is no failure.
  IgnoringErrors([&] { web.TellWarnings(&report); });
  if (tell_result) {
    IgnoringErrors([&] { TellMade(output, console); });
  }
  if (options.view) Show(output, console);
  if (!options.strict || report.Messages() == 0) return 0;
  TellWhyStrictFails(options, report, console);
  return 1;
}

}  // namespace

int CompileWeb(const CompileOptions& options, Console& console) {
  return CompileTelling(options, true, console);
}

int CompileWebForUse(const CompileOptions& options, Console& console) {
  return CompileTelling(options, false, console);
}

int WriteProjectOf(const CompileOptions& options, Console& console) {
  console.BeginStep("Reading " + options.web);
  WebToCompile web(options, PagesGoTo::kAnother, console);
  const std::string folder = web.web->BaseFolder()->LocalPath();
  const HelpProject project = MakeHelpProject(*web.web, web.job, web.locate,
                                              FreeProjectBaseName(folder), ProjectUse::kToKeep);
  TellUnlisted(project, console);
  StopIfInterrupted();
  WrittenProject written(project);
  written.Keep();
  console.EndSteps();
  web.TellWarnings(nullptr);
  for (const std::string& path : written.Paths()) console.Print(path);
  return 0;
}

}  // namespace scrivo
