// Whole compiles and decompiles in real windows, with the real compiler and unpacker.

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "platform/paths.h"
#include "platform/settings.h"
#include "tests/doubles/sample_web.h"
#include "tests/forms/win32/forms_test.h"
#include "tests/platform/win32/dialog_answer.h"
#include "webs/disk_host.h"
#include "webs/disk_web.h"

namespace scrivo {
namespace {

namespace fs = std::filesystem;

class GenerateTest : public FormsTest {
 protected:
  GenerateTest() {
    CopySampleWeb(SAMPLE_WEB, web);
    Globals().HostApplication = std::make_shared<DiskHost>(OpenDiskWeb(web, {}, problems));
  }

  // Opens the compile dialog, which makes `output` and does not open it, and lets the user go on.
  void Compile(std::function<void()> user) {
    ASSERT_TRUE(frmMain::Load()->BuildUI());
    OnceShown([this, user] {
      SetWindowTextA(Edit(kMainTitle, 1), output.c_str());
      Press(kMainTitle, "Open CHM after compilation");
      user();
    });
    frmMain::Load()->ShowModal();
  }
  void CompileWithoutLog() {
    Compile([] {
      Press(kMainTitle, "Don't close compilation log on success");
      Press(kMainTitle, "Generate");
    });
  }
  static std::string Transcript() { return TextOf(Edit(kRunTitle, 0)); }
  static std::string Progress() {
    return TextOf(ControlsOf(Window(kRunTitle), "ScrivoWindow").at(0));
  }
  bool IsHelpFile() const {
    char signature[4] = "";
    std::ifstream(output, std::ios::binary).read(signature, sizeof signature);
    return std::equal(signature, signature + 4, "ITSF");
  }
  // Names of the project's files that lie in the web.
  std::vector<std::string> ProjectFiles() const {
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(web)) {
      const std::string name = entry.path().filename().string();
      if (name.rfind("Scr", 0) == 0) names.push_back(entry.path().extension().string());
    }
    std::sort(names.begin(), names.end());
    return names;
  }

