// Connection to the host and disconnection.

#include "addin/connect.h"

#include <cmath>
#include <limits>

#include "addin/product.h"
#include "compiler/frm_hhc.h"
#include "errors/dialog/frm_error_message.h"
#include "errors/error_handler.h"
#include "errors/frame.h"
#include "generator/frm_main.h"
#include "platform/globals.h"
#include "platform/settings.h"
#include "system/error.h"
#include "system/services.h"
#include "ui/number_text.h"

namespace scrivo {
namespace {

constexpr std::int32_t kConnectExternal = 2;

void Tell(const std::string& text) {
  TheServices().desktop->ShowMessage(text, kOkOnly, kComponentTitle);
}

// The "Trace" setting as an integer. A text that is not a number fails.
std::int32_t TraceSetting() {
  const double number =
      std::nearbyint(NumberFromText(GetSetting(kComponentTitle, "Settings", "Trace", "0")));
  if (std::abs(number) > std::numeric_limits<std::int32_t>::max()) {
    throw Error(kOverflow, "Scrivo.Connect", "Overflow");
  }
  return static_cast<std::int32_t>(number);
}

}  // namespace

Connect::Connect(VersionCheckerFactory make_version_checker)
    : make_version_checker_(std::move(make_version_checker)) {}

AddinHost& Connect::Host() const { return Needed(host_); }

void Connect::AddinInstance_OnConnection(const std::shared_ptr<AddinHost>& Application,
                                         std::int32_t ConnectMode,
                                         const std::shared_ptr<AddInInstance>& AddInInst) {
  // The mutex is a marker that lasts as long as the host; nobody waits for it.
  IgnoringErrors([] { TheServices().system->HoldMutex("Scrivo"); });
  host_ = Application;
  Globals().HostApplication = Application;
  Globals().ConnectInstance = this;
  Globals().help_owner = [] { return frmMain::Load()->Window(); };
  IgnoringErrors([] {
    ErrorHandler().Init(ehaErrorDialog, "Error Log.txt", true, false, trfLogFile,
                        "Tracing Log.txt");
  });
  IgnoringErrors([] { ErrorHandler().Dialog(std::make_shared<ErrorMessageDialog>()); });
  IgnoringErrors([] { ErrorHandler().SupportMail(kSupportMail); });
  IgnoringErrors([&] { SwitchTracing(); });
  if (ConnectMode == kConnectExternal) {
    ShowKestrel();
    return;
  }
  IgnoringErrors([&] { CreateToolsMenu(Needed(AddInInst)); });
  IgnoringErrors([&] { CreateStandardToolbarPopup(Needed(AddInInst)); });
}

void Connect::SwitchTracing() {
  if (TraceSetting() == 0) return;
  CErrorHandler& handler = ErrorHandler();
  IgnoringErrors([] { Tell("Trace enabled"); });
  IgnoringErrors([&] { handler.TracingEnabled(true); });
  IgnoringErrors([&] { handler.TracingFlags(trfLogFile); });
  IgnoringErrors([&] {
    handler.TracingLogFile(TheServices().system->ModuleFolder() + Separator(Globals().path_style) +
                           "Scrivo.trace");
  });
  IgnoringErrors([&] { Tell(handler.TracingLogFile()); });
}

void Connect::AddinInstance_OnDisconnection() {
  // Only the menu's popup goes; the one on the toolbar is temporary and ends with the host.
  IgnoringErrors([&] {
    const std::shared_ptr<CommandBar> tools = Host().Bar("Tools");
    Needed(Needed(Needed(tools).Controls()).Item("Scrivo")).Delete();
  });
  buttons_.cbBtnKestrel = nullptr;
  buttons_.cbBtnDecompile = nullptr;
  buttons_.cbBtnHelp = nullptr;
  buttons_.cbBtnOpenSample = nullptr;
  buttons_.cbBtnPanelKestrel = nullptr;
  buttons_.cbBtnPanelDecompile = nullptr;
  buttons_.cbBtnPanelHelp = nullptr;
  buttons_.cbBtnPanelOpenSample = nullptr;
  // The references to the home page and version check buttons are left as they are, on purpose;
  // they go with this object.
  host_ = nullptr;
  Globals().HostApplication = nullptr;
  Globals().ConnectInstance = nullptr;
  Globals().help_owner = nullptr;
  // In the middle of a run this leaves the run window, which the run still needs; whoever started
  // the run, or the user, closes it afterwards.
  IgnoringErrors([] { frmHHC::Unload(); });
  IgnoringErrors([] { frmMain::Unload(); });
}

}  // namespace scrivo
