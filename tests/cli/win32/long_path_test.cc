// Paths beyond what Windows usually takes.

#include "tests/cli/scrivo_run.h"

namespace scrivo {
namespace {

class LongPath : public ScrivoRun {
 protected:
  // Folders in one another, made by the form of paths that has no limit.
  std::filesystem::path MakeDeepFolders(int depth) {
    std::filesystem::path folder = L"\\\\?\\" + std::filesystem::absolute(web.path()).wstring();
    for (int level = 0; level < depth; ++level) {
      folder /= std::wstring(60, static_cast<wchar_t>(L'a' + level));
      std::filesystem::create_directory(folder);
      std::ofstream(folder / L"page.htm") << "<title>Page</title>";
    }
    return folder;
  }
};

TEST_F(LongPath, EndsNoCompileAndLosesNoPageSilently) {
  MakeDeepFolders(6);
  EXPECT_EQ(Compile({"--contents", "navigation"}), 0) << err;
  const std::string told = err;
  std::string location = "/";
  ASSERT_EQ(Run({"list", Output()}), 0);
  for (int level = 0; level < 6; ++level) {
    location += std::string(60, static_cast<char>('a' + level)) + "/";
    const bool is_in = out.find(location + "page.htm\n") != std::string::npos;
    const bool is_told = told.find(std::string(60, static_cast<char>('a' + level))) != told.npos;
    EXPECT_TRUE(is_in || is_told) << location << "\n" << told;
  }
}

TEST_F(LongPath, AsTheOutputIsOneErrorOrAFile) {
  const std::string path = output.PathOf(std::string(300, 'x') + ".chm");
  EXPECT_EQ(Run({"compile", WebPath(), "-o", path}), 1);
  const std::size_t first = err.find("error: ");
  ASSERT_NE(first, std::string::npos) << err;
  EXPECT_EQ(err.find("error: ", first + 1), std::string::npos) << err;
}

}  // namespace
}  // namespace scrivo
