#include "cli/hh_command.h"

#include <algorithm>
#include <filesystem>
#include <initializer_list>
#include <memory>
#include <ostream>
#include <string_view>
#include <system_error>

#include "chm/problem.h"
#include "cli/decompile_arguments.h"
#include "cli/help_file.h"
#include "project/source_files.h"
#include "system/interruption.h"
#include "text/visible_text.h"
#include "unpack/output_folder.h"
#include "unpack/unpack.h"

namespace scrivo {
namespace {

constexpr int kAllUnpacked = 0;
constexpr int kNotAllUnpacked = 1;
constexpr int kMisuse = 2;

constexpr char kHhUsage[] =
    "usage: hh -decompile [-v] [--internal] FOLDER FILE\n"
    "Unpacks the compiled help file FILE into FOLDER, which is created if necessary.\n"
    "  -v          print the name of each file written\n"
    "  --internal  also write the streams of the help system (#SYSTEM, $FIftiMain, ...)\n"
    "  --version   print name and version\n"
    "  --help      print this text\n"
    "Exit status: 0 if everything was unpacked, 1 if something was not or was renamed, or the\n"
    "program was interrupted, 2 if the command line is wrong.\n";

class Printer : public UnpackListener {
 public:
  Printer(bool verbose, std::ostream& out, std::ostream& err)
      : verbose_(verbose), out_(out), err_(err) {}

  void OnFile(const PlannedFile& file) override {
    if (verbose_) out_ << PrintableName(file.path) << '\n';
  }
  void OnProblem(const Problem& problem) override {
    err_ << "hh: warning: " << Describe(problem) << '\n';
  }
  void OnProgress(std::uint64_t, std::uint64_t) override {}
  bool StopWanted() const override { return Interrupted(); }

 private:
  bool verbose_;
  std::ostream& out_;
  std::ostream& err_;
};

}  // namespace

int RunHh(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err) {
  const auto is_alone = [&](std::initializer_list<std::string_view> names) {
    return arguments.size() == 1 &&
           std::find(names.begin(), names.end(), arguments[0]) != names.end();
  };
  if (is_alone({"--help", "-h", "/?"})) {
    out << kHhUsage;
    return kAllUnpacked;
  }
  if (is_alone({"--version"})) {
    out << "Scrivo HTML Help Unpacker " << SCRIVO_VERSION << '\n';
    return kAllUnpacked;
  }
  std::error_code ignored;
  const auto parsed = ParseDecompileArguments(
      arguments,
      [&](const std::string& path) {
        return std::filesystem::is_regular_file(SystemPath(path), ignored);
      },
      [&](const std::string& path) {
        return std::filesystem::is_directory(SystemPath(path), ignored);
      });
  if (!parsed) {
    err << kHhUsage;
    return kMisuse;
  }
  const HelpFile file = OpenHelpFile(parsed->file);
  for (const std::string& complaint : file.complaints) err << "hh: error: " << complaint << '\n';
  if (file.reader == nullptr) return kNotAllUnpacked;

  std::error_code error;
  const auto folder = OpenOutputFolder(SystemPath(parsed->folder), &error);
  if (folder == nullptr) {
    err << "hh: error: " << PrintableName(parsed->folder) << ": " << error.message() << '\n';
    return kNotAllUnpacked;
  }
  Printer printer(parsed->verbose, out, err);
  UnpackOptions options;
  options.internal = parsed->internal;
  const UnpackResult result = Unpack(*file.reader, *folder, options, printer);
  const bool all = file.complaints.empty() && result.problems == 0 && !result.stopped;
  return all ? kAllUnpacked : kNotAllUnpacked;
}

}  // namespace scrivo
