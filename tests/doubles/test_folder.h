#pragma once

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "platform/paths.h"
#include "system/services.h"

namespace scrivo {

// A real folder of its own for one test, removed with all that is in it.
class TestFolder {
 public:
  TestFolder() {
    Files& files = *system_.files;
    const std::string temporary = std::filesystem::temp_directory_path().string();
    reserved_ = files.MakeUniqueFile(temporary, "tst");
    path_ = reserved_;
    path_.replace_extension(" folder");  // a blank, as in users' paths, and no ".tmp"
    std::filesystem::create_directories(path_);
  }
  ~TestFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
    std::filesystem::remove(reserved_, ignored);
  }
  TestFolder(const TestFolder&) = delete;
  TestFolder& operator=(const TestFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }
  std::string PathOf(const std::string& name) const { return (path_ / name).string(); }
  // Writes a file, making the folders it lies in.
  void Write(const std::string& name, const std::string& bytes) const {
    std::filesystem::create_directories((path_ / name).parent_path());
    std::ofstream(path_ / name, std::ios::binary) << bytes;
  }
  std::string Read(const std::string& name) const {
    std::ostringstream bytes;
    bytes << std::ifstream(path_ / name, std::ios::binary).rdbuf();
    return bytes.str();
  }
  bool Has(const std::string& name) const { return std::filesystem::exists(path_ / name); }

 private:
  Services system_ = CreateSystemServices();
  std::filesystem::path path_, reserved_;
};

// The path of a program that was built with the tests and lies beside them.
inline std::string TestProgram(const std::string& name) {
  const bool is_windows = SystemPathStyle() == PathStyle::kWindows;
  return JoinPath(CreateSystemServices().system->ModuleFolder(), name + (is_windows ? ".exe" : ""),
                  SystemPathStyle());
}

}  // namespace scrivo
