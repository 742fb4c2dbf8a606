#include "cli/compile_command.h"

#include <algorithm>

#include "cli/compile_form.h"
#include "cli/compiler_choice.h"
#include "cli/compiler_process.h"
#include "cli/open_web.h"
#include "cli/output_guard.h"
#include "cli/run_summary.h"
#include "compiler/frm_hhc.h"
#include "generator/relative_location.h"
#include "platform/globals.h"
#include "system/error.h"
#include "system/interruption.h"
#include "system/services.h"

namespace scrivo {
namespace {

constexpr const char* kProjectFilesNeedRoom =
    "The project files cannot be written there; copy the web to another place.";

// What the run window knows of a run that is over.
struct RunFacts {
  bool has_run = false;  // the compiler was started
  std::int32_t exit_code = 0;
  std::vector<std::string> messages;
  std::string transcript;
};

RunFacts TakeRunFacts(const CompilerProcess& compiler) {
  RunFacts facts;
  if (!frmHHC::IsLoaded()) return facts;
  const frmHHC& run = frmHHC::Load();
  facts.has_run = compiler.HasStarted();
  facts.exit_code = run.ExitCode();
  facts.messages = run.Messages();
  facts.transcript = run.Transcript();
  frmHHC::Unload();
  return facts;
}

bool IsErrorMessage(const std::string& message) { return message.starts_with("Error"); }

bool HasLivedOn(std::int32_t exit_code) {
  return exit_code == static_cast<std::int32_t>(kStillActive);
}

bool HasCrashed(std::int32_t exit_code) {
  constexpr std::int32_t kFirstSignal = 129;
  constexpr std::int32_t kLastSignal = 128 + 64;
  return exit_code < 0 || (exit_code >= kFirstSignal && exit_code <= kLastSignal);
}

bool IsOrdinaryEnd(std::int32_t exit_code) {
  return !HasLivedOn(exit_code) && !HasCrashed(exit_code);
}

// How a run ended, for a compiler that did not do its job.
std::string EndingText(std::int32_t exit_code) {
  if (HasLivedOn(exit_code)) return "closed its output without ending, and was ended";
  const std::string status = "exit status " + std::to_string(exit_code);
  return HasCrashed(exit_code) ? "crashed (" + status + ")" : "ended with " + status;
}

// The last lines that the compiler printed, each on a line of its own behind a line break.
std::string LastLines(const std::string& transcript) {
  constexpr std::size_t kLines = 5;
  const std::size_t first = transcript.find("\r\n");  // where the run window's own line ends
  std::size_t end = transcript.rfind("\r\nDone!");
  std::vector<std::string> lines;
  while (lines.size() < kLines && end != std::string::npos && end > first) {
    const std::size_t line_break = transcript.find_last_of("\r\n", end - 1);
    if (line_break + 1 < end) {
      lines.push_back(transcript.substr(line_break + 1, end - line_break - 1));
    }
    end = line_break;
  }
  std::string text;
  for (auto line = lines.rbegin(); line != lines.rend(); ++line) text.append("\n").append(*line);
  return text;
}

void TellWhyNothingWasMade(Console& console, const RunFacts& run, const OutputGuard& output) {
  const std::string kept = output.HoldsEarlierFile() ? "; the earlier file is kept" : "";
  if (!run.has_run) {
    // Why it was not run has been told.
    if (!kept.empty() || console.Failures() == 0) {
      console.Fail(output.path() + ": no help file was made" + kept + ".");
    }
    return;
  }
  std::string text = output.path() + ": no help file was made";
  if (TheServices().files->FileExists(output.path())) {
    text = output.path() + ": this is no whole help file; it was removed";
  }
  text += kept + ".";
  // What was told in messages already need not be told again.
  const bool has_told = std::any_of(run.messages.begin(), run.messages.end(), IsErrorMessage);
  if (!has_told || !IsOrdinaryEnd(run.exit_code)) {
    text += " " + Globals().compiler_path + " " + EndingText(run.exit_code) +
            ". To see why, keep the project with --keep-project and run the compiler on it.";
  }
  if (run.messages.empty()) text += LastLines(run.transcript);
  console.Fail(text);
}

// A quiet run has not told the warnings, which are now what it fails for.
void TellWhyStrictFails(Console& console, const RunFacts& run, const CompileOptions& options) {
  const bool has_told = std::any_of(run.messages.begin(), run.messages.end(), IsErrorMessage);
  if (!options.quiet || has_told) return;
  std::string text = "The compiler gave messages, and --strict allows none:";
  for (const std::string& message : run.messages) text += "\n" + message;
  console.Fail(text);
}

void ThrowIfInterrupted() {
  if (Interrupted()) throw Error(kUserInterrupt, "scrivo", "Interrupted");
}

WebCounts ReadPages(SiteWeb& web, const CompileOptions& options, Console& console) {
  return CountWeb(web, options.use_index, [&](std::size_t done, std::size_t all) {
    console.ShowProgress(std::to_string(100 * done / all) + " %", "");
  });
}

// Takes the dialog and its project files away when the run is left before Generate could.
class FormCleaner {
 public:
  FormCleaner(std::shared_ptr<frmMain> form, bool keep_project)
      : form_(std::move(form)), keep_project_(keep_project) {}
  ~FormCleaner() {
    if (!keep_project_) form_->RemoveProjectFiles();
    frmMain::Unload();
  }
  void KeepProject() { keep_project_ = true; }

