// How the help viewer's library is found. Each test runs in a child of its own, since a library
// that was found stays.

#include <functional>
#include <string>

#include "platform/win32/windows.h"
#include "tests/doubles/real_services.h"

namespace scrivo {
namespace {

constexpr const char* kClasses = "Software\\Scrivo help viewer test";
constexpr const char* kControl = "CLSID\\{ADB880A6-D8FF-11CF-9377-00AA003B7A11}\\InprocServer32";
constexpr WindowHandle kFromTheTestsViewer = 5000 + kHelpDisplayToc + 100;

class HelpViewerTest : public WithRealServices {
 protected:
  ~HelpViewerTest() override {
    RegDeleteKeyA(HKEY_CURRENT_USER, (std::string(kClasses) + "\\" + kControl).c_str());
    RegDeleteKeyA(
        HKEY_CURRENT_USER,
        (std::string(kClasses) + "\\CLSID\\{ADB880A6-D8FF-11CF-9377-00AA003B7A11}").c_str());
    RegDeleteKeyA(HKEY_CURRENT_USER, (std::string(kClasses) + "\\CLSID").c_str());
    RegDeleteKeyA(HKEY_CURRENT_USER, kClasses);
  }

  // From here on this process sees other classes than the system's, with nothing in them.
  static void UseOwnClasses() {
    HKEY classes = nullptr;
    RegCreateKeyExA(HKEY_CURRENT_USER, kClasses, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &classes,
                    nullptr);
    RegOverridePredefKey(HKEY_CLASSES_ROOT, classes);
  }
  static void Register(DWORD type, const std::string& path) {
    HKEY key = nullptr;
    RegCreateKeyExA(HKEY_CLASSES_ROOT, kControl, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key,
                    nullptr);
    RegSetValueExA(key, "", 0, type, reinterpret_cast<const BYTE*>(path.c_str()),
                   static_cast<DWORD>(path.size() + 1));
    RegCloseKey(key);
  }

  WindowHandle Show() const {
    return TheServices().desktop->HtmlHelp(5000, InFolder("none.chm"), kHelpDisplayToc, "x");
  }
  static bool IsLoaded(const char* library) { return GetModuleHandleA(library) != nullptr; }

  // Holds that `work` says yes in a child process.
  static void ExpectInAChild(const std::function<bool()>& work) {
    EXPECT_EXIT(ExitProcess(work() ? 0 : 1), testing::ExitedWithCode(0), "");
  }

  const std::string viewer_folder = CreateSystemServices().system->ModuleFolder();
  const std::string viewer = viewer_folder + "\\test_viewer.dll";
};

TEST_F(HelpViewerTest, IsTheRegisteredOne) {
  ExpectInAChild([&] {
    UseOwnClasses();
    Register(REG_SZ, viewer);
    return Show() == kFromTheTestsViewer && !IsLoaded("hhctrl.ocx");
  });
}

TEST_F(HelpViewerTest, MayBeRegisteredWithAReferenceToTheEnvironment) {
  ExpectInAChild([&] {
    UseOwnClasses();
    SetEnvironmentVariableA("SCRIVO_TEST_VIEWER", viewer_folder.c_str());
    Register(REG_EXPAND_SZ, "%SCRIVO_TEST_VIEWER%\\test_viewer.dll");
    return Show() == kFromTheTestsViewer;
  });
}

TEST_F(HelpViewerTest, IsTheSystemsWhenNoneIsRegistered) {
  ExpectInAChild([&] {
    UseOwnClasses();
    return Show() == 0 && IsLoaded("hhctrl.ocx");
  });
}

TEST_F(HelpViewerTest, IsTheSystemsWhenTheRegisteredOneIsMissingOrNoViewer) {
  for (const std::string& path :
       {InFolder("none.ocx"), std::string("C:\\windows\\system32\\version.dll")}) {
    ExpectInAChild([&] {
      UseOwnClasses();
      Register(REG_SZ, path);
      return Show() == 0 && IsLoaded("hhctrl.ocx");
    });
  }
}

TEST_F(HelpViewerTest, IsLookedForAgainAfterItWasMissing) {
  if (!GetProcAddress(GetModuleHandleA("ntdll.dll"), "wine_get_version")) {
    GTEST_SKIP() << "only Wine can hide its own viewer";
  }
  const char* overrides = "Software\\Wine\\AppDefaults\\platform_tests.exe\\DllOverrides";
  RegSetKeyValueA(HKEY_CURRENT_USER, overrides, "hhctrl.ocx", REG_SZ, "", 1);
  ExpectInAChild([&] {
    UseOwnClasses();
    if (Show() != 0 || IsLoaded("hhctrl.ocx")) return false;
    Register(REG_SZ, viewer);
    return Show() == kFromTheTestsViewer;
  });
  RegDeleteKeyValueA(HKEY_CURRENT_USER, overrides, "hhctrl.ocx");
}

}  // namespace
}  // namespace scrivo
