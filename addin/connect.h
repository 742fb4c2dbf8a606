#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "addin/addin_host.h"
#include "system/error.h"

namespace scrivo {

// The object that the host creates: it is told when the add-in is connected and disconnected, puts
// the add-in's buttons on the host's command bars, and carries out what they stand for. Every
// public operation runs with errors ignored, statement by statement: a failing statement is
// skipped, nothing is reported, nothing is thrown.
class Connect {
 public:
  // Makes the version-check component; fails or gives null when it is not installed.
  using VersionCheckerFactory = std::function<std::shared_ptr<VersionChecker>()>;

  explicit Connect(VersionCheckerFactory make_version_checker = {});
  Connect(const Connect&) = delete;
  Connect& operator=(const Connect&) = delete;

  void HideKestrel();
  // Shows the compile dialog, if a web is open, until the user closes it.
  void ShowKestrel();
  // Shows the decompile dialog until the user closes it; it is not unloaded here.
  void ShowDecompile();
  void HideDecompile();
  // Opens the sample web from the user's documents folder in the host.
  void ShowExample();

  // `ConnectMode` 2 (started by another program) shows the compile dialog at once; every other
  // mode puts the buttons on the host's command bars.
  void AddinInstance_OnConnection(const std::shared_ptr<AddinHost>& Application,
                                  std::int32_t ConnectMode,
                                  const std::shared_ptr<AddInInstance>& AddInInst);
  void AddinInstance_OnDisconnection();

  // One for each button reference. CancelDefault is left as it is.
  void cbBtnKestrel_Click(CommandBarControl& Ctrl, bool& CancelDefault);
  void cbBtnDecompile_Click(CommandBarControl& Ctrl, bool& CancelDefault);
  void cbBtnHelp_Click(CommandBarControl& Ctrl, bool& CancelDefault);
  void cbBtnHome_Click(CommandBarControl& Ctrl, bool& CancelDefault);
  void cbBtnCheckVersion_Click(CommandBarControl& Ctrl, bool& CancelDefault);
  void cbBtnOpenSample_Click(CommandBarControl& Ctrl, bool& CancelDefault);
  void cbBtnPanelKestrel_Click(CommandBarControl& Ctrl, bool& CancelDefault);
  void cbBtnPanelDecompile_Click(CommandBarControl& Ctrl, bool& CancelDefault);
  void cbBtnPanelHelp_Click(CommandBarControl& Ctrl, bool& CancelDefault);
  void cbBtnPanelHome_Click(CommandBarControl& Ctrl, bool& CancelDefault);
  void cbBtnPanelCheckVersion_Click(CommandBarControl& Ctrl, bool& CancelDefault);
  void cbBtnPanelOpenSample_Click(CommandBarControl& Ctrl, bool& CancelDefault);

  // The buttons whose clicks are heard. The two for the version check never get a button, on
  // purpose: it cannot be reached from the host.
  struct ButtonReferences {
    std::shared_ptr<CommandBarControl> cbBtnKestrel, cbBtnDecompile, cbBtnHelp, cbBtnHome,
        cbBtnCheckVersion, cbBtnOpenSample, cbBtnPanelKestrel, cbBtnPanelDecompile, cbBtnPanelHelp,
        cbBtnPanelHome, cbBtnPanelCheckVersion, cbBtnPanelOpenSample;
  };
  const ButtonReferences& Buttons() const { return buttons_; }

 private:
  struct ButtonRow;
  static const ButtonRow kButtonRows[];

  AddinHost& Host() const;
  void SwitchTracing();
  void CreateToolsMenu(AddInInstance& AddInInst);
  void CreateStandardToolbarPopup(AddInInstance& AddInInst);
  void OpenHomePage();
  void CheckVersion();

  VersionCheckerFactory make_version_checker_;
  std::shared_ptr<AddinHost> host_;
  ButtonReferences buttons_;
};

// The object that the host was asked for. Raises Error (kObjectNotSet) where it has given none, as
// some hosts do instead of failing.
template <typename Object>
Object& Needed(const std::shared_ptr<Object>& object) {
  if (!object) throw Error(kObjectNotSet, "Scrivo.Connect", "The host has given no object");
  return *object;
}

}  // namespace scrivo
