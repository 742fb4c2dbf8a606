#include "generator/project_names.h"

#include "platform/globals.h"
#include "platform/temp_files.h"
#include "system/error.h"

namespace scrivo {

std::string NewTemporaryPath() {
  const std::string& folder = Globals().working_folder;
  const std::string path = GetTempFile(folder, "Scrivo");
  if (path.empty()) {
    throw Error(kPathNotFound, "Scrivo", "No file can be made in the folder \"" + folder + "\"");
  }
  return path;
}

std::string NewProjectPath(const std::string& extension) {
  constexpr char kTemporary[] = ".tmp";
  constexpr std::size_t kLength = sizeof kTemporary - 1;
  std::string path = NewTemporaryPath();
  std::size_t at = path.find(kTemporary);
  while (at != std::string::npos) {
    path.replace(at, kLength, extension);
    at = path.find(kTemporary, at + extension.size());
  }
  return path;
}

}  // namespace scrivo
