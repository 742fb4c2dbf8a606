// The values of the compile dialog: frmMain::BuildUI, which fills them, and their saving.

#include <algorithm>
#include <unordered_set>

#include "errors/error_handler.h"
#include "errors/frame.h"
#include "generator/frm_main.h"
#include "platform/globals.h"
#include "platform/paths.h"
#include "platform/settings.h"
#include "system/error.h"
#include "system/services.h"
#include "ui/number_text.h"

namespace scrivo {
namespace {

constexpr float kSeparatorSize = 30;
constexpr int kListEntryParameter = 900;

struct CheckBoxDefault {
  const char* key;
  const char* saved_as;
};
constexpr CheckBoxDefault kCheckBoxes[] = {
    {"USEKEYWORDS", "1"}, {"FAVORITES", "1"},        {"VIEWRESULT", "1"},
    {"CLOSELOG", "1"},    {"LEAVEPROJECTFILE", "0"},
};

// The host's open web; null when there is none.
std::shared_ptr<SiteWeb> CurrentWeb() {
  const std::shared_ptr<HostApplication> host = Globals().HostApplication;
  if (!host) throw Error(kObjectNotSet, "Scrivo.frmMain", "No host application is connected");
  return host->CurrentWeb();
}

std::string CheckText(const Item& box) { return box.checked ? "1" : "0"; }

HostApplication& ConnectedHost() {
  const std::shared_ptr<HostApplication>& host = Globals().HostApplication;
  if (!host) throw Error(kObjectNotSet, "Scrivo", "No host application is connected");
  return *host;
}

}  // namespace

SiteWeb& frmMain::OpenWeb() const {
  if (!web_) throw Error(kObjectNotSet, "Scrivo.frmMain", "No web is open");
  return *web_;
}

std::string frmMain::Setting(const std::string& key, const std::string& value_when_missing) const {
  return GetSetting(kComponentTitle, OpenWeb().Url(), key, value_when_missing);
}

bool frmMain::BuildUI() {
  return Procedure<bool>("Kestrel.frmMain.BuildUI", [&](Steps& step, bool& ready) {
    step([&] { web_ = CurrentWeb(); });
    if (!web_) {
      step([&] {
        TheServices().desktop->ShowMessage("Open site first", kInformation | kOkOnly,
                                           kComponentTitle);
      });
      return;
    }
    step([&] {
      std::string address = web_->Url();
      Globals().working_folder = UrlToPath(address);
    });
    step([&] { params_["SEP0"].size = kSeparatorSize; });
    step([&] { params_["TITLE"].text = Setting("TITLE", DefaultTitle(*web_)); });
    step([&] { params_["SEP1"].size = kSeparatorSize; });
    FillDefaultPages(step);
    step([&] { params_["SEP2"].size = kSeparatorSize; });
    step([&] {
      params_["OUTPUT"].text = Setting(
          "OUTPUT", JoinPath(Globals().working_folder, DefaultOutputName(params_["TITLE"].text)));
    });
    step([&] { params_["SEP3"].size = kSeparatorSize; });
    for (const CheckBoxDefault& box : kCheckBoxes) {
      step([&] { params_[box.key].checked = NumberFromText(Setting(box.key, box.saved_as)) == 1; });
    }
    if (view_) {
      for (const Item& row : params_.Rows()) {
        step([&] { view_->ShowItem(row.key); });
      }
    }
    ready = true;
  });
}

// Statements of BuildUI.
void frmMain::FillDefaultPages(Steps& step) {
  Item& item = params_["DEFAULTPAGE"];
  item.text.clear();
  item.data.clear();
  item.entries.clear();

  std::string chosen = step([&] { return Setting("DEFAULTPAGE", ""); });
  const SiteNodes nodes = step([&] { return AllNodes(); });
  std::unordered_set<std::string> listed;
  for (const std::shared_ptr<SiteNode>& node : nodes) {
    if (!step([&] { return node->File() != nullptr; })) continue;
    step([&] {
      const std::string address = node->Url();
      const std::string label = node->Label();
      if (chosen.empty() || chosen == address) {
        item.text = label;
        item.data = address;
        chosen = address;
      }
      if (listed.insert(address).second) {
        item.entries.push_back({label, address, kListEntryParameter});
      }
    });
  }
}

void frmMain::SaveParameters() {
  const auto save = [&](const char* key, const auto& text) {
    IgnoringErrors([&] { SaveSetting(kComponentTitle, OpenWeb().Url(), key, text()); });
  };
  save("LEFT", [&] { return TextOfSingle(View().Left()); });
  save("HEIGHT", [&] { return TextOfSingle(View().Height()); });
  save("TOP", [&] { return TextOfSingle(View().Top()); });
  save("WIDTH", [&] { return TextOfSingle(View().Width()); });
  save("TITLE", [&] { return params_["TITLE"].text; });
  save("USEKEYWORDS", [&] { return CheckText(params_["USEKEYWORDS"]); });
  save("FAVORITES", [&] { return CheckText(params_["FAVORITES"]); });
  save("DEFAULTPAGE", [&] { return params_["DEFAULTPAGE"].data; });
  save("VIEWRESULT", [&] { return CheckText(params_["VIEWRESULT"]); });
  save("OUTPUT", [&] { return params_["OUTPUT"].text; });
  save("CLOSELOG", [&] { return CheckText(params_["CLOSELOG"]); });
  save("LEAVEPROJECTFILE", [&] { return CheckText(params_["LEAVEPROJECTFILE"]); });
}

std::string frmMain::LocationOf(const std::string& address) const {
  return PageLocation(OpenWeb(), address);
}

Locator frmMain::Locations() const {
  return [this](const std::string& address) { return LocationOf(address); };
}

CompileJob frmMain::Job() {
  CompileJob job;
  job.title = params_["TITLE"].text;
  job.output = params_["OUTPUT"].text;
  job.default_page = params_["DEFAULTPAGE"].data;
  job.use_index = params_["USEKEYWORDS"].checked;
  job.favorites = params_["FAVORITES"].checked;
  job.keep_project = params_["LEAVEPROJECTFILE"].checked;
  return job;
}

SiteFiles frmMain::AllFiles() {
  return Procedure<SiteFiles>("Kestrel.frmMain.AllFiles", [&](Steps& step, SiteFiles& files) {
    files = scrivo::AllFiles(OpenWeb(), [&](const auto& statement) { step(statement); });
  });
}

SiteNodes frmMain::AllNodes() {
  return Procedure<SiteNodes>("Kestrel.frmMain.AllNodes", [&](Steps& step, SiteNodes& nodes) {
    nodes = scrivo::AllNodes(OpenWeb(), [&](const auto& statement) { step(statement); });
  });
}

std::string PageLocation(SiteWeb& web, const std::string& address) {
  return ConnectedHost().RelativeLocation(web, address);
}

std::string RelativeLocation(const std::string& address) {
  std::string location;
  IgnoringErrors([&] {
    const std::shared_ptr<SiteWeb> web = ConnectedHost().CurrentWeb();
    if (web) location = PageLocation(*web, address);
  });
  return location;
}

}  // namespace scrivo
