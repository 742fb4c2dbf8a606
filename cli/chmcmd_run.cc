#include "cli/chmcmd_run.h"

#include "cli/chmcmd_messages.h"
#include "cli/chmcmd_project.h"
#include "errors/frame.h"
#include "platform/paths.h"
#include "system/error.h"
#include "system/services.h"

namespace scrivo {
namespace {

constexpr int kMade = 1;
constexpr int kNotMade = 0;
constexpr const char* kFilesNotCompiled = "The following files were not compiled:";

// A file that is removed when it goes out of scope.
class TemporaryFile {
 public:
  explicit TemporaryFile(std::string path) : path_(std::move(path)) {}
  ~TemporaryFile() {
    IgnoringErrors([&] { TheServices().files->Remove(path_, true); });
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

 private:
  std::string path_;
};

// Reads what a child prints, line by line, and puts each into the form of the vendor's compiler.
class LineTranslator {
 public:
  explicit LineTranslator(std::ostream& out) : out_(out) {}
  ~LineTranslator() { EndLine(); }

  void Add(std::string_view bytes) {
    for (const char c : bytes) {
      if (c == '\n') {
        EndLine();
      } else if (c != '\r') {
        line_ += c;
      }
    }
  }

 private:
  void EndLine() {
    const std::string message = AsCompilerMessage(line_);
    if (!message.empty()) out_ << message << std::endl;
    line_.clear();
  }

  std::ostream& out_;
  std::string line_;
};

// Runs chmcmd on the project `name` in `folder`. True when it ended with status 0.
bool RunChmcmd(const std::string& folder, const std::string& name, std::ostream& out) {
  Processes& processes = *TheServices().processes;
  SystemHandle read_end = 0;
  SystemHandle write_end = 0;
  StartedProcess child;
  if (!processes.OpenPipe(&read_end, &write_end)) return false;
  StartRequest request;
  request.command_line = "\"chmcmd\" " + name;
  request.folder = folder;
  request.start_flags = kStartUseStandardHandles;
  request.inherit_handles = true;
  request.standard_output = request.standard_error = write_end;
  const bool started = processes.Start(request, &child);
  processes.Close(write_end);
  if (!started) {
    out << "HHC7001: Error: chmcmd could not be started (error " << processes.LastError()
        << "); it comes with Debian's package fp-utils" << std::endl;
    processes.Close(read_end);
    return false;
  }
  {
    LineTranslator lines(out);
    char buffer[4096];
    std::uint32_t got = 0;
    while (processes.Read(read_end, buffer, sizeof buffer, &got)) lines.Add({buffer, got});
  }
  processes.WaitForEnd(child.process);
  const std::uint32_t status = processes.ExitCode(child.process);
  processes.Close(child.process);
  processes.Close(child.thread);
  processes.Close(read_end);
  return status == 0;
}

// The number with "," between its thousands.
std::string WithThousands(std::uint64_t number) {
  const std::string digits = std::to_string(number);
  std::string text;
  for (std::size_t i = 0; i < digits.size(); ++i) {
    if (i > 0 && (digits.size() - i) % 3 == 0) text += ',';
    text += digits[i];
  }
  return text;
}

int Compile(const std::string& project, std::ostream& out) {
  Files& files = *TheServices().files;
  const std::string folder = GetFolder(project);
  const ChmcmdProject prepared = PrepareForChmcmd(ReadWholeFile(files, project), folder, files);
  if (prepared.output.empty()) {
    out << "HHC5000: Error: " << project << " names no compiled file." << std::endl;
    return kNotMade;
  }
  out << "Compiling " << prepared.output << std::endl;
  IgnoringErrors([&] { files.Remove(prepared.output, false); });
  if (files.FileExists(prepared.output)) {
    out << "HHC5010: Error: Cannot open \"" << prepared.output << "\". Compilation stopped."
        << std::endl;
    return kNotMade;
  }
  for (const std::string& missing : prepared.missing) {
    out << "HHC5003: Error: Compilation failed while compiling " << missing << "." << std::endl;
  }
  const std::string reserved = files.MakeUniqueFile(folder, "Scrivo");
  if (reserved.empty()) {
    out << "HHC5011: Error: No file can be written into " << folder << "." << std::endl;
    return kNotMade;
  }
  const TemporaryFile reservation(reserved);
  const std::string rewritten = reserved + ".hhp";
  const TemporaryFile temporary(rewritten);
  files.Write(rewritten, prepared.text);

  const bool done = RunChmcmd(folder, GetFileName(rewritten), out);
  const std::uint64_t size = files.FileExists(prepared.output) ? files.Size(prepared.output) : 0;
  if (!done || size == 0) {
    // chmcmd leaves an empty file behind when it gives up.
    IgnoringErrors([&] { files.Remove(prepared.output, true); });
    return kNotMade;
  }
  if (!prepared.missing.empty()) out << kFilesNotCompiled << std::endl;
  for (const std::string& missing : prepared.missing) out << missing << std::endl;
  out << "Created " << prepared.output << ", " << WithThousands(size) << " bytes" << std::endl;
  return kMade;
}

}  // namespace

int CompileWithChmcmd(const std::string& project, std::ostream& out) {
  out << "Scrivo's adapter for chmcmd " << SCRIVO_VERSION << std::endl;
  try {
    return Compile(project, out);
  } catch (...) {
    out << "HHC5002: Error: " << ErrorFrom(std::current_exception()).description << std::endl;
    return kNotMade;
  }
}

}  // namespace scrivo
