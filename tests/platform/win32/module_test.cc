// The module that holds the code, when it is a library in another program.

#include <string>

#include "platform/paths.h"
#include "platform/win32/wide.h"
#include "platform/win32/windows.h"
#include "tests/doubles/real_services.h"

namespace scrivo {
namespace {

using TellModuleFunction = void(char* name, char* folder, std::size_t size);

// The tests' library under another name.
class ModuleTest : public WithRealServices, public testing::WithParamInterface<const char*> {};

TEST_P(ModuleTest, IsTheLibraryThatHoldsTheCode) {
  const std::string name = GetParam();
  const std::string path = JoinPath(folder, name + ".dll");
  const std::string built = JoinPath(TheServices().system->ModuleFolder(), "test_module.dll");
  ASSERT_TRUE(CopyFileW(Wide(built).c_str(), Wide(path).c_str(), TRUE));
  const HMODULE library = LoadLibraryW(Wide(path).c_str());
  ASSERT_NE(library, nullptr) << GetLastError();
  const auto tell = reinterpret_cast<TellModuleFunction*>(
      reinterpret_cast<void*>(GetProcAddress(library, "TellModule")));
  ASSERT_NE(tell, nullptr);
  char told_name[MAX_PATH] = "";
  char told_folder[MAX_PATH] = "";
  tell(told_name, told_folder, MAX_PATH);
  FreeLibrary(library);
  EXPECT_EQ(told_name, name);
  EXPECT_EQ(told_folder, folder);
  EXPECT_EQ(TheServices().system->ModuleName(), "platform_tests");
}

INSTANTIATE_TEST_SUITE_P(Names, ModuleTest,
                         testing::Values("module", "two words", "name.with.points", "caf\xC3\xA9",
                                         "\xE7\x9B\xAE"));

}  // namespace
}  // namespace scrivo
