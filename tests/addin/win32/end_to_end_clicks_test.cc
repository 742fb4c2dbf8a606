// The add-in's ten buttons, pressed in a host.

#include "platform/win32/windows.h"
// After windows.h, on which it stands.
#include <shlobj.h>

#include "tests/addin/win32/end_to_end.h"
#include "tests/ui/win32/live_window.h"

namespace scrivo {
namespace {

namespace fs = std::filesystem;
using Seen = std::vector<std::string>;

// While it lives, this process sees classes of its own in place of the system's.
class OwnClasses {
 public:
  OwnClasses() {
    RegCreateKeyExA(HKEY_CURRENT_USER, kKey, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &classes_,
                    nullptr);
    RegOverridePredefKey(HKEY_CLASSES_ROOT, classes_);
  }
  ~OwnClasses() {
    RegOverridePredefKey(HKEY_CLASSES_ROOT, nullptr);
    RegCloseKey(classes_);
    RegDeleteTreeA(HKEY_CURRENT_USER, kKey);
  }
  OwnClasses(const OwnClasses&) = delete;
  OwnClasses& operator=(const OwnClasses&) = delete;

  void Set(const char* path, const char* name, const std::string& text) {
    RegSetKeyValueA(classes_, path, name, REG_SZ, text.c_str(),
                    static_cast<DWORD>(text.size() + 1));
  }

 private:
  static constexpr const char* kKey = "Software\\Scrivo end-to-end test";
  HKEY classes_ = nullptr;
};

// Handles messages until a condition holds; false when it does not within the test's patience.
bool WaitUntil(const std::function<bool()>& condition) {
  constexpr int kRounds = 6000;
  for (int i = 0; i < kRounds; ++i) {
    if (condition()) return true;
    PumpMessages();
    Sleep(5);
  }
  return false;
}

class ClicksTest : public EndToEndTest, public testing::WithParamInterface<const char*> {
 protected:
  void Press(const char* caption) { EndToEndTest::Press(GetParam(), caption); }
};
INSTANTIATE_TEST_SUITE_P(Bars, ClicksTest, testing::Values("Tools", "Standard"));

TEST_P(ClicksTest, CompileWithoutAWebTellsToOpenOne) {
  Connect();
  Press("Compile");
  EXPECT_EQ(user.Seen(), Seen{"message: Open site first"});
}

TEST_P(ClicksTest, CompileShowsItsDialogForTheOpenWeb) {
  OpenWeb();
  Connect();
  Press("Compile");
  EXPECT_EQ(user.Seen(), Seen{"form: Scrivo - compile the open web"});
}

TEST_P(ClicksTest, DecompileShowsItsDialogEveryTime) {
  Connect();
  Press("Decompile");
  Press("Decompile");
  EXPECT_EQ(user.Seen(), Seen(2, "form: Scrivo - decompile a help file"));
}

// The sample web in the user's documents, for as long as the object lives.
class SampleWeb {
 public:
  SampleWeb() {
    char documents[MAX_PATH] = "";
    SHGetSpecialFolderPathA(nullptr, documents, CSIDL_PERSONAL, TRUE);
    path_ = fs::path(documents) / "Scrivo Builder sample web";
    is_own_ = fs::create_directories(path_);
    if (is_own_) std::ofstream(path_ / "index.htm") << "<title>Sample</title>";
  }
  ~SampleWeb() {
    if (is_own_) fs::remove_all(path_);
  }
  std::string path() const { return path_.string(); }

