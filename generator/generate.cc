// The driver behind the "Generate" button: frmMain::Generate and what only it needs.

#include "compiler/frm_hhc.h"
#include "errors/error_handler.h"
#include "errors/frame.h"
#include "generator/frm_main.h"
#include "platform/globals.h"
#include "platform/paths.h"
#include "system/error.h"
#include "system/services.h"

namespace scrivo {
namespace {

// What frmHHC::Execute gives when the compiler had something to say.
constexpr std::int32_t kCompilerMessages = -1;

bool AskYesNo(const std::string& question, std::uint32_t icon, const std::string& caption) {
  return TheServices().desktop->ShowMessage(question, kYesNo | icon, caption) ==
         MessageAnswer::kYes;
}

// Deletes a file without forcing it and ignores a failure; true when the failure was that the file
// is in use or protected.
bool IsLockedAgainstRemoval(const std::string& path) {
  try {
    TheServices().files->Remove(path, false);
    return false;
  } catch (...) {
    return ErrorFrom(std::current_exception()).number == kPermissionDenied;
  }
}

// A run lets the user's clicks through; while this object lives, none of them begins a second run
// or closes the dialog.
class HeldStill {
 public:
  // The dialog's window, which may be null.
  explicit HeldStill(MainView* view) : view_(view) {
    if (view_) IgnoringErrors([&] { view_->Enable(false); });
  }
  ~HeldStill() {
    if (view_) IgnoringErrors([&] { view_->Enable(true); });
  }
  HeldStill(const HeldStill&) = delete;
  HeldStill& operator=(const HeldStill&) = delete;

 private:
  MainView* view_;
};

}  // namespace

void frmMain::Generate() {
  const std::shared_ptr<frmMain> alive = shared_from_this();  // the last step lets go of the dialog
  Procedure("Kestrel.frmMain.Generate", [&](Steps& step) {
    step([&] { SaveModifiedPages(); });
    CompileAndShow(step);
    if (!params_["LEAVEPROJECTFILE"].checked) RemoveProjectFiles();
    step([&] { OpenWeb().Refresh(); });
    step([&] { Unload(); });
  });
}

// The statements of Generate that lead to its clean-up, whichever of them is the last.
void frmMain::CompileAndShow(Steps& step) {
  bool found = false;
  step([&] { found = FindCompiler(); });
  if (!found) return;

  bool stopped = false;
  IgnoringErrors([&] {
    if (IsLockedAgainstRemoval(params_["OUTPUT"].text)) {
      stopped = CloseHelpViewer(params_["TITLE"].text);
    }
  });
  if (stopped || !BuildSources(step)) return;

  std::int32_t result = 0;
  // A window that stayed from an earlier run may have taken a file apart.
  step([&] { frmHHC::Load().Decompile(false); });
  step([&] { frmHHC::Load().FilesCount(static_cast<std::int32_t>(AllFiles().size())); });
  step([&] {
    const HeldStill held(view_.get());
    result = frmHHC::Load().Execute(Globals().working_folder, GetFileName(project_path_));
  });
  if (result == kCompilerMessages) return;

  step([&] {
    if (!params_["CLOSELOG"].checked) frmHHC::Unload();
  });
  step([&] { ShowResult(); });
}

bool frmMain::BuildSources(Steps& step) {
  bool built = true;
  step([&] { use_index_ = params_["USEKEYWORDS"].checked; });
  if (use_index_) {
    built = false;
    step([&] { built = BuildIndexFile(); });
    if (!built) return false;
  }
  built = false;
  step([&] { built = BuildContentFile(); });
  if (!built) return false;
  built = false;
  step([&] { built = BuildProjectFile(); });
  return built;
}

void frmMain::ShowResult() {
  const std::string& output = params_["OUTPUT"].text;
  if (!params_["VIEWRESULT"].checked || !TheServices().files->FileExists(output)) return;
  TheServices().desktop->HtmlHelp(Window(), output, kHelpDisplayToc, StartPageLocation());
}

bool frmMain::WriteProject() {
  bool written = false;
  Procedure("Kestrel.frmMain.WriteProject", [&](Steps& step) { written = BuildSources(step); });
  return written;
}

void frmMain::RemoveProjectFiles() {
  for (const std::string& path : {project_path_, contents_path_, index_path_, derived_path_}) {
    IgnoringErrors([&] { TheServices().files->Remove(path, true); });
  }
}

void frmMain::SaveModifiedPages() {
  Procedure("Kestrel.frmMain.SaveModifiedPages", [&](Steps& step) {
    OpenPages pages;
    step([&] { pages = OpenWeb().OpenPages(); });
    bool is_modified = false;
    for (std::size_t i = 0; i < pages.size() && !is_modified; ++i) {
      step([&] { is_modified = pages[i]->IsModified(); });
    }
    if (!is_modified) return;

    bool wanted = false;
    step([&] {
      wanted = AskYesNo("There are unsaved documents. Would you like to save it?", kQuestion,
                        "Save documents");
    });
    if (!wanted) return;
    for (const std::shared_ptr<OpenPage>& page : pages) {
      is_modified = false;
      step([&] { is_modified = page->IsModified(); });
      if (is_modified) step([&] { page->Save(true); });
    }
  });
}

bool frmMain::CloseHelpViewer(const std::string& title) {
  bool stops = false;
  Procedure("Kestrel.frmMain.CloseHelpViewer", [&](Steps& step) {
    bool may_close = false;
    step([&] {
      may_close = AskYesNo(
          "Output file is locked. Possibly this file opened by HTMLHelp Viewer.\r\n"
          "Can I try to close it?",
          kInformation, kComponentTitle);
    });
    if (!may_close) {
      stops = true;
      return;
    }
    WindowHandle viewer = 0;
    step([&] { viewer = TheServices().desktop->FindTopLevelWindow("HH Parent", title); });
    if (viewer != 0) {
      step([&] { TheServices().desktop->SendToWindow(viewer, kCloseMessage); });
      return;
    }
    step([&] {
      TheServices().desktop->ShowMessage(
          "The appropriate HTMLHelp Viewer was not found.\r\n"
          "Please, close it manualy. Compilation stopped",
          kCritical | kOkOnly, kComponentTitle);
    });
    stops = true;
  });
  return stops;
}

}  // namespace scrivo
