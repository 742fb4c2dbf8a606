// The compile dialog as a window: its life, its events and its layout.

#include "generator/frm_main.h"

#include <algorithm>
#include <utility>

#include "errors/frame.h"
#include "platform/common_dialog.h"
#include "platform/globals.h"
#include "platform/shell.h"
#include "system/error.h"
#include "ui/form_views.h"
#include "ui/number_text.h"

namespace scrivo {
namespace {

// The strip's width that is no item's: borders and gaps, in twips.
constexpr float kStripMargin = 90;
constexpr float kNarrowestSpacer = 15;
// What the panel's rows need beside their edit parts, in twips: the caption, the browse button.
constexpr float kBesideTitle = 780;
constexpr float kBesideDefaultPage = 150;
constexpr float kBesideOutput = 315;

Item Row(std::string key, std::string caption, ItemKind kind) {
  return {.key = std::move(key), .caption = std::move(caption), .kind = kind};
}

std::vector<Item> ParameterRows() {
  return {
      Row("SEP0", "", ItemKind::kSeparator),
      Row("TITLE", "Title:", ItemKind::kText),
      Row("SEP1", "", ItemKind::kSeparator),
      Row("DEFAULTPAGE", "Default page:", ItemKind::kList),
      Row("SEP2", "", ItemKind::kSeparator),
      Row("OUTPUT", "Output file:", ItemKind::kTextWithButton),
      Row("SEP3", "", ItemKind::kSeparator),
      Row("OPTIONS", "Options", ItemKind::kGroup),
      Row("USEKEYWORDS", "Generate index by keywords", ItemKind::kCheckBox),
      Row("FAVORITES", "Favorites tab", ItemKind::kCheckBox),
      Row("VIEWRESULT", "Open CHM after compilation", ItemKind::kCheckBox),
      Row("CLOSELOG", "Don't close compilation log on success", ItemKind::kCheckBox),
      Row("LEAVEPROJECTFILE", "Don't remove HTML Workshop project file", ItemKind::kCheckBox),
  };
}

std::vector<StripItem> Buttons() {
  return {
      {.key = "SPACE"},
      {.key = "GENERATE", .caption = "Generate", .tip = "Launch Help Workshop to compile help"},
      {.key = "HELP", .caption = "Help", .tip = "Show ScrivoBuilder help file"},
      {.key = "CLOSE", .caption = "Close", .tip = "Close ScrivoBuilder window"},
  };
}

std::shared_ptr<frmMain>& DefaultInstance() {
  static std::shared_ptr<frmMain> form;
  return form;
}

}  // namespace

std::shared_ptr<frmMain> frmMain::Load() {
  if (!DefaultInstance()) DefaultInstance() = std::make_shared<frmMain>();
  return DefaultInstance();
}

bool frmMain::IsLoaded() { return DefaultInstance() != nullptr; }

void frmMain::Unload() {
  const std::shared_ptr<frmMain> form = std::exchange(DefaultInstance(), nullptr);
  if (!form) return;
  form->SaveParameters();
  if (form->view_) IgnoringErrors([&] { form->view_->Close(); });
}

frmMain::frmMain() : params_(ParameterRows()), buttons_(Buttons()) {
  if (Globals().views) view_ = Globals().views->MakeCompileView(*this, params_, buttons_);
}

void frmMain::ShowModal() {
  const std::shared_ptr<frmMain> alive = shared_from_this();  // the user may close the dialog
  if (view_) IgnoringErrors([&] { view_->ShowModal(); });
}

void frmMain::Hide() {
  if (view_) IgnoringErrors([&] { view_->Hide(); });
}

WindowHandle frmMain::Window() {
  WindowHandle window = 0;
  if (view_) IgnoringErrors([&] { window = view_->Window(); });
  return window;
}

ParameterView& frmMain::View() const {
  if (!view_) throw Error(kObjectNotSet, "Scrivo.frmMain", "The dialog has no window");
  return *view_;
}

void frmMain::Activated() {
  const auto saved = [&](const char* key, float current) {
    return static_cast<float>(NumberFromText(Setting(key, TextOfSingle(current))));
  };
  IgnoringErrors([&] { View().Left(saved("LEFT", View().Left())); });
  IgnoringErrors([&] { View().Height(saved("HEIGHT", View().Height())); });
  IgnoringErrors([&] { View().Top(saved("TOP", View().Top())); });
  IgnoringErrors([&] { View().Width(saved("WIDTH", View().Width())); });
}

void frmMain::Resized(float strip_width, float panel_width) {
  IgnoringErrors([&] {
    StripItem& space = buttons_["SPACE"];
    const float width = strip_width - buttons_.ItemsWidth() + space.width - kStripMargin;
    space.width = std::max(width, kNarrowestSpacer);
  });
  IgnoringErrors([&] { params_["TITLE"].edit_width = panel_width - kBesideTitle; });
  IgnoringErrors([&] { params_["DEFAULTPAGE"].edit_width = panel_width - kBesideDefaultPage; });
  IgnoringErrors([&] { params_["OUTPUT"].edit_width = panel_width - kBesideOutput; });
}

void frmMain::ButtonClicked(const std::string& key) {
  IgnoringErrors([&] {
    if (key == "GENERATE") Generate();
    if (key == "HELP") ShowHelp();
    if (key == "CLOSE") Unload();
  });
}

void frmMain::ItemChanged(const std::string& key) {
  if (key != "DEFAULTPAGE") return;
  IgnoringErrors([&] {
    Item& item = params_[key];
    const auto entry =
        std::find_if(item.entries.begin(), item.entries.end(),
                     [&](const ListEntry& candidate) { return candidate.text == item.text; });
    if (entry != item.entries.end()) item.data = entry->key;
  });
}

void frmMain::ItemButtonClicked(const std::string& key) {
  if (key == "OUTPUT") IgnoringErrors([&] { ChooseOutput(); });
}

void frmMain::CloseRequested() { Unload(); }

void frmMain::ChooseOutput() {
  FileDialogParameters dialog{.FileName = params_["OUTPUT"].text,
                              .FileMustExist = false,
                              .HideReadOnly = true,
                              .Filter = "Microsoft HTML Help (*.CHM)|*.CHM|All(*.*)|*.*",
                              .FilterIndex = 1,
                              .DlgTitle = "Output file",
                              .DefaultExt = "*.CHM",
                              .Owner = Window(),
                              .Save = true};
  if (!VBGetOpenFileName(&dialog)) return;
  params_["OUTPUT"].text = dialog.FileName;
  if (view_) view_->ShowItem("OUTPUT");
}

}  // namespace scrivo