  const std::string web = InFolder("web"), output = InFolder("made.chm");
  WebProblemList problems;
};

TEST_F(GenerateTest, TheHelpFileIsMadeAndTheRunStaysOnView) {
  Compile([] { Press(kMainTitle, "Generate"); });
  EXPECT_TRUE(IsHelpFile());
  EXPECT_TRUE(ProjectFiles().empty());
  EXPECT_FALSE(frmMain::IsLoaded());

  ASSERT_TRUE(IsWindowVisible(Window(kRunTitle)));
  EXPECT_EQ(Progress(), "100 %");
  const std::string transcript = Transcript();
  EXPECT_EQ(transcript.find("Starting Microsoft HTML Help Workshop compiler\r\n"), 0U);
  EXPECT_NE(transcript.find("getting_started.htm\r\n"), std::string::npos);
  EXPECT_EQ(transcript.substr(transcript.size() - 7), "\r\nDone!");
  EXPECT_TRUE(IsWindowEnabled(Button(kRunTitle, "Close")));
  EXPECT_EQ(GetFocus(), Button(kRunTitle, "Close"));
  ExpectTabOrder(kRunTitle, {Edit(kRunTitle, 0), Button(kRunTitle, "Close")});
  for (const int width : {1, 1270}) {
    MoveWindow(Window(kRunTitle), 0, 0, width, width * 3 / 4, TRUE);
    ExpectTidy(kRunTitle);
  }
  Press(kRunTitle, "Close");
  EXPECT_FALSE(frmHHC::IsLoaded());
  EXPECT_EQ(Window(kRunTitle), nullptr);
  EXPECT_EQ(ErrorLog(), "");
}

TEST_F(GenerateTest, WhileItRunsNothingCanBeClosedOrStartedAgain) {
  int looks = 0;
  bool was_in_between = false;
  desktop->on_pass = [&] {
    if (!frmHHC::IsLoaded() || frmHHC::Load().Transcript().size() < 200) return;
    ++looks;
    const std::string progress = Progress();
    was_in_between |= progress != "5 %" && progress.find(" %") != std::string::npos;
    EXPECT_FALSE(IsWindowEnabled(Button(kRunTitle, "Close")));
    EXPECT_TRUE(GetMenuState(GetSystemMenu(Window(kRunTitle), FALSE), SC_CLOSE, MF_BYCOMMAND) &
                MF_GRAYED);
    EXPECT_FALSE(IsWindowEnabled(Window(kMainTitle)));
    CloseBox(kRunTitle);
    EXPECT_TRUE(IsWindowVisible(Window(kRunTitle)));
  };
  Compile([] { Press(kMainTitle, "Generate"); });
  desktop->on_pass = nullptr;
  EXPECT_GT(looks, 0);
  EXPECT_TRUE(was_in_between);
  EXPECT_TRUE(IsHelpFile());
}

TEST_F(GenerateTest, WithTheLogOffTheRunWindowGoesToo) {
  CompileWithoutLog();
  EXPECT_TRUE(IsHelpFile());
  EXPECT_EQ(Window(kRunTitle), nullptr);
}

TEST_F(GenerateTest, TheProjectStaysWhenItIsWanted) {
  Compile([] {
    Press(kMainTitle, "Don't remove HTML Workshop project file");
    Press(kMainTitle, "Generate");
  });
  EXPECT_EQ(ProjectFiles(), (std::vector<std::string>{".hhc", ".hhk", ".hhp", ".htm"}));
}

TEST_F(GenerateTest, TheCompilersMessagesAreToldAndTheRunStaysOnView) {
  std::ofstream(web + "\\about.htm", std::ios::app) << "<a href=\"nowhere.htm\">gone</a>";
  std::string told;
  DialogAnswer user([&](HWND box) {
    for (HWND text : ControlsOf(box, "STATIC")) told += TextOf(text);
    scrivo::Press(box, IDOK);
  });
  CompileWithoutLog();
  EXPECT_EQ(told.find("There are errors and warnings while compiling."), 0U) << told;
  EXPECT_NE(told.find("nowhere.htm"), std::string::npos) << told;
  EXPECT_TRUE(IsHelpFile());
  EXPECT_NE(Window(kRunTitle), nullptr);
  EXPECT_EQ(Progress(), "100 %");
}

TEST_F(GenerateTest, AfterTheRunTheHostsOwnMessageLoopServesItsKeys) {
  Compile([] { Press(kMainTitle, "Generate"); });
  ASSERT_NE(Window(kRunTitle), nullptr);
  PostMessageA(Edit(kRunTitle, 0), WM_KEYDOWN, VK_ESCAPE, 0);
  MSG message;
  while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
    TranslateMessage(&message);
    DispatchMessageA(&message);
  }
  EXPECT_EQ(Window(kRunTitle), nullptr);
}

TEST_F(GenerateTest, TheRegistryLeadsToTheCompiler) {
  SetCompilerFolder("C:\\no such folder");
  desktop->on_pass = nullptr;
  std::string title;
  DialogAnswer user([&](HWND box) {
    title = TextOf(box);
    scrivo::Press(box, IDCANCEL);
  });
  Compile([] { Press(kMainTitle, "Generate"); });
  EXPECT_EQ(title, "Select Microsoft HTML Help WorkShop hhc.exe file");
  EXPECT_FALSE(IsHelpFile());
  EXPECT_FALSE(frmMain::IsLoaded());
}

class DecompileTest : public GenerateTest {
 protected:
  // Opens the dialog, enters both paths and lets the user go on.
  void Decompile(const std::string& file, const std::string& into, std::function<void()> user) {
    OnceShown([=] {
      SetWindowTextA(Edit(kDecompileTitle, 0), file.c_str());
      SetWindowTextA(Edit(kDecompileTitle, 1), into.c_str());
      user();
    });
    frmDecompile::Load()->ShowModal();
  }
  static void Open(std::function<void()> user) {
    OnceShown(std::move(user));
    frmDecompile::Load()->ShowModal();
  }
};

TEST_F(DecompileTest, TheHelpFileIsTakenApart) {
  CompileWithoutLog();
  ASSERT_TRUE(IsHelpFile());
  const std::string into = InFolder("taken apart");
  Decompile(output, into, [] { Press(kDecompileTitle, "Decompile"); });
  EXPECT_TRUE(fs::exists(into + "\\index.htm"));
  EXPECT_TRUE(fs::exists(into + "\\start\\options.htm"));
  EXPECT_FALSE(frmDecompile::IsLoaded());
  EXPECT_EQ(Window(kDecompileTitle), nullptr);
  EXPECT_EQ(Window(kRunTitle), nullptr);
  EXPECT_EQ(ErrorLog(), "");
}

