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

// In a work folder: the file that says that its run is alive, copies of the project's files, and
// the folder that these were written to.
constexpr char kHeld[] = "held", kProject[] = "project", kProjectFolder[] = "project-folder";

Files& Disk() { return *TheServices().files; }

std::string ServicePath(const fs::path& path) { return AbsolutePath(PortablePath(path)); }

// Removes those files of a project that are still as they were written.
void RemoveProject(const fs::path& work) {
  const std::string folder = ReadWholeFile(Disk(), ServicePath(work / kProjectFolder));
  std::error_code error;
  for (const FolderItem& item : ItemsOfFolder(work / kProject, &error)) {
    IgnoringErrors([&] {
      const std::string copy = ServicePath(work / kProject / item.name);
      const std::string path = JoinPath(folder, PortablePath(item.name));
      if (ReadWholeFile(Disk(), path) == ReadWholeFile(Disk(), copy)) Disk().Remove(path, true);
    });
  }
}

// Removes a work folder that nobody is at work in.
void RemoveIfLeft(const fs::path& work) {
  std::error_code ignored;
  if (!fs::is_directory(fs::symlink_status(work, ignored))) return;
  if (auto held = HeldFile::TakeOver(work / kHeld)) {
    IgnoringErrors([&] { RemoveProject(work); });
    RemoveFolder(work);
  }
  fs::remove(work, ignored);  // as long as it is empty
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

void WorkFolder::NoteProject(const HelpProject& project) const {
  Disk().Write(PathOf(kProjectFolder), project.folder);
  const std::string copies = PathOf(kProject);
  Disk().MakeFolder(copies);
  for (const auto& [name, text] : project.files) Disk().Write(JoinPath(copies, name), text);
}

void WorkFolder::ForgetProject() const { Disk().Remove(PathOf(kProjectFolder), true); }

}  // namespace scrivo
