#include "platform/win32/wide.h"
#include "platform/win32/windows.h"
#include "system/program.h"
#include "tests/cli/scrivo_run.h"

namespace scrivo {
namespace {

class ViewCommand : public ScrivoRun {
 protected:
  ~ViewCommand() override { Set(before_); }
  static void Set(const std::string& folder) {
    SetEnvironmentVariableW(L"LOCALAPPDATA", Wide(folder).c_str());
  }

 private:
  std::string before_ = EnvironmentVariable("LOCALAPPDATA");
};

// The name has a letter that the usual code page has, and one that it lacks.
TEST_F(ViewCommand, OpensASiteThatItMakesOnceWhateverTheUserIsCalled) {
  const std::filesystem::path folder = output.path() / u8"J\u00F6rg \u0416";
  const std::u8string name = folder.u8string();
  Set({name.begin(), name.end()});
  const std::string book = std::string(SCRIVO_SOURCE_DIR) + "/tests/reader/book/book.hhp";
  ASSERT_EQ(Run({"view", book}), 0) << err;
  ASSERT_EQ(shell->requests.size(), 1u);
  EXPECT_TRUE(shell->requests[0].wide);
  const std::string file = shell->requests[0].file;
  const std::filesystem::path page = std::u8string(file.begin(), file.end());
  EXPECT_EQ(page.parent_path().parent_path(), folder / "Scrivo" / "View");
  ASSERT_TRUE(std::filesystem::exists(page));
  const auto made = std::filesystem::last_write_time(page);
  ASSERT_EQ(Run({"view", book}), 0) << err;
  EXPECT_EQ(shell->requests[1].file, file);
  EXPECT_EQ(std::filesystem::last_write_time(page), made);
}

}  // namespace
}  // namespace scrivo
