#pragma once

#include <algorithm>
#include <filesystem>
#include <string>

namespace scrivo {

// Whether a file of the sample web's folder is the leaving of a compile there and no part of the
// sample: its help file, or a source that was to be kept.
inline bool IsLeftByACompile(const std::filesystem::path& file) {
  std::string extension = file.extension().string();
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
  return extension == ".chm" || extension == ".hhc" || extension == ".hhk" || extension == ".hhp" ||
         file.filename().string().ends_with(".tmp.htm");
}

// Makes the folder `to` a copy of the sample web in the folder `sample`, as the sample is shipped:
// people compile it where it lies.
inline void CopySampleWeb(const std::filesystem::path& sample, const std::filesystem::path& to) {
  namespace fs = std::filesystem;
  fs::create_directories(to);
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(sample)) {
    const fs::path copy = to / entry.path().lexically_relative(sample);
    if (entry.is_directory()) {
      fs::create_directories(copy);
    } else if (!IsLeftByACompile(entry.path())) {
      fs::copy_file(entry.path(), copy);
    }
  }
}

}  // namespace scrivo
