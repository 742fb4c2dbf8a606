// What Windows says about itself, and its shell.

#include <algorithm>
#include <functional>
#include <string>

#include "platform/shell.h"
#include "platform/win32/shell_api.h"
#include "system/error.h"
#include "tests/doubles/real_services.h"
#include "tests/doubles/test_folder.h"
#include "tests/platform/win32/eventually.h"

namespace scrivo {
namespace {

class Win32SystemTest : public WithRealServices {
 protected:
  SystemServices& system = *TheServices().system;

  static std::int32_t NumberOf(const std::function<void()>& call) {
    try {
      call();
      return 0;
    } catch (const Error& error) {
      EXPECT_EQ(error.source, "platform_tests.CShell");
      return error.number;
    }
  }
};

TEST_F(Win32SystemTest, TheModuleIsTheProgramThatHoldsThisCode) {
  char path[MAX_PATH] = "";
  GetModuleFileNameA(nullptr, path, MAX_PATH);
  EXPECT_EQ(system.ModuleName(), "platform_tests");
  EXPECT_EQ(system.ModuleFolder() + "\\platform_tests.exe", path);
}

TEST_F(Win32SystemTest, ThePlatformAnswersBothRecordsAndNoOther) {
  std::uint32_t platform = 0;
  EXPECT_TRUE(system.PlatformId(156, &platform));
  EXPECT_EQ(platform, 2u);
  platform = 0;
  EXPECT_TRUE(system.PlatformId(148, &platform));
  EXPECT_EQ(platform, 2u);
  EXPECT_FALSE(system.PlatformId(20, &platform));
}

TEST_F(Win32SystemTest, DateAndTimeAreTheUsersShortTexts) {
  SYSTEMTIME now;
  GetLocalTime(&now);
  const std::string date = system.DateText();
  EXPECT_NE(date.find(std::to_string(now.wYear % 100)), std::string::npos) << date;
  EXPECT_NE(date.find(std::to_string(now.wDay)), std::string::npos) << date;
  const std::string time = system.TimeText();
  EXPECT_EQ(std::count(time.begin(), time.end(), ':'), 2) << time;
}

TEST_F(Win32SystemTest, TheEventLogTakesAnEntryHoweverLong) {
  EXPECT_NO_THROW(system.WriteErrorEvent("Scrivo", "a test entry"));
  EXPECT_NO_THROW(system.WriteErrorEvent("Scrivo", std::string(100'000, 'x')));
}

TEST_F(Win32SystemTest, AMutexIsHeldAndMayBeHeldTwice) {
  const char* name = "ScrivoTestMutex";
  EXPECT_EQ(OpenMutexA(SYNCHRONIZE, FALSE, name), nullptr);
  system.HoldMutex(name);
  system.HoldMutex(name);
  const HANDLE mutex = OpenMutexA(SYNCHRONIZE, FALSE, name);
  EXPECT_NE(mutex, nullptr);
  CloseHandle(mutex);
}

TEST_F(Win32SystemTest, AMutexWhoseNameIsTakenByAnotherThingIsAnError) {
  const HANDLE event = CreateEventA(nullptr, FALSE, FALSE, "ScrivoTestEvent");
  EXPECT_THROW(system.HoldMutex("ScrivoTestEvent"), Error);
  CloseHandle(event);
}

TEST_F(Win32SystemTest, TheCodePageIsTheSystemsUntilAnotherIsChosen) {
  EXPECT_EQ(system.AnsiCodePage(), static_cast<int>(GetACP()));
  system.SetAnsiCodePage(1251);
  EXPECT_EQ(system.AnsiCodePage(), 1251);
}

TEST_F(Win32SystemTest, TheDocumentsFolderIsThere) {
  const std::string documents = GetSpecialFolder(0, 5);
  EXPECT_TRUE(TheServices().files->FolderExists(documents)) << documents;
}

TEST_F(Win32SystemTest, AnUnknownSpecialFolderIsNothing) {
  EXPECT_EQ(GetSpecialFolder(0, 999), "");
}

TEST_F(Win32SystemTest, TheShellTellsAMissingFileAndFolder) {
  CShell shell;
  EXPECT_EQ(NumberOf([&] { shell.OpenFolder(InFolder("none")); }), CShell::kFileNotFound);
  EXPECT_EQ(NumberOf([&] { shell.ExploreFolder(InFolder("none")); }), CShell::kFileNotFound);
  EXPECT_EQ(NumberOf([&] { shell.OpenUrl(InFolder("none.htm")); }), 0);
}

TEST_F(Win32SystemTest, ADocumentOfAnUnknownTypeHasNoAssociation) {
  TheServices().files->Write(InFolder("a.scrivo-unknown"), "");
  EXPECT_EQ(NumberOf([&] { CShell().OpenDocument(InFolder("a.scrivo-unknown")); }),
            CShell::kNoAssociation);
}

TEST_F(Win32SystemTest, PropertiesThatTheShellCannotShowAreAnError) {
  EXPECT_EQ(NumberOf([&] { CShell().ShowProperties(InFolder("none.txt"), 0); }),
            CShell::kFileNotFound);
  TheServices().files->Write(InFolder("a.txt"), "");
  // Files are found with either separator, the shell's items only with its own.
  std::string path = InFolder("a.txt");
  std::replace(path.begin(), path.end(), '\\', '/');
  EXPECT_EQ(NumberOf([&] { CShell().ShowProperties(path, 0); }), CShell::kCannotShowProperties);
}

TEST_F(Win32SystemTest, AFileThatIsNoProgramCannotBeLaunched) {
  TheServices().files->Write(InFolder("fake.exe"), "this is no program");
  EXPECT_EQ(NumberOf([&] { CShell().LaunchProgram(InFolder("fake.exe"), "", true); }),
            CShell::kCannotCreateProcess);
  EXPECT_NE(NumberOf([&] { CShell().LaunchProgram(InFolder("fake.exe"), "", false); }), 0);
}

TEST_F(Win32SystemTest, TheSystemsRecordsHaveTheSizesOfTheirArchitecture) {
  const bool is_32_bit = sizeof(void*) == 4;
  EXPECT_EQ(sizeof(SHELLEXECUTEINFOA), is_32_bit ? 60u : 112u);
  EXPECT_EQ(OPENFILENAME_SIZE_VERSION_400A + 0u, is_32_bit ? 76u : 136u);
  EXPECT_EQ(sizeof(STARTUPINFOA), is_32_bit ? 68u : 104u);
  EXPECT_EQ(sizeof(SECURITY_ATTRIBUTES), is_32_bit ? 12u : 24u);
}

TEST_F(Win32SystemTest, TheExtendedRequestReachesTheShell) {
  ExtendedShellRequest request;
  request.structure_size = 60;
  request.mask = 0x440;  // keep the process, show no error; the shell finds the verb itself
  request.request.verb = "open";
  request.request.file = InFolder("none.exe");
  EXPECT_EQ(TheServices().shell->ExecuteExtended(request), 2);
  request.request.file = "C:\\windows\\system32\\cmd.exe";
  request.request.parameters = "/c exit";
  EXPECT_GT(TheServices().shell->ExecuteExtended(request), 32);
}

TEST_F(Win32SystemTest, TheMaskMakesTheShellAskTheItemsContextMenu) {
  TheServices().files->Write(InFolder("a.scrivo-unknown"), "");
  ExtendedShellRequest request;
  request.structure_size = 60;
  request.request.verb = "properties";
  request.request.file = InFolder("a.scrivo-unknown");
  request.mask = 0x440;
  const std::int32_t without = TheServices().shell->ExecuteExtended(request);
  request.mask = 0x44C;
  const std::int32_t with = TheServices().shell->ExecuteExtended(request);
  EXPECT_LE(without, 32);
  EXPECT_NE(with, without) << with;
}

TEST_F(Win32SystemTest, AProgramIsLaunchedWithItsParametersInItsFolder) {
  const std::string program = InFolder("tool.exe");
  ASSERT_TRUE(CopyFileA(TestProgram("test_printer").c_str(), program.c_str(), TRUE));
  CShell().LaunchProgram(program, "append made");
  EXPECT_TRUE(Eventually([&] { return TheServices().files->FileExists(InFolder("made")); }));
  EXPECT_TRUE(Eventually([&] { return DeleteFileA(program.c_str()) != FALSE; }));  // it has ended
}

}  // namespace
}  // namespace scrivo
