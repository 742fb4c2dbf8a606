#include "cli/work_folder.h"

#include <vector>

#include "bytes/folder_items.h"
#include "bytes/output_file.h"
#include "cli/disk_path.h"
#include "cli/open_web.h"
#include "errors/frame.h"
#include "platform/paths.h"
#include "project/source_files.h"
#include "system/error.h"
#include "system/interruption.h"
#include "system/services.h"

namespace scrivo {
namespace {

namespace fs = std::filesystem;

// In a work folder: the file that says that its run is alive.
constexpr char kHeld[] = "held";

std::string ServicePath(const fs::path& path) { return AbsolutePath(PortablePath(path)); }

// Removes a work folder that nobody is at work in. One without the file has been removed as far as
// could be by a run before; making it says that nobody is to begin here.
void RemoveIfLeft(const fs::path& work) {
  std::error_code ignored;
  if (!fs::is_directory(fs::symlink_status(work, ignored))) return;
  auto held = HeldFile::TakeOver(work / kHeld);
  if (held == nullptr) held = HeldFile::Make(work / kHeld, &ignored);
  if (held == nullptr) return;
  RemoveFolder(work);
  held.reset();
  fs::remove(work, ignored);  // where a held file cannot be removed by others
}

}  // namespace

WorkFolder::WorkFolder(const std::string& output) {
  const fs::path target = DiskPathOf(output);
  const auto name = [&](int number) { return NameBesideTarget(target, number, ".scrivo-work"); };
  if (Interrupted()) throw Error(kUserInterrupt, "scrivo", "Interrupted");
  for (int number = 1; number <= kMostNamesBesideTarget; ++number) RemoveIfLeft(name(number));
  std::error_code taken;
  for (int number = 1; number <= kMostNamesBesideTarget; ++number) {
    path_ = name(number);
    if (fs::exists(fs::symlink_status(path_, taken))) continue;
    IgnoringErrors([&] {
      Disk().MakeFolder(ServicePath(path_));
      held_ = HeldFile::Make(path_ / kHeld, &taken);
    });
    if (held_ != nullptr) return;
  }
  // An interruption in between is no fault of the folder's.
  if (Interrupted()) throw Error(kUserInterrupt, "scrivo", "Interrupted");
  throw Error(kPermissionDenied, "scrivo",
              ServicePath(target.parent_path()) +
                  ": no file can be written to this folder. Choose another folder with -o.");
}

WorkFolder::~WorkFolder() {
  RemoveFolder(path_);
  held_.reset();
  std::error_code ignored;
  fs::remove(path_, ignored);  // where a held file cannot be removed by others
}

std::string WorkFolder::PathOf(const std::string& name) const {
  return JoinPath(ServicePath(path_), name);
}

}  // namespace scrivo
