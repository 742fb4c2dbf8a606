#include "bytes/folder_items.h"

namespace scrivo {
namespace {

namespace fs = std::filesystem;

void RemoveTree(const fs::path& folder) {
  std::error_code ignored;
  for (const FolderItem& item : ItemsOfFolder(folder, &ignored)) {
    const fs::path path = folder / item.name;
    if (item.is_folder && fs::symlink_status(path, ignored).type() == fs::file_type::directory) {
      RemoveTree(path);
    } else {
      fs::remove(path, ignored);
    }
  }
  fs::remove(folder, ignored);
}

}  // namespace

void RemoveFolder(const fs::path& folder) {
  try {
    RemoveTree(folder);
  } catch (...) {
    // Memory ran out: what is left stays.
  }
}

}  // namespace scrivo
