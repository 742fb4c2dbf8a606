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
  explicit HeldStill(ParameterView* view) : view_(view) {
    if (view_) IgnoringErrors([&] { view_->Enable(false); });
  }
  ~HeldStill() {
    if (view_) IgnoringErrors([&] { view_->Enable(true); });
  }
  HeldStill(const HeldStill&) = delete;
  HeldStill& operator=(const HeldStill&) = delete;

 private:
  ParameterView* view_;
};

}  // namespace

void frmMain::Generate() {
  const std::shared_ptr<frmMain> alive = shared_from_this();  // the last step lets go of the dialog
  Procedure("Kestrel.frmMain.Generate", [&](Steps& step) {
    step([&] { SaveModifiedPages(); });
    CompileAndShow(step);
    if (!Job().keep_project) RemoveProjectFiles();
    step([&] { OpenWeb().Refresh(); });
    step([&] { Unload(); });
  });
}

// The statements of Generate that lead to its clean-up, whichever of them is the last.
void frmMain::CompileAndShow(Steps& step) {
  if (!step([&] { return FindCompiler(); })) return;

  bool stopped = false;
  IgnoringErrors([&] {
    const CompileJob job = Job();
    if (IsLockedAgainstRemoval(job.output)) stopped = CloseHelpViewer(job.title);
  });
  if (stopped || !BuildSources(step)) return;

  // A window that stayed from an earlier run may have taken a file apart.
  step([&] { frmHHC::Load().Decompile(false); });
  step([&] { frmHHC::Load().FilesCount(static_cast<std::int32_t>(AllFiles().size())); });
  const std::int32_t result = step([&] {
    const HeldStill held(view_.get());
    return frmHHC::Load().Execute(Globals().working_folder, GetFileName(project_path_));
  });
  if (result == kCompilerMessages) return;

  step([&] {
    if (!params_["CLOSELOG"].checked) frmHHC::Unload();
  });
  step([&] { ShowResult(); });
}

bool frmMain::BuildSources(Steps& step) {
  step([&] { use_index_ = Job().use_index; });
  if (use_index_ && !step([&] { return BuildIndexFile(); })) return false;
  return step([&] { return BuildContentFile(); }) && step([&] { return BuildProjectFile(); });
}

void frmMain::ShowResult() {
  const CompileJob job = Job();
  if (!params_["VIEWRESULT"].checked || !TheServices().files->FileExists(job.output)) return;
  TheServices().desktop->HtmlHelp(Window(), job.output, kHelpDisplayToc,
                                  StartPageLocation(job, Locations()));
}

void frmMain::RemoveProjectFiles() {
  for (const std::string& path : {project_path_, contents_path_, index_path_, derived_path_}) {
    IgnoringErrors([&] { TheServices().files->Remove(path, true); });
  }
}

void frmMain::SaveModifiedPages() {
  Procedure("Kestrel.frmMain.SaveModifiedPages", [&](Steps& step) {
    const scrivo::OpenPages pages = step([&] { return OpenWeb().OpenPages(); });
    bool is_modified = false;
    for (std::size_t i = 0; i < pages.size() && !is_modified; ++i) {
      is_modified = step([&] { return pages[i]->IsModified(); });
    }
    if (!is_modified) return;

    const bool wanted = step([&] {
      return AskYesNo("There are unsaved documents. Would you like to save it?", kQuestion,
                      "Save documents");
    });
    if (!wanted) return;
    for (const std::shared_ptr<OpenPage>& page : pages) {
      if (step([&] { return page->IsModified(); })) step([&] { page->Save(true); });
    }
  });
}

bool frmMain::CloseHelpViewer(const std::string& title) {
  return Procedure<bool>("Kestrel.frmMain.CloseHelpViewer", [&](Steps& step, bool& stops) {
    const bool may_close = step([&] {
      return AskYesNo(
          "Output file is locked. Possibly this file opened by HTMLHelp Viewer.\r\n"
          "Can I try to close it?",
          kInformation, kComponentTitle);
    });
    if (!may_close) {
      stops = true;
      return;
    }
    const WindowHandle viewer =
        step([&] { return TheServices().desktop->FindTopLevelWindow("HH Parent", title); });
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
}

}  // namespace scrivo
