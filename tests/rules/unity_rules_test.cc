// The files of a folder are compiled together, so what one says outside a function holds in the
// next.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace {

// The formatter indents what stands in a function, and what stands in a namespace not at all.
TEST(UnityRules, NoFileSaysUsingNamespaceOutsideAFunction) {
  const std::filesystem::path top = SCRIVO_SOURCE_DIR;
  int files = 0;
  for (auto entry = std::filesystem::recursive_directory_iterator(top); entry != end(entry);
       ++entry) {
    const std::filesystem::path path = entry->path();
    if (path == top / "build") entry.disable_recursion_pending();
    if (path.extension() != ".cc" && path.extension() != ".h") continue;
    ++files;
    std::ifstream stream(path);
    int number = 1;
    for (std::string line; std::getline(stream, line); ++number) {
      EXPECT_FALSE(line.starts_with("using namespace")) << path << ":" << number;
    }
  }
  EXPECT_GT(files, 500);
}

}  // namespace
