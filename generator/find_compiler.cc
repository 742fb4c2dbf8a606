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
  return Procedure<bool>("Kestrel.frmMain.FindCompiler", [&](Steps& step, bool& found) {
    CRegistry registry;
    registry.Init(static_cast<std::uint32_t>(kHkeyCurrentUser));
    if (!step([&] { return registry.KeyExists(kWorkshopKey); })) {
      step([&] { TellWithoutIcon("Microsoft HTML Help WorkShop must be installed"); });
      return;
    }
    const std::string folder = step([&] { return InstallFolder(registry); });
    if (!folder.empty()) {
      Globals().compiler_path = JoinPath(folder, Globals().compiler_file_name);
      found = step([&] { return TheServices().files->FileExists(Globals().compiler_path); });
      if (found) return;
    }
    found = step([&] { return SelectCompiler(); });
  });
}

bool frmMain::SelectCompiler() {
  return Procedure<bool>("Kestrel.frmMain.SelectCompiler", [&](Steps& step, bool& selected) {
    FileDialogParameters dialog{.FileName = "*.EXE",
                                .FileTitle = "Microsoft HTML Help Workshop compiler",
                                .HideReadOnly = true,
                                .Filter = "Applications (*.EXE)|*.EXE",
                                .FilterIndex = 1,
                                .DlgTitle = "Select Microsoft HTML Help WorkShop hhc.exe file",
                                .Owner = Window()};
    if (!step([&] { return VBGetOpenFileName(&dialog); })) return;

    const std::string& path = dialog.FileName;
    // Case counts on purpose: "HHC.EXE" is refused.
    if (GetFileName(path) != Globals().compiler_file_name) {
      step([&] { TellWithoutIcon("Wrong file name!"); });
      return;
    }
    Globals().compiler_path = path;
    selected = true;

    const MessageAnswer answer = step(MessageAnswer::kNo, [&] {
      return TheServices().desktop->ShowMessage(
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
}

}  // namespace scrivo
