#include "cli/foreign_compiler.h"

#include <algorithm>
#include <deque>
#include <filesystem>
#include <optional>
#include <string_view>
#include <system_error>
#include <vector>

#include "bytes/byte_source.h"
#include "bytes/little_endian.h"
#include "bytes/output_file.h"
#include "chm/container_format.h"
#include "cli/disk_path.h"
#include "cli/help_project.h"
#include "cli/open_web.h"
#include "cli/web_copy.h"
#include "cli/web_sources.h"
#include "cli/work_folder.h"
#include "compiler/transcript.h"
#include "errors/frame.h"
#include "platform/paths.h"
#include "system/error.h"
#include "system/interruption.h"
#include "system/program.h"
#include "system/services.h"
#include "text/code_page.h"

namespace scrivo {
namespace {

constexpr std::size_t kLinesShown = 5;

std::string ReadStart(const std::string& path, std::size_t size) {
  const std::unique_ptr<FileReader> reader = Disk().OpenForReading(path);
  std::string bytes(size, '\0');
  std::size_t got = 0;
  while (got < size) {
    const std::size_t now = reader->Read(bytes.data() + got, size - got);
    if (now == 0) break;
    got += now;
  }
  bytes.resize(got);
  return bytes;
}

// Whether the file is a help file whose header names no more bytes than it has.
bool IsWholeHelpFile(const std::string& path) {
  constexpr std::size_t kHeaderSize = itsf::kLengthVersion3 + size_section::kLength;
  if (!Disk().FileExists(path)) return false;
  const std::string start = ReadStart(path, kHeaderSize);
  if (start.size() < kHeaderSize || !start.starts_with(itsf::kSignature)) return false;
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(start.data());
  const std::uint64_t section = LoadLe64(bytes + itsf::kSizeSectionOffset);
  // Every compiler puts the section that tells the size right behind the header.
  if (section > kHeaderSize - size_section::kLength) return false;
  return LoadLe64(bytes + section + size_section::kFileSize) <= Disk().Size(path);
}

// Puts the file that was made in the output's place. Throws Error.
void Deliver(const std::string& made, const std::string& output) {
  std::error_code error;
  const auto source = OpenFileSource(DiskPathOf(made), &error);
  const auto target = source ? OutputFile::Create(DiskPathOf(output), &error) : nullptr;
  if (target) {
    std::vector<std::uint8_t> piece;
    const std::uint64_t size = source->Size();
    for (std::uint64_t at = 0; at < size && !error; at += piece.size()) {
      piece.resize(static_cast<std::size_t>(std::min<std::uint64_t>(size - at, 1 << 20)));
      if (!source->ReadAt(at, piece)) error = std::make_error_code(std::errc::io_error);
      if (!error && !target->WriteAt(at, piece)) error = target->Reason();
    }
    if (!error && !target->Commit()) error = target->Reason();
  }
  if (!error) return;
  throw Error(kPathFileAccessError, "scrivo",
              output + ": the help file cannot be written: " + error.message());
}

CompileMessage TypedMessage(const std::string& text) {
  constexpr std::string_view kError = "Error: ", kWarning = "Warning: ", kNote = "Note: ";
  if (text.starts_with(kError)) return {0, Severity::kError, text.substr(kError.size())};
  if (text.starts_with(kWarning)) return {0, Severity::kWarning, text.substr(kWarning.size())};
  if (text.starts_with(kNote)) return {0, Severity::kNote, text.substr(kNote.size())};
  return {0, Severity::kWarning, text};
}

// One run of the program: its lines go to the report, the last of them are kept. Where they name
// the copy of the web that the program reads, the report is given the web.
class Run {
 public:
  Run(CompileReport* report, std::string copy, std::string web)
      : report_(*report), copy_(std::move(copy)), web_(std::move(web)) {}

  // Runs the program to its end. Throws Error when it cannot be started.
  void Do(const std::string& compiler, const std::string& folder, const std::string& project) {
    Processes& processes = *TheServices().processes;
    SystemHandle read_end = 0, write_end = 0;
    if (!processes.OpenPipe(&read_end, &write_end)) ThrowNotStarted(compiler, folder);
    StartRequest request;
    request.command_line = "\"" + compiler + "\" " + project;
    request.folder = folder;
    request.start_flags = kStartUseShowWindow | kStartUseStandardHandles;
    request.show_window = kShowWindowHidden;
    request.creation_flags = kNormalPriorityClass;
    request.inherit_handles = true;
    request.standard_output = request.standard_error = write_end;
    StartedProcess child;
    const bool started = processes.Start(request, &child);
    processes.Close(write_end);
    if (!started) {
      processes.Close(read_end);
      ThrowNotStarted(compiler, folder);
    }
    char buffer[4096];
    std::uint32_t got = 0;
    while (processes.Read(read_end, buffer, sizeof buffer, &got)) Add({buffer, got});
    EndLine();
    exit_code_ = processes.ExitCode(child.process);
    // It could still write to its output.
    if (HasLivedOn()) processes.End(child.process);
    processes.Close(child.process);
    processes.Close(child.thread);
    processes.Close(read_end);
  }

  bool HasLivedOn() const { return exit_code_ == kStillActive; }

