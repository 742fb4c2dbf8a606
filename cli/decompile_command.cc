#include "cli/decompile_command.h"

#include <initializer_list>
#include <system_error>
#include <utility>

#include "chm/problem.h"
#include "cli/disk_path.h"
#include "cli/help_file.h"
#include "cli/open_web.h"
#include "cli/run_summary.h"
#include "exporter/export_web.h"
#include "system/error.h"
#include "system/interruption.h"
#include "system/services.h"
#include "text/visible_text.h"
#include "unpack/output_folder.h"
#include "unpack/unpack.h"

namespace scrivo {
namespace {

// Shows what is unpacked and tells what is not.
class UnpackReport : public UnpackListener {
 public:
  explicit UnpackReport(Console& console) : console_(console) {}

  void OnFile(const PlannedFile& file) override { last_file_ = PrintableName(file.path); }
  void OnProblem(const Problem& problem) override { console_.Fail(Describe(problem)); }
  void OnProgress(std::uint64_t done, std::uint64_t total) override {
    const std::uint64_t percent = total == 0 ? 100 : 100 * done / total;
    console_.ShowProgress(std::to_string(percent) + " %", last_file_);
  }
  bool StopWanted() const override { return Interrupted(); }

 private:
  Console& console_;
  std::string last_file_;
};

// "2 entries without ..." for each number that is not 0, with commas between.
std::string CountedParts(
    std::initializer_list<std::pair<std::size_t, std::pair<const char*, const char*>>> parts) {
  std::string text;
  for (const auto& [count, names] : parts) {
    if (count == 0) continue;
    if (!text.empty()) text += ", ";
    text += std::to_string(count) + " " + (count == 1 ? names.first : names.second);
  }
  return text;
}

void TellLosses(const WebMade& made, Console& console) {
  const std::string contents = CountedParts({
      {made.anchors, {"place within a page", "places within pages"}},
      {made.outside, {"address outside the web", "addresses outside the web"}},
      {made.missing, {"target that does not exist", "targets that do not exist"}},
      {made.merged, {"inclusion of another help file", "inclusions of other help files"}},
  });
  if (!contents.empty()) {
    console.Warn("contents entries keep their labels, but compiled again they lose " + contents);
  }
  const std::string index = CountedParts({
      {made.separators,
       {"name with a comma, a semicolon or a character reference",
        "names with a comma, a semicolon or a character reference"}},
      {made.sub_entries, {"sub-entry", "sub-entries"}},
      {made.see_also, {"reference to another entry", "references to other entries"}},
      {made.without_page, {"entry without a page of the web", "entries without a page of the web"}},
      {made.keyword_anchors, {"place within a page", "places within pages"}},
  });
  if (!index.empty()) console.Warn("keywords cannot hold all of the index; left out: " + index);
}

std::string Quoted(const std::string& text) {
  return text.find(' ') == std::string::npos ? text : "\"" + text + "\"";
}

// What a web itself cannot say to the compiler.
std::string CompileHint(const std::string& folder, const WebMade& made) {
  std::string hint = "To compile it again: scrivo compile " + Quoted(folder);
  if (made.contents_entries > 0) hint += " --contents navigation";
  if (!made.title.empty()) hint += " --title " + Quoted(made.title);
  if (!made.default_page.empty()) hint += " --default-page " + Quoted(made.default_page);
  if (made.declares_wrongly) hint += " --keep-charsets";
  return hint;
}

int MakeWeb(ChmReader& reader, const HelpFileOptions& options, bool is_complete, Console& console) {
  console.BeginStep("Unpacking");
  UnpackReport report(console);
  const std::string folder = AbsolutePath(options.folder);
  const WebMade made = ExportWeb(reader, DiskPathOf(folder), options.keywords, report);
  console.EndSteps();
  if (made.stopped) throw Error(kUserInterrupt, "scrivo", "Interrupted");
  const std::string file = PrintableName(options.file);
  if (made.pages == 0) {
    console.Fail(file + ": no page can be read, so no web is made");
    return 1;
  }
  if (made.lacks_contents) {
    console.Fail(file + ": the contents cannot be read, so the web has no navigation structure");
  }
  const bool lacks_keywords = options.keywords && made.lacks_index;
  if (lacks_keywords) {
    console.Fail(file + ": the index cannot be read, so the pages get no keywords");
  }
  TellLosses(made, console);
  std::string note = "Made a web in " + folder + ": " + Counted(made.pages, "page", "pages") +
                     ", " + Counted(made.contents_entries, "contents entry", "contents entries");
  if (options.keywords) note += ", " + Counted(made.keywords, "keyword", "keywords");
  console.Note(note + ".");
  console.Note(CompileHint(options.folder, made));
  const bool has_all = made.problems == 0 && !made.lacks_contents && !lacks_keywords;
  return is_complete && has_all ? 0 : 1;
}

}  // namespace

int UnpackFile(const HelpFileOptions& options, Console& console) {
  const std::string path = AbsolutePath(options.file);
  if (!TheServices().files->FileExists(path)) {
    throw Error(kFileNotFound, "scrivo", path + ": no such help file");
  }
  const HelpFile file = OpenHelpFile(PortablePathOf(path));
  for (const std::string& complaint : file.complaints) {
    console.Fail(complaint);
  }
  if (file.reader == nullptr) return 1;

  if (options.web) return MakeWeb(*file.reader, options, file.complaints.empty(), console);
  const std::string folder = AbsolutePath(options.folder);
  std::error_code error;
  const auto output = OpenOutputFolder(DiskPathOf(folder), &error);
  if (output == nullptr) {
    throw Error(kPathFileAccessError, "scrivo", folder + ": " + error.message());
  }
  console.BeginStep("Unpacking");
  UnpackReport report(console);
  const UnpackResult result = Unpack(*file.reader, *output, UnpackOptions(), report);
  console.EndSteps();
  if (result.stopped) throw Error(kUserInterrupt, "scrivo", "Interrupted");
  if (!file.complaints.empty() || result.problems > 0) return 1;
  console.Note("Unpacked into " + folder);
  return 0;
}

}  // namespace scrivo