 private:
  fs::path path_;
  bool is_own_ = false;
};

TEST_P(ClicksTest, TheSampleWebIsOpenedInTheHost) {
  const SampleWeb sample;
  Connect();
  Press("Scrivo Builder Sample Web");
  ASSERT_TRUE(world->session.Active());
  EXPECT_EQ(fs::path(world->session.Active()->Path()), fs::path(sample.path()));
  EXPECT_EQ(user.Seen(), Seen());
}

TEST_P(ClicksTest, AMissingSampleWebIsSilent) {
  { const SampleWeb gone; }
  Connect();
  Press("Scrivo Builder Sample Web");
  EXPECT_FALSE(world->session.Active());
  EXPECT_EQ(user.Seen(), Seen());
}

TEST_P(ClicksTest, HelpOpensTheHelpFileBesideTheLibrary) {
  OwnClasses classes;
  classes.Set("CLSID\\{ADB880A6-D8FF-11CF-9377-00AA003B7A11}\\InprocServer32", "",
              library.Folder() + "\\recording_viewer.dll");
  Connect();
  Press("Help");
  const HMODULE viewer = GetModuleHandleA("recording_viewer.dll");
  ASSERT_NE(viewer, nullptr);
  const auto last_call = reinterpret_cast<const char*(WINAPI*)()>(
      reinterpret_cast<void*>(GetProcAddress(viewer, "LastCall")));
  EXPECT_EQ(std::string(last_call()), library.Folder() + "\\Scrivo.CHM|0|index.html|owned");
  EXPECT_EQ(user.Seen(), Seen()) << "the compile dialog owns the viewer without being shown";
}

TEST_P(ClicksTest, TheHomePageIsOpenedByTheShell) {
  const std::string opened = folder / "opened.txt";
  Connect();
  {
    OwnClasses classes;
    classes.Set("http", "URL Protocol", "");
    classes.Set("http\\shell\\open\\command", "", "cmd.exe /c echo %1>\"" + opened + "\"");
    Press("Scrivo Builder Web site");
  }
  ASSERT_TRUE(WaitUntil([&] { return fs::exists(opened) && fs::file_size(opened) > 0; }));
  std::ifstream stream(opened);
  std::string address;
  std::getline(stream, address);
  EXPECT_EQ(address.substr(0, address.find_last_not_of(" \r") + 1), "http://www.scrivo.example/");
}

TEST_F(EndToEndTest, ADisconnectionWhileADialogIsOpenClosesItAndIsSurvived) {
  OpenWeb();
  user.on_form = [](HWND) {};
  for (const char* caption : {"Compile", "Decompile"}) {
    Connect();
    OnceShown([this] { Disconnect(); });
    Press("Standard", caption);
    EXPECT_FALSE(addin->IsConnected());
    BarNamed("Standard").controls.clear();
    EXPECT_TRUE(library.CanUnload()) << caption;
  }
}

// Whether a window that is created now gets its controls from version 6 of the common controls.
bool UsesCurrentControls() {
  ACTCTX_SECTION_KEYED_DATA found{};
  found.cbSize = sizeof found;
  return FindActCtxSectionStringA(0, nullptr, ACTIVATION_CONTEXT_SECTION_WINDOW_CLASS_REDIRECTION,
                                  "Button", &found) != FALSE;
}

TEST_F(EndToEndTest, ItsWindowsHaveTheirOwnCommonControlsInAHostWithoutAManifest) {
  ASSERT_FALSE(UsesCurrentControls()) << "this program has a manifest";
  Connect();
  user.on_form = [](HWND) {};
  for (const char* caption : {"Compile", "Decompile"}) {
    OpenWeb();
    bool uses_current_controls = false;
    OnceShown([&] {
      uses_current_controls = UsesCurrentControls();
      PostMessageA(GetActiveWindow(), WM_CLOSE, 0, 0);
    });
    Press("Tools", caption);
    EXPECT_TRUE(uses_current_controls) << caption;
    EXPECT_FALSE(UsesCurrentControls()) << "the host's own are left as they are";
  }
}

// Whether a module of this process has the forms' window class.
bool HasFormClass(HMODULE module) {
  WNDCLASSA window_class;
  return GetClassInfoA(module, "ScrivoWindow", &window_class) != FALSE;
}

TEST_F(EndToEndTest, AnUnloadedLibraryLeavesNoWindowClassBehind) {
  Connect();
  Press("Tools", "Decompile");
  Disconnect();
  const HMODULE module = library.module();
  ASSERT_TRUE(HasFormClass(module));
  CoFreeUnusedLibrariesEx(0, 0);
  library.Unload();
  ASSERT_EQ(GetModuleHandleA("Scrivo.dll"), nullptr);
  EXPECT_FALSE(HasFormClass(module));
  library.Load();

  BarNamed("Standard").controls.clear();
  Connect();
  Press("Tools", "Decompile");
  EXPECT_EQ(user.Seen(), Seen(2, "form: Scrivo - decompile a help file"));
}

TEST_F(EndToEndTest, TheVersionCheckIsReachedByNameOnlyAndSilentWithoutItsComponent) {
  Connect();
  VARIANT_BOOL cancel = VARIANT_FALSE;
  Variant flag;
  flag.Put()->vt = VT_BYREF | VT_BOOL;
  const_cast<VARIANT&>(flag.get()).pboolVal = &cancel;
  for (const wchar_t* handler : {L"cbBtnCheckVersion_Click", L"cbBtnPanelCheckVersion_Click"}) {
    ByName().Call(handler, Variant::Object(nullptr), flag);
  }
  EXPECT_EQ(cancel, VARIANT_FALSE);
  EXPECT_EQ(user.Seen(), Seen());
}

TEST_F(EndToEndTest, ThePublicOperationsCanBeCalledByName) {
  OpenWeb();
  Connect();
  for (const wchar_t* operation :
       {L"ShowKestrel", L"ShowDecompile", L"HideKestrel", L"HideDecompile", L"ShowExample"}) {
    ByName().Call(operation);
  }
  EXPECT_EQ(user.Seen(),
            (Seen{"form: Scrivo - compile the open web", "form: Scrivo - decompile a help file"}));
}

}  // namespace
}  // namespace scrivo
