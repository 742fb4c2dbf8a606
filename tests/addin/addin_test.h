#pragma once

#include <memory>
#include <string>

#include "addin/connect.h"
#include "compiler/frm_hhc.h"
#include "decompile/frm_decompile.h"
#include "generator/frm_main.h"
#include "platform/settings.h"
#include "tests/doubles/fake_addin_host.h"
#include "tests/doubles/fake_form_views.h"
#include "tests/doubles/fake_services.h"
#include "tests/doubles/memory_site.h"

namespace scrivo {

// A test of the add-in in a host with the bars "Tools" and "Standard", with Windows' path rules.
class AddinTest : public WithFakeServices {
 protected:
  AddinTest() {
    Globals() = GlobalState(PathStyle::kWindows);
    Globals().views = views;
    host->bars = {{"Tools", std::make_shared<FakeControl>()},
                  {"Standard", std::make_shared<FakeControl>()}};
    system->module_folder = "C:\\Scrivo";
  }
  ~AddinTest() override {
    frmMain::Unload();
    frmDecompile::Unload();
    frmHHC::Unload();
    Globals() = GlobalState();
  }

  void ConnectWith(std::int32_t mode) { connect->AddinInstance_OnConnection(host, mode, instance); }
  FakeControl& Tools() { return *host->bars["Tools"]; }
  FakeControl& Standard() { return *host->bars["Standard"]; }
  // The popup's button with this caption.
  FakeControl& Button(FakeControl& bar, const std::string& caption) {
    return *bar.Child("Scrivo")->Child(caption);
  }

  std::shared_ptr<FakeAddinHost> host = std::make_shared<FakeAddinHost>();
  std::shared_ptr<FakeAddInInstance> instance = std::make_shared<FakeAddInInstance>();
  std::shared_ptr<FakeFormViews> views = std::make_shared<FakeFormViews>();
  std::unique_ptr<Connect> connect = std::make_unique<Connect>();
  MemorySite site;
};

}  // namespace scrivo
