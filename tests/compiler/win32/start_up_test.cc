// What a child sees of how it was started.

#include <string>

#include "compiler/spawn_console_app.h"
#include "platform/win32/windows.h"
#include "tests/doubles/real_services.h"
#include "tests/doubles/test_folder.h"

namespace scrivo {
namespace {

TEST_F(WithRealServices, AChildIsHiddenGetsNoInputAndIsOfNormalPriority) {
  std::string told;
  CSpawnConsoleApp app;
  app.OnProcessOutputs = [&](const std::string& output) { told += output; };
  EXPECT_EQ(app.ExecuteApp('"' + TestProgram("test_start_up") + '"', folder), 0);
  EXPECT_EQ(told, "flags 257, show 0, input from a pipe 0, same outputs 1, priority 32, folder " +
                      folder + "\r\n");
}

TEST_F(WithRealServices, AChildInheritsTheEnvironment) {
  SetEnvironmentVariableA("SCRIVO_TEST_VARIABLE", "from the caller");
  std::string told;
  CSpawnConsoleApp app;
  app.OnProcessOutputs = [&](const std::string& output) { told += output; };
  app.ExecuteApp("cmd.exe /c echo %SCRIVO_TEST_VARIABLE%", folder);
  SetEnvironmentVariableA("SCRIVO_TEST_VARIABLE", nullptr);
  EXPECT_EQ(told, "from the caller\r\n");
}

}  // namespace
}  // namespace scrivo
