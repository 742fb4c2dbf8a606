// A web is compiled in a host, from the button to the help file.

#include "platform/settings.h"
#include "tests/addin/win32/end_to_end.h"
#include "tests/host/win32/call_faults.h"
#include "tests/ui/win32/live_window.h"

namespace scrivo {
namespace {

namespace fs = std::filesystem;
using Seen = std::vector<std::string>;

std::string ReadText(const fs::path& path) {
  std::ifstream stream(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

// The compiler that lies beside the library is the one that the user has, for as long as this
// object lives.
class OwnCompiler {
 public:
  explicit OwnCompiler(const std::string& folder) {
    char text[MAX_PATH] = "";
    DWORD size = sizeof text;
    had_one_ = RegGetValueA(HKEY_CURRENT_USER, kKey, kName, RRF_RT_REG_SZ, nullptr, text, &size) ==
               ERROR_SUCCESS;
    before_ = text;
    Set(folder);
  }
  // Another folder from now on.
  void Use(const std::string& folder) const { Set(folder); }
  ~OwnCompiler() {
    if (had_one_) {
      Set(before_);
    } else {
      RegDeleteKeyValueA(HKEY_CURRENT_USER, kKey, kName);
    }
  }
  OwnCompiler(const OwnCompiler&) = delete;
  OwnCompiler& operator=(const OwnCompiler&) = delete;

 private:
  static constexpr const char* kKey = "Software\\Microsoft\\HTML Help Workshop";
  static constexpr const char* kName = "InstallDir";

  static void Set(const std::string& folder) {
    RegSetKeyValueA(HKEY_CURRENT_USER, kKey, kName, REG_SZ, folder.c_str(),
                    static_cast<DWORD>(folder.size() + 1));
  }

  bool had_one_ = false;
  std::string before_;
};

class CompileTest : public EndToEndTest {
 protected:
  CompileTest() {
    OpenWeb();
    url = world->session.Active()->Url();
    Choose("OUTPUT", output);
    Choose("TITLE", "Made in a host");
    Choose("VIEWRESULT", "0");
    Choose("CLOSELOG", "0");
    Connect();
  }
  ~CompileTest() override {
    const std::string key = "Software\\VB and VBA Program Settings\\Scrivo\\" + url;
    RegDeleteTreeA(HKEY_CURRENT_USER, key.c_str());
  }

  // A parameter as an earlier compile of this web has left it.
  void Choose(const char* parameter, const std::string& value) {
    SaveSetting("Scrivo", url, parameter, value);
  }
  // Presses "Compile" and, in the dialog, "Generate"; the dialog closes itself after that.
  void Generate() {
    user.on_form = [](HWND form) {
      if (HWND button = ButtonOf(form, "Generate")) PostMessageA(button, BM_CLICK, 0, 0);
    };
    Press("Tools", "Compile");
  }
  // The file in the web's own folder with this extension; "" when there is none.
  std::string MadeFile(const std::string& extension) const {
    for (const auto& entry : fs::directory_iterator(folder / "site")) {
      if (entry.path().extension() == extension) return ReadText(entry.path());
    }
    return "";
  }

  std::string url;
  const std::string output = folder / "made.chm";
  const OwnCompiler compiler{library.Folder()};
};

TEST_F(CompileTest, AWebBecomesAHelpFile) {
  Generate();
  EXPECT_EQ(ReadText(output).substr(0, 4), "ITSF");
  EXPECT_EQ(MadeFile(".hhp") + MadeFile(".hhc") + MadeFile(".hhk"), "") << "they are removed";
}

TEST_F(CompileTest, TheProjectHoldsWhatTheHostTellsOfTheWeb) {
  Choose("LEAVEPROJECTFILE", "1");
  Generate();
  EXPECT_NE(MadeFile(".hhc").find("\"First\""), std::string::npos) << "the label of a node";
  EXPECT_NE(MadeFile(".hhc").find("\"docs/a.htm\""), std::string::npos) << "where its page lies";
  EXPECT_NE(MadeFile(".hhk").find("\"spring\""), std::string::npos) << "a page's keyword";
  const std::string project = MadeFile(".hhp");
  EXPECT_NE(project.find("index.htm\r\n"), std::string::npos);
  EXPECT_NE(project.find("docs/a.htm\r\n"), std::string::npos);
}

TEST_F(CompileTest, UnsavedPagesAreSavedWhenTheUserAgrees) {
  const auto& web = world->session.Active();
  const auto changed = web->Edit(web->FindFile("docs/a.htm"));
  changed->dirty = true;
  const auto unchanged = web->Edit(web->FindFile("index.htm"));
  Generate();
  EXPECT_EQ(changed->saves, 1);
  EXPECT_FALSE(changed->dirty);
  EXPECT_EQ(unchanged->saves, 0);
  EXPECT_TRUE(fs::exists(output));
}

TEST_F(CompileTest, AHostThatFailsWhileTheDialogOpensIsSurvived) {
  const long references = world->references;
  host::CallFaults faults(*world);
  Press("Tools", "Compile");
  const long calls = faults.Calls();
  ASSERT_GT(calls, 10);
  constexpr long kFaults = 5;
  for (long i = 0; i < kFaults; ++i) {
    faults.FailOnly(1 + i * calls / kFaults);
    Press("Standard", "Compile");
    faults.FailEvery(0);
    ASSERT_EQ(world->references, references);
  }
  EXPECT_EQ(user.Seen().front(), "form: Scrivo - compile the open web");
}

// The run window, null while it is not shown.
HWND RunWindow() {
  HWND window = FindWindowA("ScrivoWindow", "Scrivo - compiler output");
  return window && IsWindowVisible(window) ? window : nullptr;
}

TEST_F(CompileTest, AHostThatDisconnectsDuringARunMayUnloadTheLibraryWhenTheRunsWindowIsClosed) {
  fs::copy_file(fs::path(library.Folder()) / "waiting_compiler.exe", folder / "hhc.exe");
  compiler.Use(folder.path());
  Choose("CLOSELOG", "1");  // the window stays
  std::function<void()> disconnect_in_the_run = [&] {
    if (!RunWindow()) return OnceShown(disconnect_in_the_run);
    Disconnect();
    EXPECT_FALSE(library.CanUnload());
    Put("go", "");
  };
  OnceShown(disconnect_in_the_run);
  Generate();
  EXPECT_FALSE(addin->IsConnected());
  EXPECT_EQ(world->references, 0);
  ASSERT_TRUE(RunWindow());
  EXPECT_FALSE(library.CanUnload()) << "its window is open";
  SendMessageA(RunWindow(), WM_CLOSE, 0, 0);
  EXPECT_FALSE(RunWindow());
  EXPECT_TRUE(library.CanUnload());
}

}  // namespace
}  // namespace scrivo
