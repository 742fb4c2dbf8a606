// Keeps pictures of every dialog over a web on disk, each at its first size and at a larger one:
//
//   show_windows.exe WEB FOLDER    writes FOLDER\compile.bmp, FOLDER\compile-large.bmp …
//
// The dialogs are the real ones with the real compiler beside this program; settings are in memory.

#include <cstdlib>
#include <iostream>

#include "compiler/frm_hhc.h"
#include "decompile/frm_decompile.h"
#include "errors/dialog/frm_error_message.h"
#include "errors/error_handler.h"
#include "errors/frame.h"
#include "generator/frm_main.h"
#include "platform/globals.h"
#include "platform/paths.h"
#include "platform/registry.h"
#include "platform/settings.h"
#include "platform/win32/services.h"
#include "system/services.h"
#include "tests/doubles/memory_registry.h"
#include "tests/forms/win32/picture.h"
#include "tests/ui/win32/live_window.h"
#include "ui/win32/win32_views.h"
#include "webs/disk_host.h"
#include "webs/disk_web.h"

namespace scrivo {
namespace {

std::string picture_folder;

HWND FormWithTitle(const std::string& title) { return FindWindowA("ScrivoWindow", title.c_str()); }

void Keep(HWND window, const std::string& name) {
  RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
  const std::string path = JoinPath(picture_folder, name + ".bmp");
  if (window && KeepPicture(window, path)) return;
  std::cerr << path << ": the picture cannot be kept\n";
  std::exit(1);
}

// Half as wide and a third as high again.
void MakeLarger(HWND window) {
  RECT place;
  GetWindowRect(window, &place);
  MoveWindow(window, place.left / 2, place.top / 2, (place.right - place.left) * 3 / 2,
             (place.bottom - place.top) * 4 / 3, TRUE);
}

// Keeps both pictures of the modal form that is shown next, then closes it.
void KeepWhenShown(const std::string& title, const std::string& name) {
  OnceShown([=] {
    Keep(FormWithTitle(title), name);
    MakeLarger(FormWithTitle(title));
    OnceShown([=] {
      Keep(FormWithTitle(title), name + "-large");
      SendMessageA(FormWithTitle(title), WM_CLOSE, 0, 0);
    });
  });
}

void ShowCompile() {
  frmMain::Load()->BuildUI();
  KeepWhenShown("Scrivo - compile the open web", "compile");
  frmMain::Load()->ShowModal();
}

// The desktop, which also looks at the run after every piece of output.
class WatchingDesktop : public Win32Desktop {
 public:
  void ProcessMessages() override {
    Win32Desktop::ProcessMessages();
    if (kept_ || !frmHHC::IsLoaded() || frmHHC::Load().Transcript().size() < 600) return;
    kept_ = true;
    Keep(FormWithTitle("Scrivo - compiler output"), "run");
  }

 private:
  bool kept_ = false;
};

void ShowRun() {
  const std::shared_ptr<frmMain> form = frmMain::Load();
  form->BuildUI();
  form->suiParams()["VIEWRESULT"].checked = false;
  form->Generate();
  HWND window = FormWithTitle("Scrivo - compiler output");
  MakeLarger(window);
  PumpMessages();
  Keep(window, "run-large");
  SendMessageA(window, WM_CLOSE, 0, 0);
}

void ShowDecompile() {
  SaveSetting("Scrivo", "Decompile", "FILE", "C:\\Help\\Building a help file with Scrivo.CHM");
  SaveSetting("Scrivo", "Decompile", "DIR", "C:\\Webs\\unpacked");
  KeepWhenShown("Scrivo - decompile a help file", "decompile");
  frmDecompile::Load()->ShowModal();
}

// A step that fails in the middle of a compile, as the error handler reports it.
void ShowError() {
  CErrorHandler& handler = ErrorHandler();
  handler.ErrorHandlerActions(ehaErrorDialog);
  handler.CallStackEnabled(true);
  handler.Dialog(std::make_shared<ErrorMessageDialog>());
  handler.SupportMail("support@example.org");
  KeepWhenShown("Scrivo", "error");
  Procedure("Kestrel.frmMain.Generate", [](Steps& step) {
    step([] {
      Procedure("Kestrel.frmMain.BuildContentFile", [](Steps& inner) {
        inner([] {
          throw Error(kPermissionDenied, "Scrivo.Files",
                      "Permission denied: C:\\Webs\\scrivo\\Scr1A2.hhc");
        });
      });
    });
  });
  handler.Dialog(nullptr);
}

// The web on disk in the host that it was made with.
class Host : public DiskHost {
 public:
  using DiskHost::DiskHost;
  std::string Version() override { return "12.0.0.6211"; }
};

void UseCompilerBesideThisProgram() {
  CRegistry registry;
  registry.Init(kHkeyCurrentUser);
  registry.SetValue("Software\\Microsoft\\HTML Help Workshop", "InstallDir",
                    TheServices().system->ModuleFolder(), kRegSz);
}

int Show(const std::string& web) {
  TheServices() = CreateSystemServices();
  TheServices().registry = std::make_shared<MemoryRegistry>();
  TheServices().desktop = std::make_shared<WatchingDesktop>();
  UseCompilerBesideThisProgram();
  WebProblemList problems;
  Globals().HostApplication = std::make_shared<Host>(OpenDiskWeb(web, {}, problems));
  Globals().views = std::make_shared<Win32Views>([] { frmHHC::Unload(); });
  ShowCompile();
  ShowRun();
  ShowDecompile();
  ShowError();
  return 0;
}

}  // namespace
}  // namespace scrivo

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "usage: show_windows.exe WEB FOLDER\n";
    return 2;
  }
  scrivo::picture_folder = argv[2];
  return scrivo::Show(argv[1]);
}
