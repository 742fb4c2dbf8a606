// frmDecompile::Decompile, the action behind the "Decompile" button.

#include "compiler/frm_hhc.h"
#include "decompile/frm_decompile.h"
#include "errors/error_handler.h"
#include "errors/frame.h"
#include "platform/temp_files.h"
#include "system/services.h"

namespace scrivo {

void frmDecompile::Decompile() {
  const std::shared_ptr<frmDecompile> alive = shared_from_this();
  Procedure("Kestrel.frmDecompile.Decompile", [&](Steps& step) {
    if (PathsAreUsable(step)) {
      const std::string folder = params_["DIR"].text;
      Hide();
      step([&] { frmHHC::Load().Decompile(true); });
      const std::string arguments = step([&] {
        // The tool gets the paths without quotes, which only their short forms survive.
        return "-decompile " + GetShortPath(folder) + " " + GetShortPath(params_["FILE"].text);
      });
      step([&] { frmHHC::Load().Execute(folder, arguments); });
      step([] { frmHHC::Unload(); });
    }
    // Also after a message about a wrong path, on purpose: the user opens the dialog again to
    // correct it.
    step([] { Unload(); });
  });
}

bool frmDecompile::PathsAreUsable(Steps& step) {
  Files& files = *TheServices().files;
  Desktop& desktop = *TheServices().desktop;
  const std::string folder = params_["DIR"].text;
  if (!step([&] { return files.FileExists(params_["FILE"].text); })) {
    step([&] { desktop.ShowMessage("Can not find input file", kCritical, kComponentTitle); });
    return false;
  }
  if (folder.empty()) {
    step(
        [&] { desktop.ShowMessage("Please, enter output folder", kInformation, kComponentTitle); });
    return false;
  }
  const bool folder_exists = step([&] { return files.FolderExists(folder); });
  if (!folder_exists) step([&] { files.MakeFolder(folder); });
  return true;
}

}  // namespace scrivo
