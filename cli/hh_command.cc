#include "cli/hh_command.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <initializer_list>
#include <memory>
#include <ostream>
#include <span>
#include <string_view>
#include <system_error>

#include "chm/problem.h"
#include "cli/help_file.h"
#include "project/source_files.h"
#include "system/interruption.h"
#include "text/ascii_text.h"
#include "text/visible_text.h"
#include "unpack/output_folder.h"
#include "unpack/unpack.h"

namespace scrivo {
namespace {

using Words = std::span<const std::string>;

bool TakeSwitch(const std::string& word, DecompileArguments* arguments) {
  if (word == "-v") {
    arguments->verbose = true;
  } else if (word == "--internal") {
    arguments->internal = true;
  } else {
    return false;
  }
  return true;
}

Words TakeSwitches(Words words, DecompileArguments* arguments) {
  while (!words.empty() && TakeSwitch(words.front(), arguments)) words = words.subspan(1);
  return words;
}

// A path out of its words, without quotes that came through around it.
std::string Join(Words words) {
  std::string joined;
  for (const std::string& word : words) {
    if (!joined.empty()) joined += ' ';
    joined += word;
  }
  if (joined.size() >= 2 && joined.front() == '"' && joined.back() == '"') {
    joined = joined.substr(1, joined.size() - 2);
  }
  return joined;
}

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

std::optional<DecompileArguments> ParseDecompileArguments(
    const std::vector<std::string>& arguments,
    const std::function<bool(const std::string&)>& is_file,
    const std::function<bool(const std::string&)>& is_folder) {
  DecompileArguments result;
  Words words = TakeSwitches(arguments, &result);
  if (words.empty() || !EqualsIgnoringCase(words.front(), "-decompile")) return std::nullopt;
  words = TakeSwitches(words.subspan(1), &result);
  while (!words.empty() && TakeSwitch(words.back(), &result)) words = words.first(words.size() - 1);

  std::vector<std::size_t> splits;  // where FILE may start
  for (std::size_t split = 1; split < words.size(); ++split) {
    if (words.size() == 2 || is_file(Join(words.subspan(split)))) splits.push_back(split);
  }
  if (splits.size() > 1) {
    std::erase_if(splits, [&](std::size_t split) { return !is_folder(Join(words.first(split))); });
  }
  if (splits.size() != 1) return std::nullopt;
  result.folder = Join(words.first(splits[0]));
  result.file = Join(words.subspan(splits[0]));
  if (result.folder.empty() || result.file.empty()) return std::nullopt;
  return result;
}

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