 private:
  std::shared_ptr<frmMain> form_;
  bool keep_project_;
};

}  // namespace

int CompileWeb(const CompileOptions& options, Console& console) {
  WebWarnings warnings(console);
  console.BeginStep("Reading " + options.web);
  const std::shared_ptr<DiskWeb> web = OpenWebOf(options, warnings);
  TellContentsUsed(options, *web, console);
  ChooseCompiler(options.compiler);
  const std::shared_ptr<frmMain> form = LoadCompileForm(options);
  FormCleaner cleaner(form, options.keep_project);
  ThrowUnlessWritable(Globals().working_folder, kProjectFilesNeedRoom);
  OutputGuard output(form->suiParams()["OUTPUT"].text);
  const std::string default_page = form->suiParams()["DEFAULTPAGE"].data;
  const WebCounts counts = ReadPages(*web, options, console);
  ThrowIfInterrupted();  // Generate would meet it as one failure after the other

  const auto compiler = std::make_shared<CompilerProcess>(TheServices().processes);
  TheServices().processes = compiler;
  form->Generate();
  console.EndSteps();
  const RunFacts run = TakeRunFacts(*compiler);
  ThrowIfInterrupted();
  web->ReportLostCharacters();
  warnings.Sum();
  if (!output.HasHelpFile()) {
    TellWhyNothingWasMade(console, run, output);
    return 1;
  }
  output.Accept();
  console.Note("Made " + output.path() + ": " + CountsText(counts) + ", " +
               SizeText(TheServices().files->Size(output.path())) + ", " +
               DurationText(console.Seconds()));
  if (options.view) {
    TheServices().desktop->HtmlHelp(0, output.path(), kHelpDisplayToc,
                                    RelativeLocation(default_page));
  }
  if (!options.strict || run.messages.empty()) return 0;
  TellWhyStrictFails(console, run, options);
  return 1;
}

int WriteProjectOf(const CompileOptions& options, Console& console) {
  WebWarnings warnings(console);
  console.BeginStep("Reading " + options.web);
  const std::shared_ptr<DiskWeb> web = OpenWebOf(options, warnings);
  TellContentsUsed(options, *web, console);
  UseRegistryInMemory();
  const std::shared_ptr<frmMain> form = LoadCompileForm(options);
  FormCleaner cleaner(form, false);
  ThrowUnlessWritable(Globals().working_folder, kProjectFilesNeedRoom);
  const bool written = form->WriteProject();
  console.EndSteps();
  ThrowIfInterrupted();
  web->ReportLostCharacters();
  warnings.Sum();
  if (!written) return 1;
  cleaner.KeepProject();
  for (const std::string& path :
       {form->ProjectPath(), form->ContentsPath(), form->IndexPath(), form->DerivedPath()}) {
    if (!path.empty()) console.Print(path);
  }
  return 0;
}

}  // namespace scrivo
