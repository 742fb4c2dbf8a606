#include "cli/decompile_command.h"

#include <system_error>

#include "chm/problem.h"
#include "cli/disk_path.h"
#include "cli/help_file.h"
#include "cli/open_web.h"
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
