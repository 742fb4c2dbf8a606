#pragma once

#include <filesystem>
#include <random>
#include <string>

namespace scrivo {

// A folder of a test's own on the real disk, with a blank in its name, that goes with everything
// in it when the test ends.
class TempFolder {
 public:
  TempFolder() {
    std::random_device random;
    do {
      path_ = std::filesystem::temp_directory_path() / ("scrivo test " + std::to_string(random()));
    } while (!std::filesystem::create_directory(path_));
  }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;
  ~TempFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  std::string path() const { return path_.string(); }
  // The path of a name in the folder.
  std::string operator/(const std::string& name) const { return (path_ / name).string(); }

 private:
  std::filesystem::path path_;
};

}  // namespace scrivo