TEST_F(DecompileTest, AMissingFileIsToldAndTheDialogGoesButKeepsItsValues) {
  std::string told;
  DialogAnswer user([&](HWND box) {
    for (HWND text : ControlsOf(box, "STATIC")) told += TextOf(text);
    scrivo::Press(box, IDOK);
  });
  Decompile("C:\\no such file.chm", "C:\\out", [] { Press(kDecompileTitle, "Decompile"); });
  EXPECT_EQ(told, "Can not find input file");
  EXPECT_FALSE(frmDecompile::IsLoaded());
  Open([] {
    EXPECT_EQ(TextOf(Edit(kDecompileTitle, 0)), "C:\\no such file.chm");
    EXPECT_EQ(TextOf(Edit(kDecompileTitle, 1)), "C:\\out");
    CloseBox(kDecompileTitle);
  });
}

TEST_F(DecompileTest, AtFirstTheFieldsAreEmptyAndTheBoxIsTicked) {
  Open([] {
    EXPECT_EQ(TextOf(Edit(kDecompileTitle, 0)), "");
    EXPECT_EQ(TextOf(Edit(kDecompileTitle, 1)), "");
    EXPECT_TRUE(IsChecked(kDecompileTitle, "Decompile into the open web site"));
    Press(kDecompileTitle, "Close");
  });
  EXPECT_FALSE(frmDecompile::IsLoaded());
}

TEST_F(DecompileTest, TheDialogIsTidyAtEverySizeAndUsableByKeyboard) {
  Open([] {
    ExpectTabOrder(kDecompileTitle,
                   {Edit(kDecompileTitle, 0), ControlsOf(Window(kDecompileTitle), "BUTTON").at(0),
                    Edit(kDecompileTitle, 1), ControlsOf(Window(kDecompileTitle), "BUTTON").at(1),
                    Button(kDecompileTitle, "Decompile into the open web site"),
                    Button(kDecompileTitle, "Decompile"), Button(kDecompileTitle, "Help"),
                    Button(kDecompileTitle, "Close")});
    ExpectAccessKeys(kDecompileTitle, 6);
    for (const int width : {1, 640, 1270}) {
      MoveWindow(Window(kDecompileTitle), 0, 0, width, width, TRUE);
      ExpectTidy(kDecompileTitle);
    }
    PostMessageA(GetFocus(), WM_KEYDOWN, VK_ESCAPE, 0);
  });
  EXPECT_FALSE(frmDecompile::IsLoaded());
}

TEST_F(DecompileTest, PlaceSizeAndValuesAreBackAfterClosing) {
  RECT place{};
  Open([&] {
    MoveWindow(Window(kDecompileTitle), 60, 70, 600, 300, TRUE);
    place = PlaceOf(Window(kDecompileTitle));
    Press(kDecompileTitle, "Decompile into the open web site");
    PostMessageA(GetFocus(), WM_KEYDOWN, VK_ESCAPE, 0);
  });
  Open([&] {
    const RECT again = PlaceOf(Window(kDecompileTitle));
    EXPECT_TRUE(EqualRect(&again, &place));
    EXPECT_FALSE(IsChecked(kDecompileTitle, "Decompile into the open web site"));
    CloseBox(kDecompileTitle);
  });
}

TEST_F(DecompileTest, ASavedPlaceThatNoMonitorShowsIsPulledBackIntoView) {
  SaveSetting("Scrivo", "Decompile", "LEFT", "-500000");
  SaveSetting("Scrivo", "Decompile", "TOP", "500000");
  Open([] {
    const RECT place = PlaceOf(Window(kDecompileTitle));
    EXPECT_NE(MonitorFromRect(&place, MONITOR_DEFAULTTONULL), nullptr);
    EXPECT_GE(place.left, 0);
    EXPECT_GE(place.top, 0);
    CloseBox(kDecompileTitle);
  });
}

}  // namespace
}  // namespace scrivo
