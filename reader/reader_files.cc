#include "reader/reader_files.h"

#include <algorithm>

namespace scrivo {

std::string_view ReaderFileContent(std::string_view name) {
  const std::span<const ReaderFile> files = ReaderFiles();
  return std::find_if(files.begin(), files.end(),
                      [&](const ReaderFile& file) { return file.name == name; })
      ->content;
}

}  // namespace scrivo
