// Where the help compiler is: frmMain::FindCompiler and frmMain::SelectCompiler.

#include "errors/error_handler.h"
#include "errors/frame.h"
#include "generator/frm_main.h"
#include "platform/common_dialog.h"
#include "platform/globals.h"
#include "platform/paths.h"
#include "platform/registry.h"
#include "system/error.h"
#include "system/services.h"

namespace scrivo {
namespace {

constexpr char kWorkshopKey[] = "Software\\Microsoft\\HTML Help Workshop";
constexpr char kInstallFolder[] = "InstallDir";

std::string InstallFolder(CRegistry& registry) {
  const RegistryValue value = registry.GetValue(kWorkshopKey, kInstallFolder, std::string());
  if (const auto* text = std::get_if<std::string>(&value)) return *text;
  throw Error(kTypeMismatch, "Scrivo.frmMain", "The registry value \"InstallDir\" is not a text");
}

void TellWithoutIcon(const std::string& text) {
  TheServices().desktop->ShowMessage(text, kOkOnly, kComponentTitle);
}

}  // namespace

bool frmMain::FindCompiler() {
  bool found = false;
  Procedure("Kestrel.frmMain.FindCompiler", [&](Steps& step) {
    CRegistry registry;
    registry.Init(static_cast<std::uint32_t>(kHkeyCurrentUser));
    bool is_installed = false;
    step([&] { is_installed = registry.KeyExists(kWorkshopKey); });
    if (!is_installed) {
      step([&] { TellWithoutIcon("Microsoft HTML Help WorkShop must be installed"); });
      return;
    }
    std::string folder;
    step([&] { folder = InstallFolder(registry); });
    if (!folder.empty()) {
      Globals().compiler_path = JoinPath(folder, Globals().compiler_file_name);
      step([&] { found = TheServices().files->FileExists(Globals().compiler_path); });
      if (found) return;
    }
    step([&] { found = SelectCompiler(); });
  });
  return found;
}

bool frmMain::SelectCompiler() {
  bool selected = false;
  Procedure("Kestrel.frmMain.SelectCompiler", [&](Steps& step) {
    FileDialogParameters dialog{.FileName = "*.EXE",
                                .FileTitle = "Microsoft HTML Help Workshop compiler",
                                .HideReadOnly = true,
                                .Filter = "Applications (*.EXE)|*.EXE",
                                .FilterIndex = 1,
                                .DlgTitle = "Select Microsoft HTML Help WorkShop hhc.exe file",
                                .Owner = Window()};
    bool confirmed = false;
    step([&] { confirmed = VBGetOpenFileName(&dialog); });
    if (!confirmed) return;

    const std::string& path = dialog.FileName;
    // Case counts on purpose: "HHC.EXE" is refused.
    if (GetFileName(path) != Globals().compiler_file_name) {
      step([&] { TellWithoutIcon("Wrong file name!"); });
      return;
    }
    Globals().compiler_path = path;
    selected = true;

    MessageAnswer answer = MessageAnswer::kNo;
    step([&] {
      answer = TheServices().desktop->ShowMessage(
          "Save Location of Microsoft HTML Help Workshop hhc.exe file for future use?",
          kYesNo | kExclamation, kComponentTitle);
    });
    if (answer != MessageAnswer::kYes) return;
    step([&] {
      CRegistry registry;
      registry.Init(static_cast<std::uint32_t>(kHkeyCurrentUser));
      registry.SetValue(kWorkshopKey, kInstallFolder, GetFolder(path), kRegSz);
    });
  });
  return selected;
}

}  // namespace scrivo
