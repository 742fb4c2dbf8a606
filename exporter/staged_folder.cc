#include "exporter/staged_folder.h"

#include <algorithm>
#include <stdexcept>
#include <string>

#include "unpack/output_folder.h"

namespace scrivo {
namespace {

namespace fs = std::filesystem;

// No file that is unpacked has such a name.
const std::string kStageName = "web" + std::string(kGrowingEnding);

std::string ShownPath(const fs::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

}  // namespace

StagedFolder::StagedFolder(const fs::path& path) : path_(path), stage_(path / kStageName) {
  std::error_code error;
  const fs::file_status status = fs::status(path_, error);
  if (fs::exists(status) && !fs::is_directory(status)) {
    throw std::runtime_error(ShownPath(path_) +
                             ": there is a file of that name; a web needs a folder");
  }
  if (fs::exists(status)) ThrowUnlessEmpty();
  if (const std::error_code failure = MakeFolders(path_, &made_)) {
    throw std::runtime_error(ShownPath(path_) +
                             ": the folder cannot be made: " + failure.message());
  }
  fs::remove_all(stage_, error);
  if (!error && fs::create_directory(stage_, error)) return;
  RemoveIfEmpty(made_);
  throw std::runtime_error(ShownPath(path_) +
                           ": nothing can be written into the folder: " + error.message());
}

StagedFolder::~StagedFolder() {
  std::error_code ignored;
  fs::remove_all(stage_, ignored);
  if (!is_shown_) RemoveIfEmpty(made_);
}

void StagedFolder::ThrowUnlessEmpty() const {
  std::error_code error;
  for (fs::directory_iterator entry(path_, error), end; !error && entry != end;
       entry.increment(error)) {
    if (entry->path().filename() == kStageName &&
        fs::is_directory(fs::symlink_status(entry->path(), error))) {
      continue;
    }
    throw std::runtime_error(ShownPath(path_) +
                             ": the folder is not empty; name a new folder for the web");
  }
  if (error) {
    throw std::runtime_error(ShownPath(path_) + ": the folder cannot be read: " + error.message());
  }
}

void StagedFolder::Show(const fs::path& last) {
  std::vector<fs::path> names;
  for (const fs::directory_entry& entry : fs::directory_iterator(stage_)) {
    names.push_back(entry.path().filename());
  }
  std::sort(names.begin(), names.end());
  std::stable_partition(names.begin(), names.end(),
                        [&](const fs::path& name) { return name != last; });
  for (auto name = names.begin(); name != names.end(); ++name) {
    std::error_code error;
    fs::rename(stage_ / *name, path_ / *name, error);
    if (!error) continue;
    for (auto moved = names.begin(); moved != name; ++moved) {
      std::error_code ignored;
      fs::rename(path_ / *moved, stage_ / *moved, ignored);
    }
    throw std::runtime_error(ShownPath(path_ / *name) + ": cannot be written: " + error.message());
  }
  is_shown_ = true;
}

}  // namespace scrivo