  // How the run ended, for a compiler that did not do its job.
  std::string EndingText() const {
    if (HasLivedOn()) return "closed its output without exiting and was terminated";
    const std::string status = "exit status " + std::to_string(static_cast<int>(exit_code_));
    return HasCrashed() ? "crashed (" + status + ")" : "ended with " + status;
  }
  bool HasCrashed() const {
    constexpr std::int32_t kFirstSignal = 129, kLastSignal = 128 + 64;
    const auto code = static_cast<std::int32_t>(exit_code_);
    return code < 0 || (code >= kFirstSignal && code <= kLastSignal);
  }
  const std::deque<std::string>& LastLines() const { return last_lines_; }

 private:
  [[noreturn]] void ThrowNotStarted(const std::string& compiler, const std::string& folder) {
    const std::uint32_t code = TheServices().processes->LastError();
    if (Interrupted()) throw Error(kUserInterrupt, "scrivo", "Interrupted");
    throw Error(
        kPathFileAccessError, "scrivo",
        compiler + ": the compiler could not be started: " + StartFailureText(code, folder));
  }

  void Add(std::string_view bytes) {
    for (const char c : bytes) {
      if (c == '\n' || c == '\r') {
        EndLine();
      } else {
        line_ += c;
      }
    }
  }

  void EndLine() {
    if (line_.empty()) return;
    for (std::size_t at = 0; (at = line_.find(copy_, at)) != std::string::npos;) {
      line_.replace(at, copy_.size(), web_);
      at += web_.size();
    }
    std::string line = ToUtf8(line_, TerminalCodePage());
    report_.Line(line);
    for (const std::string& text : ScanForMessages(line)) report_.Message(TypedMessage(text));
    last_lines_.push_back(std::move(line));
    if (last_lines_.size() > kLinesShown) last_lines_.pop_front();
    line_.clear();
  }

  CompileReport& report_;
  const std::string copy_, web_;
  std::string line_;
  std::deque<std::string> last_lines_;
  std::uint32_t exit_code_ = 0;
};

// Tells how a run ended that made no help file, as far as its messages have not.
void TellEnding(const std::string& compiler, const std::string& made, const Run& run,
                const CompileReport& report, Console* console) {
  std::string text = compiler + ": " + run.EndingText();
  if (Disk().FileExists(made)) {
    text += "; the help file that it made is incomplete";
  } else if (report.Errors() > 0 && !run.HasLivedOn() && !run.HasCrashed()) {
    return;
  }
  text += ". To see why, keep the project with --keep-project and run the compiler on it.";
  if (report.Messages() == 0) {
    for (const std::string& line : run.LastLines()) text += "\n" + line;
  }
  console->Fail(text);
}

}  // namespace

bool CompileWithForeign(const std::string& compiler, SiteWeb& web, const CompileJob& job,
                        const Locator& locate, CompileReport* report, Console* console) {
  const WorkFolder work(job.output);
  const std::string folder = web.BaseFolder()->LocalPath();
  const std::string copy = work.PathOf("web"), made_in = work.PathOf("made");
  const std::string base_name = job.keep_project ? FreeProjectBaseName(folder) : kProjectBaseName;
  const auto make = [&](const CompileJob& of, ProjectUse use) {
    return MakeHelpProject(web, of, locate, base_name, use);
  };
  CompileJob inner = job;
  inner.output = JoinPath(made_in, GetFileName(job.output));
  const HelpProject project = make(inner, ProjectUse::kByAnother);
  TellUnlisted(project, *console);
  std::optional<WrittenProject> kept;
  if (job.keep_project) kept.emplace(make(job, ProjectUse::kToKeep));
  const WebSources files(project, job);
  CopyWeb(web, files, copy, console);
  files.TellChanges(*console);
  Disk().MakeFolder(made_in);
  Run run(report, copy, folder);
  run.Do(compiler, copy, project.name);
  if (Interrupted()) throw Error(kUserInterrupt, "scrivo", "Interrupted");
  if (kept) kept->Keep();
  if (!IsWholeHelpFile(inner.output)) {
    TellEnding(compiler, inner.output, run, *report, console);
    return false;
  }
  Deliver(inner.output, job.output);
  return true;
}

std::string ForeignCompilerPath(const std::string& wanted) {
  const std::string path = AbsolutePath(wanted);
  const auto refuse = [&](std::int32_t number, const std::string& reason) {
    throw Error(number, "scrivo", path + ": the compiler cannot be run: " + reason);
  };
  if (Disk().FolderExists(path)) {
    refuse(kPathFileAccessError, "it is a folder. Name the program itself.");
  }
  if (!Disk().FileExists(path)) {
    refuse(kFileNotFound, "no such file. Check the spelling of the path.");
  }
  if (path.find('"') != std::string::npos) {
    refuse(kPathFileAccessError,
           "the path contains a quotation mark, which a command line cannot carry. Move the "
           "compiler, or use a link to it.");
  }
  return path;
}

std::string StartFailureText(std::uint32_t code, const std::string& folder) {
  switch (code) {
    case 2:
    case 3:
      return "a file that it needs is missing. Reinstall it, or choose another compiler with "
             "--compiler.";
    case 5:
      return "it cannot be run. Check that it is a program and that you have permission to run it.";
    case 193:
      return "it is not a program for this system. Choose another compiler with --compiler.";
    case 267:
      return "the folder " + folder + " cannot be entered. Ask for permission to enter it.";
    default:
      return "the system reports error " + std::to_string(code) + ".";
  }
}

}  // namespace scrivo
