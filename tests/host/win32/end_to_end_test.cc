// Scrivo.dll in the stand-in host: a help file is made and taken apart through the real menus and
// windows.

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "platform/registry.h"
#include "platform/win32/shell_api.h"
#include "tests/addin/win32/library.h"
#include "tests/doubles/sample_web.h"
#include "tests/host/win32/call_faults.h"
#include "tests/host/win32/window_test.h"

namespace scrivo::host {
namespace {

namespace fs = std::filesystem;

constexpr char kMainTitle[] = "Scrivo - compile the open web";
constexpr char kRunTitle[] = "Scrivo - compiler output";
constexpr char kDecompileTitle[] = "Scrivo - decompile a help file";
constexpr char kWorkshopKey[] = "Software\\Microsoft\\HTML Help Workshop";

// The add-in's window with this title, in whatever program; null when there is none.
HWND Form(const std::string& title) {
  HWND form = FindWindowA("ScrivoWindow", title.c_str());
  return form && IsWindowVisible(form) ? form : nullptr;
}

void PressIn(const std::string& title, const std::string& caption) {
  HWND button = ButtonOf(Form(title), caption);
  ASSERT_NE(button, nullptr) << title << ": " << caption;
  SendMessageA(button, BM_CLICK, 0, 0);
}

void SetEdit(const std::string& title, std::size_t number, const std::string& text) {
  const auto edits = ControlsOf(Form(title), "EDIT");
  ASSERT_GT(edits.size(), number) << title;
  SendMessageA(edits[number], WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

void Uncheck(const std::string& title, const std::string& caption) {
  HWND box = ButtonOf(Form(title), caption);
  ASSERT_NE(box, nullptr) << title << ": " << caption;
  if (SendMessageA(box, BM_GETCHECK, 0, 0) == BST_CHECKED) SendMessageA(box, BM_CLICK, 0, 0);
}

bool IsHelpFile(const std::string& path) {
  char signature[4] = "";
  std::ifstream(path, std::ios::binary).read(signature, sizeof signature);
  return std::equal(signature, signature + 4, "ITSF");
}

// What the run window has shown while it ran.
std::string shown_progress;

void CALLBACK LookAtProgress(HWND, UINT, UINT_PTR, DWORD) {
  HWND run = Form(kRunTitle);
  if (!run) return;
  const auto panels = ControlsOf(run, "ScrivoWindow");
  const std::string text = panels.empty() ? "" : TextOf(panels.front());
  if (!text.empty() && !shown_progress.ends_with(text + "\n")) shown_progress += text + "\n";
}

// A program of the build, running.
class Program {
 public:
  explicit Program(const std::string& arguments, const std::string& name = "ScrivoHost") {
    std::string line =
        "\"" + TheServices().system->ModuleFolder() + "\\" + name + ".exe\" " + arguments;
    STARTUPINFOA start{};
    start.cb = sizeof start;
    if (!CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                        &process_)) {
      ADD_FAILURE() << "cannot start " << line;
    }
  }
  ~Program() {
    if (IsRunning()) TerminateProcess(process_.hProcess, 1);
    CloseHandle(process_.hThread);
    CloseHandle(process_.hProcess);
  }
  bool IsRunning() const { return WaitForSingleObject(process_.hProcess, 0) == WAIT_TIMEOUT; }
  // Looks again and again for as long as the program runs; what was found.
  template <typename Look>
  HWND Await(const Look& look) const {
    for (;;) {
      if (HWND found = look()) return found;
      if (WaitForSingleObject(process_.hProcess, 10) != WAIT_TIMEOUT) return nullptr;
    }
  }
  DWORD ExitStatus() const {
    WaitForSingleObject(process_.hProcess, INFINITE);
    DWORD status = 99;
    GetExitCodeProcess(process_.hProcess, &status);
    return status;
  }
  // The program's message box.
  HWND AwaitBox() const {
    return Await([this] {
      HWND box = nullptr;
      while ((box = FindWindowExA(nullptr, box, "#32770", nullptr)) != nullptr) {
        DWORD owner = 0;
        GetWindowThreadProcessId(box, &owner);
        if (owner == process_.dwProcessId && IsWindowVisible(box)) return box;
      }
      return box;
    });
  }

 private:
  PROCESS_INFORMATION process_{};
};

class EndToEndTest : public WindowTest {
 protected:
  EndToEndTest() {
    CopySampleWeb(SAMPLE_WEB, web);
    user_.Init(kHkeyCurrentUser);
    user_.SetValue(kWorkshopKey, "InstallDir", TheServices().system->ModuleFolder(), kRegSz);
    EXPECT_EQ(library_.Register(), S_OK);
  }
  ~EndToEndTest() override {
    window.reset();  // disconnects the add-in before its library goes
    world->ShutDown();
    EXPECT_EQ(library_.Unregister(), S_OK);
    user_.DeleteValue(kWorkshopKey, "InstallDir");
  }

  // Shows the window with the web and loads the add-in, as the program does at its start.
  void StartHost() {
    window->OpenWeb(web);
    window->Start(false);
    PumpMessages();
  }
  // Chooses one of the add-in's commands and goes on with `user` in the window that it shows.
  void ChooseCommand(const std::string& caption, std::function<void()> user) {
    OnceShown(std::move(user));
    Choose(SubMenu(Menu("Tools"), "Scrivo"), caption);
  }
  std::vector<std::string> ProjectFiles() const {
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(web)) {
      const std::string name = entry.path().filename().string();
      if (name.rfind("Scr", 0) == 0) names.push_back(name);
    }
    return names;
  }

  const std::string web = InFolder("Scrivo Builder sample web");
  const std::string output = InFolder("made.chm");

 private:
  Apartment apartment_;

 protected:
  Library library_;
  CRegistry user_;
};

TEST_F(EndToEndTest, TheAddInPutsItsCommandsOnMenuAndToolbar) {
  StartHost();
  EXPECT_EQ(Drawn(Menu("Tools")),
            "Refresh\tF5\nScrivo\n  Compile\n  Decompile\n  -\n  Scrivo Builder Sample Web\n"
            "  Help\n  -\n  Scrivo Builder Web site\n");
  const auto popup = world->bars.Find("Standard")->Find("Scrivo");
  ASSERT_TRUE(popup);
  ASSERT_EQ(popup->bar->controls.size(), 5u);
  EXPECT_EQ(popup->bar->controls[4]->face, 1445);
  EXPECT_EQ(popup->bar->controls[4]->on_action, "!<Kestrel.Connect>");
  EXPECT_TRUE(popup->temporary);
  EXPECT_EQ(StatusText(2), "Add-in: ScrivoBuilder");
}

TEST_F(EndToEndTest, MakesAHelpFileThroughTheMenuAndTakesItApartAgain) {
  StartHost();
  shown_progress.clear();
  const UINT_PTR timer = SetTimer(nullptr, 0, USER_TIMER_MINIMUM, LookAtProgress);
  ChooseCommand("Compile", [&] {
    EXPECT_FALSE(IsWindowEnabled(window->Handle()));
    SetEdit(kMainTitle, 1, output);
    Uncheck(kMainTitle, "Open CHM after compilation");
    PressIn(kMainTitle, "Generate");
  });
  KillTimer(nullptr, timer);
  EXPECT_TRUE(IsHelpFile(output));
  EXPECT_EQ(ProjectFiles(), std::vector<std::string>{});
  EXPECT_TRUE(IsWindowEnabled(window->Handle()));
  EXPECT_EQ(Form(kMainTitle), nullptr);
  ASSERT_NE(Form(kRunTitle), nullptr);
  LookAtProgress(nullptr, 0, 0, 0);
  EXPECT_TRUE(shown_progress.ends_with("100 %\n")) << shown_progress;
  EXPECT_GT(std::count(shown_progress.begin(), shown_progress.end(), '\n'), 1) << shown_progress;
  PressIn(kRunTitle, "Close");
  EXPECT_EQ(Form(kRunTitle), nullptr);

  const std::string folder = InFolder("unpacked");
  ChooseCommand("Decompile", [&] {
    SetEdit(kDecompileTitle, 0, output);
    Uncheck(kDecompileTitle, "Decompile into the open web site");
    SetEdit(kDecompileTitle, 1, folder);
    PressIn(kDecompileTitle, "Decompile");
  });
  EXPECT_TRUE(fs::exists(folder + "\\index.htm"));
  EXPECT_TRUE(fs::exists(folder + "\\start\\options.htm"));
}

TEST_F(EndToEndTest, OffersToRegisterTheAddInBesideTheProgram) {
  ASSERT_EQ(library_.Unregister(), S_OK);
  user_.DeleteValue(kWorkshopKey, "InstallDir");
  StartHost();
  EXPECT_EQ(StatusText(2), "No add-in is registered");
  EXPECT_EQ(Drawn(Menu("Tools")), "Refresh\tF5\n-\nRegister add-in\n");
  Choose(Menu("Tools"), "Register add-in");
  PumpMessages();
  EXPECT_EQ(StatusText(2), "Add-in: ScrivoBuilder");
  EXPECT_EQ(Drawn(Menu("Tools")).find("Register"), std::string::npos);
  EXPECT_NE(SubMenu(Menu("Tools"), "Scrivo"), nullptr);
  EXPECT_EQ(user_.GetValue(kWorkshopKey, "InstallDir", std::string()),
            RegistryValue(TheServices().system->ModuleFolder()));
}

TEST_F(EndToEndTest, OpensTheSampleWebFromTheUsersDocuments) {
  char documents[MAX_PATH] = "";
  ASSERT_EQ(SHGetFolderPathA(nullptr, CSIDL_PERSONAL | CSIDL_FLAG_CREATE, nullptr, 0, documents),
            S_OK);
  const std::string sample = std::string(documents) + "\\Scrivo Builder sample web";
  const bool is_ours = !fs::exists(sample);
  if (is_ours) CopySampleWeb(SAMPLE_WEB, sample);
  window->OpenWeb(web_path);
  window->Start(false);
  PumpMessages();
  Choose(SubMenu(Menu("Tools"), "Scrivo"), "Scrivo Builder Sample Web");
  PumpMessages();
  EXPECT_EQ(TextOf(window->Handle()), "Scrivo Builder sample web - Scrivo Host");
  EXPECT_EQ(StatusText(1), sample);
  EXPECT_EQ(world->session.Webs().size(), 2u);
  if (is_ours) fs::remove_all(sample);
}

TEST_F(EndToEndTest, ShowsTheWebMadeOfAHelpFileLikeTheOneThatItWasMadeOf) {
  const std::string made = InFolder("made");
  ASSERT_EQ(Program("compile -q \"" + web + "\" -o \"" + output + "\"", "scrivo").ExitStatus(), 0u);
  ASSERT_EQ(
      Program("decompile -q --web \"" + output + "\" \"" + made + "\"", "scrivo").ExitStatus(), 0u);
  window->OpenWeb(web);
  PumpMessages();
  const std::string drawn = DrawnTree();
  ASSERT_EQ(std::count(drawn.begin(), drawn.end(), '\n'), 12) << drawn;
  window->OpenWeb(made);
  PumpMessages();
  EXPECT_EQ(StatusText(1), made);
  EXPECT_EQ(DrawnTree(), drawn);
}

TEST_F(EndToEndTest, CompileFromTheToolbarAsksForAWebWhenNoneIsOpen) {
  window->Start(false);
  PumpMessages();
  const auto compile = world->bars.Find("Standard")->Find("Scrivo")->bar->controls.front();
  std::string text;
  OnceShown([&] {
    HWND box = FindWindowA("#32770", "Scrivo");
    ASSERT_NE(box, nullptr);
    for (HWND label : ControlsOf(box, "STATIC")) text += TextOf(label);
    PostMessageA(box, WM_CLOSE, 0, 0);
  });
  world->Press(compile);
  EXPECT_EQ(text, "Open site first");
}

TEST_F(EndToEndTest, NothingOfTheAddInIsLeftWhenTheHostCloses) {
  StartHost();
  SendMessageA(window->Handle(), WM_CLOSE, 0, 0);
  EXPECT_EQ(world->bars.Find("Tools")->controls.size(), 1u);
  EXPECT_EQ(world->bars.Find("Standard")->controls.size(), 2u);
  application = LateBound();
  EXPECT_EQ(world->references, 0);
}

TEST_F(EndToEndTest, EveryRefusalOfTheHostLeavesItsWindowAtWork) {
  window->OpenWeb(web);
  const auto connect_and_disconnect = [&] {
    world->addins.Read();
    world->addins.ConnectAtStart(kAtStartup);
    world->addins.DisconnectAll();
  };
  CallFaults faults(*world);
  connect_and_disconnect();
  const long calls = faults.Calls();
  EXPECT_GT(calls, 50);
  application = LateBound();
  for (long call = 1; call <= calls; ++call) {
    faults.FailOnly(call);
    connect_and_disconnect();
    faults.FailOnly(0);
    world->bars.DropTemporaries();
    EXPECT_EQ(world->references, 0) << "after a failure of call " << call;
  }
}

TEST_F(EndToEndTest, TheProgramShowsTheCompileDialogAtOnceWhenConnectedExternally) {
  Program host("--external \"" + web + "\"");
  ASSERT_NE(host.Await([] { return Form(kMainTitle); }), nullptr);
  HWND main = FindWindowA(HostWindow::kClass, "Scrivo Builder sample web - Scrivo Host");
  ASSERT_NE(main, nullptr);
  SetEdit(kMainTitle, 1, output);
  Uncheck(kMainTitle, "Open CHM after compilation");
  PressIn(kMainTitle, "Generate");
  EXPECT_TRUE(IsHelpFile(output));
  EXPECT_EQ(ProjectFiles(), std::vector<std::string>{});
  PostMessageA(main, WM_CLOSE, 0, 0);
  EXPECT_EQ(host.ExitStatus(), 0u);
}

TEST_F(EndToEndTest, TheProgramSaysWhyAWebCannotBeOpenedAndEndsWhenItWasConnectedForIt) {
  Program host("--external \"" + InFolder("nowhere") + "\"");
  HWND box = host.AwaitBox();
  ASSERT_NE(box, nullptr);
  std::string text;
  for (HWND label : ControlsOf(box, "STATIC")) {
    char part[512] = "";
    SendMessageA(label, WM_GETTEXT, sizeof part, reinterpret_cast<LPARAM>(part));
    text += part;
  }
  EXPECT_NE(text.find(InFolder("nowhere")), std::string::npos) << text;
  PostMessageA(box, WM_CLOSE, 0, 0);
  EXPECT_EQ(host.ExitStatus(), 1u);
}

TEST_F(EndToEndTest, TheProgramOpensAWebAndEndsWhenItIsClosed) {
  Program host("\"" + web + "\"");
  HWND main = host.Await(
      [] { return FindWindowA(HostWindow::kClass, "Scrivo Builder sample web - Scrivo Host"); });
  ASSERT_NE(main, nullptr);
  HWND tree = GetDlgItem(main, kTreeId);
  EXPECT_EQ(SendMessageA(tree, TVM_GETCOUNT, 0, 0), 12);
  PostMessageA(main, WM_COMMAND, kExitId, 0);
  EXPECT_EQ(host.ExitStatus(), 0u);
}

TEST_F(EndToEndTest, TheProgramSaysHowItIsCalled) {
  Program help("--help");
  HWND box = help.AwaitBox();
  ASSERT_NE(box, nullptr);
  PostMessageA(box, WM_CLOSE, 0, 0);
  EXPECT_EQ(help.ExitStatus(), 0u);
  Program wrong("--extern web");
  box = wrong.AwaitBox();
  ASSERT_NE(box, nullptr);
  PostMessageA(box, WM_CLOSE, 0, 0);
  EXPECT_EQ(wrong.ExitStatus(), 2u);
}

}  // namespace
}  // namespace scrivo::host
