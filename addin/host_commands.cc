// Connect's commands: what the buttons stand for.

#include "addin/connect.h"
#include "addin/product.h"
#include "decompile/frm_decompile.h"
#include "errors/frame.h"
#include "generator/frm_main.h"
#include "platform/globals.h"
#include "platform/shell.h"

namespace scrivo {

void Connect::ShowKestrel() {
  bool ready = false;
  IgnoringErrors([&] { ready = frmMain::Load()->BuildUI(); });
  // Preparing may show messages, during which the host may disconnect the add-in.
  if (ready && frmMain::IsLoaded()) IgnoringErrors([] { frmMain::Load()->ShowModal(); });
  IgnoringErrors([] { frmMain::Unload(); });
}

void Connect::HideKestrel() {
  IgnoringErrors([] { frmMain::Load()->Hide(); });
}

void Connect::ShowDecompile() {
  IgnoringErrors([] { frmDecompile::Load()->ShowModal(); });
}

void Connect::HideDecompile() {
  IgnoringErrors([] { frmDecompile::Load()->Hide(); });
}

void Connect::ShowExample() {
  std::string path;
  IgnoringErrors([&] { path = GetSpecialFolder(frmMain::Load()->Window(), kDocumentsFolder); });
  path += Separator(Globals().path_style) + std::string("Scrivo Builder sample web");
  std::shared_ptr<OpenedWeb> web;
  IgnoringErrors([&] { web = Host().OpenWeb(path, "", "", 0); });
  if (web) IgnoringErrors([&] { web->Activate(); });
}

void Connect::OpenHomePage() {
  IgnoringErrors([] { CShell().OpenUrl(kHomePage); });
}

void Connect::CheckVersion() {
  std::shared_ptr<VersionChecker> checker;
  IgnoringErrors([&] { checker = make_version_checker_(); });
  if (!checker) return;
  IgnoringErrors([&] { checker->ProductName("ScrivoBuilder"); });
  IgnoringErrors([&] { checker->Server(kWebServer); });
  IgnoringErrors([&] { checker->Result(); });  // read, and not used
  IgnoringErrors([&] { checker->Check(); });
}

void Connect::cbBtnKestrel_Click(CommandBarControl&, bool&) { ShowKestrel(); }
void Connect::cbBtnDecompile_Click(CommandBarControl&, bool&) { ShowDecompile(); }
void Connect::cbBtnHelp_Click(CommandBarControl&, bool&) { ShowHelp(); }
void Connect::cbBtnHome_Click(CommandBarControl&, bool&) { OpenHomePage(); }
void Connect::cbBtnCheckVersion_Click(CommandBarControl&, bool&) { CheckVersion(); }
void Connect::cbBtnOpenSample_Click(CommandBarControl&, bool&) { ShowExample(); }
void Connect::cbBtnPanelKestrel_Click(CommandBarControl&, bool&) { ShowKestrel(); }
void Connect::cbBtnPanelDecompile_Click(CommandBarControl&, bool&) { ShowDecompile(); }
void Connect::cbBtnPanelHelp_Click(CommandBarControl&, bool&) { ShowHelp(); }
void Connect::cbBtnPanelHome_Click(CommandBarControl&, bool&) { OpenHomePage(); }
void Connect::cbBtnPanelCheckVersion_Click(CommandBarControl&, bool&) { CheckVersion(); }
void Connect::cbBtnPanelOpenSample_Click(CommandBarControl&, bool&) { ShowExample(); }

}  // namespace scrivo
