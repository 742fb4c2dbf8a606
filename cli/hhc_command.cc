#include "cli/hhc_command.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <new>
#include <string_view>
#include <system_error>
#include <thread>

#include "bytes/output_file.h"
#include "cli/hhc_output.h"
#include "hhc/compiler.h"

namespace scrivo {
namespace {

constexpr char kHhcUsage[] =
    "usage: hhc [options] PROJECT.hhp\n"
    "\n"
    "Compiles an HTML Help project. As scripts expect of a help compiler, the exit status is 1 if\n"
    "the help file was made and 0 if it was not.\n"
    "\n"
    "  --gnu        exit status 0 if the file was made, 1 if it was not, 2 if the command line is\n"
    "               wrong, 130 after an interruption; also chosen by the environment variable\n"
    "               HHC_GNU\n"
    "  --timestamp  record the time in the file, or SOURCE_DATE_EPOCH if that is set; without "
    "this\n"
    "               option the same input always gives the same file\n"
    "  --jobs N     threads that compress, beside as many that read pages (default: one for each\n"
    "               core); the file does not depend on it\n"
    "  --version    print name and version\n"
    "  --help       print this text\n";

struct Options {
  std::string project;
  bool gnu = false, timestamp = false, help = false, version = false;
  int jobs = 0;       // 0: one for each core
  std::string wrong;  // why the command line cannot be used
};

// The whole of `text` as a number from `least` on; nothing otherwise.
template <typename Number>
bool ReadNumber(std::string_view text, Number least, Number* number) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), *number);
  return error == std::errc() && end == text.data() + text.size() && *number >= least;
}

Options ReadArguments(const std::vector<std::string>& arguments) {
  Options options;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string_view argument = arguments[i];
    if (argument == "--gnu") {
      options.gnu = true;
    } else if (argument == "--timestamp") {
      options.timestamp = true;
    } else if (argument == "--help" || argument == "-h" || argument == "/?") {
      options.help = true;
    } else if (argument == "--version") {
      options.version = true;
    } else if (argument == "--jobs") {
      ++i;
      if (i >= arguments.size() || !ReadNumber(arguments[i], 1, &options.jobs)) {
        options.wrong = "--jobs: needs a number";
      }
    } else if (argument.starts_with("--")) {
      options.wrong = std::string(argument) + ": unknown option";
    } else if (!options.project.empty()) {
      options.wrong = "more than one project named";
    } else {
      options.project = argument;
    }
  }
  if (options.project.empty() && options.wrong.empty()) options.wrong = "no project named";
  return options;
}

// The time to record in the file, 0 for none. False when SOURCE_DATE_EPOCH is not a time.
bool TimeToRecord(const Options& options, const std::string& epoch, std::int64_t* time) {
  *time = 0;
  if (!epoch.empty()) return ReadSourceDateEpoch(epoch, time);
  if (options.timestamp) {
    *time = std::chrono::duration_cast<std::chrono::seconds>(
                std::chrono::system_clock::now().time_since_epoch())
                .count();
  }
  return true;
}

// Quotes around the name, as some callers pass them on, are not part of it.
std::string WithoutQuotes(const std::string& name) {
  if (name.size() < 2 || name.front() != '"' || name.back() != '"') return name;
  return name.substr(1, name.size() - 2);
}

// Writes the log in the place of an earlier one in one step, and its folder where that is missing.
// Returns why not.
std::string WriteLog(const CompileResult& result, const std::string& text) {
  if (!result.error_log_refusal.empty()) return result.error_log_refusal;
  const std::filesystem::path path = SystemPath(result.error_log);
  ParentFolders folders(path);
  std::error_code error = folders.Error();
  const auto file = error ? nullptr : OutputFile::Create(path, &error);
  if (file == nullptr) return error.message();
  const auto* const bytes = reinterpret_cast<const std::uint8_t*>(text.data());
  if (!file->WriteAt(0, {bytes, text.size()}) || !file->Commit()) return file->Reason().message();
  folders.Keep();
  return {};
}

// Sets the exit status as soon as it is known: what fails behind that, in telling, does not change
// what has been made.
void Compile(const Options& options, const HhcSurroundings& surroundings, std::int64_t time,
             std::ostream& out, std::ostream& err, int* status) {
  // The status of a shell that was interrupted, 130, would tell callers of a help compiler that the
  // file was made.
  constexpr int kInterrupted = 130;
  CompileRequest request;
  request.project_path = WithoutQuotes(options.project);
  request.working_folder = surroundings.working_folder;
  request.name_code_page = surroundings.name_code_page;
  request.compiler_name = kCompilerName;
  request.time = time;
  request.threads = options.jobs > 0 ? options.jobs : CompilerThreads();

  HhcOutput output(out, kCompilerName);
  const auto start = std::chrono::steady_clock::now();
  const DiskFiles files;
  const CompileResult result = CompileProject(request, files, &output);
  if (result.made) *status = options.gnu ? 0 : 1;
  if (result.stopped) {
    if (options.gnu) *status = kInterrupted;
    return;
  }
  if (!result.project_found) {
    out << kCompilerName << "\n\nUnable to open " << options.project << ".\n" << std::flush;
    return;
  }
  const auto seconds =
      std::chrono::duration_cast<std::chrono::seconds>(std::chrono::steady_clock::now() - start);
  output.Finish(result, static_cast<int>(seconds.count()));
  if (!result.error_log.empty()) {
    const std::string reason = WriteLog(result, output.Text());
    if (!reason.empty()) {
      err << "hhc: error: " << result.error_log << ": the log file cannot be written: " << reason
          << '\n';
    }
  }
}

}  // namespace

bool ReadSourceDateEpoch(const std::string& text, std::int64_t* seconds) {
  return ReadNumber(text, std::int64_t{0}, seconds);
}

int CompilerThreads() {
  return static_cast<int>(std::max(1u, std::thread::hardware_concurrency()));
}

int RunHhc(const std::vector<std::string>& arguments, const HhcSurroundings& surroundings,
           std::ostream& out, std::ostream& err) {
  Options options = ReadArguments(arguments);
  options.gnu = options.gnu || surroundings.gnu;
  if (options.help) {
    out << kHhcUsage;
    return 0;
  }
  if (options.version) {
    out << kCompilerName << '\n';
    return 0;
  }
  std::int64_t time = 0;
  if (options.wrong.empty() && !TimeToRecord(options, surroundings.source_date_epoch, &time)) {
    options.wrong = "SOURCE_DATE_EPOCH: not a number of seconds";
  }
  if (!options.wrong.empty()) {
    err << "hhc: error: " << options.wrong << "\n\n" << kHhcUsage;
    return options.gnu ? 2 : 0;
  }
  int status = options.gnu ? 1 : 0;  // until it is made
  const int not_made = status;
  try {
    Compile(options, surroundings, time, out, err, &status);
  } catch (const std::bad_alloc&) {
    if (status == not_made) err << "hhc: error: out of memory\n";
  } catch (const std::exception& exception) {
    if (status == not_made) err << "hhc: error: " << exception.what() << '\n';
  }
  return status;
}

}  // namespace scrivo
