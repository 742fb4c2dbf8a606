#include "decompile/frm_decompile.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "compiler/frm_hhc.h"
#include "errors/error_handler.h"
#include "errors/frame.h"
#include "platform/common_dialog.h"
#include "platform/globals.h"
#include "platform/settings.h"
#include "platform/shell.h"
#include "platform/temp_files.h"
#include "system/error.h"
#include "system/services.h"
#include "ui/form_views.h"
#include "ui/number_text.h"

namespace scrivo {
namespace {

constexpr char kSection[] = "Decompile";
// In twips: what the strip and the panel's rows need beside their spacer and edit parts.
constexpr float kStripMargin = 90, kNarrowestSpacer = 15, kBesideEdit = 315;

std::vector<Item> ParameterRows() {
  return {
      {.key = "SEP0", .caption = "", .kind = ItemKind::kSeparator, .size = 30},
      {.key = "FILE", .caption = "Input file:", .kind = ItemKind::kTextWithButton},
      {.key = "SEP1", .caption = "", .kind = ItemKind::kSeparator, .size = 30},
      {.key = "DIR", .caption = "Output folder:", .kind = ItemKind::kTextWithButton},
      {.key = "SEP2", .caption = "", .kind = ItemKind::kSeparator, .size = 30},
      {.key = "TOFPSITE",
       .caption = "Decompile into the open web site",
       .kind = ItemKind::kCheckBox},
  };
}

std::vector<StripItem> Buttons() {
  return {
      {.key = "SPACE"},
      {.key = "DECOMPILE", .caption = "Decompile", .tip = "Take the help file apart"},
      {.key = "HELP", .caption = "Help", .tip = "Show ScrivoBuilder help file"},
      {.key = "CLOSE", .caption = "Close", .tip = "Close this window"},
  };
}

std::shared_ptr<frmDecompile>& DefaultInstance() {
  static std::shared_ptr<frmDecompile> form;
  return form;
}

std::string Setting(const char* key, const std::string& value_when_missing) {
  return GetSetting(kComponentTitle, kSection, key, value_when_missing);
}

// A saved number; the default when the text that was saved is none.
double SavedNumber(const char* key, const std::string& default_text) {
  const std::string text = Setting(key, default_text);
  try {
    return NumberFromText(text);
  } catch (const Error&) {
    return NumberFromText(default_text);
  }
}

bool IsWord(const std::string& text, std::string_view small_word) {
  const auto small = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
  return std::equal(text.begin(), text.end(), small_word.begin(), small_word.end(),
                    [&](char a, char b) { return small(a) == b; });
}

// A saved Boolean: "True" or "False" in any case of the letters, or a number, where 0 is off; the
// default when the text that was saved is neither.
bool SavedBoolean(const char* key, const std::string& default_text) {
  const std::string text = Setting(key, default_text);
  if (IsWord(text, "true")) return true;
  if (IsWord(text, "false")) return false;
  return SavedNumber(key, default_text) != 0;
}

void Remember(const char* key, const std::string& value) {
  SaveSetting(kComponentTitle, kSection, key, value);
}

}  // namespace

std::shared_ptr<frmDecompile> frmDecompile::Load() {
  if (!DefaultInstance()) {
    DefaultInstance() = std::make_shared<frmDecompile>();
    DefaultInstance()->Restore();
  }
  return DefaultInstance();
}

bool frmDecompile::IsLoaded() { return DefaultInstance() != nullptr; }

void frmDecompile::Unload() {
  const std::shared_ptr<frmDecompile> form = std::exchange(DefaultInstance(), nullptr);
  if (!form) return;
  form->Save();
  if (form->view_) IgnoringErrors([&] { form->view_->Close(); });
}

frmDecompile::frmDecompile() : params_(ParameterRows()), buttons_(Buttons()) {
  if (Globals().views) view_ = Globals().views->MakeDecompileView(*this, params_, buttons_);
}

void frmDecompile::ShowModal() {
  const std::shared_ptr<frmDecompile> alive = shared_from_this();  // the user may close the dialog
  if (view_) IgnoringErrors([&] { view_->ShowModal(); });
}

void frmDecompile::Hide() {
  if (view_) IgnoringErrors([&] { view_->Hide(); });
}

void frmDecompile::Restore() {
  const auto saved = [](const char* key, float current) {
    return static_cast<float>(SavedNumber(key, TextOfSingle(current)));
  };
  Procedure("Kestrel.frmDecompile.Form_Load", [&](Steps& step) {
    if (view_) {
      step([&] { view_->Left(saved("LEFT", view_->Left())); });
      step([&] { view_->Top(saved("TOP", view_->Top())); });
      step([&] { view_->Width(saved("WIDTH", view_->Width())); });
      step([&] { view_->Height(saved("HEIGHT", view_->Height())); });
    }
    step([&] { params_["FILE"].text = Setting("FILE", ""); });
    step([&] { params_["DIR"].text = Setting("DIR", ""); });
    step([&] { params_["TOFPSITE"].checked = SavedBoolean("TOFPSITE", "1"); });
    if (!view_) return;
    for (const char* key : {"FILE", "DIR", "TOFPSITE"}) {
      step([&] { view_->ShowItem(key); });
    }
  });
}

void frmDecompile::Save() {
  Procedure("Kestrel.frmDecompile.Form_Unload", [&](Steps& step) {
    if (view_) {
      step([&] { Remember("LEFT", TextOfSingle(view_->Left())); });
      step([&] { Remember("HEIGHT", TextOfSingle(view_->Height())); });
      step([&] { Remember("TOP", TextOfSingle(view_->Top())); });
      step([&] { Remember("WIDTH", TextOfSingle(view_->Width())); });
    }
    step([&] { Remember("FILE", params_["FILE"].text); });
    step([&] { Remember("DIR", params_["DIR"].text); });
    step([&] { Remember("TOFPSITE", params_["TOFPSITE"].checked ? "1" : "0"); });
  });
}

void frmDecompile::Resized(float strip_width, float panel_width) {
  StripItem& space = buttons_["SPACE"];
  space.width =
      std::max(strip_width - buttons_.ItemsWidth() + space.width - kStripMargin, kNarrowestSpacer);
  for (const char* key : {"FILE", "DIR"}) params_[key].edit_width = panel_width - kBesideEdit;
}

void frmDecompile::ButtonClicked(const std::string& key) {
  Procedure("Kestrel.frmDecompile.suiButtons_ItemClick", [&](Steps& step) {
    if (key == "DECOMPILE") step([&] { Decompile(); });
    if (key == "HELP") step([&] { ShowHelp(); });
    if (key == "CLOSE") step([] { Unload(); });
  });
}

void frmDecompile::ItemButtonClicked(const std::string& key) {
  Procedure("Kestrel.frmDecompile.suiParams_ItemClick", [&](Steps& step) {
    if (key == "FILE") step([&] { ChooseFile(); });
    if (key == "DIR") step([&] { ChooseFolder(); });
  });
}

void frmDecompile::CloseRequested() { Unload(); }

void frmDecompile::ChooseFile() {
  FileDialogParameters dialog{.FileName = params_["FILE"].text,
                              .FileTitle = "Input file",
                              .FileMustExist = false,
                              .Filter = "Microsoft HTML Help (*.CHM)|*.CHM|All(*.*)|*.*",
                              .DlgTitle = "Select input file",
                              .DefaultExt = "*.CHM",
                              .Owner = view_ ? view_->Window() : kNoOwner};
  if (!VBGetOpenFileName(&dialog)) return;
  params_["FILE"].text = dialog.FileName;
  if (view_) view_->ShowItem("FILE");
}

void frmDecompile::ChooseFolder() {
  const std::string folder = BrowseFolder(view_ ? view_->Window() : 0, "Select output directory");
  if (folder.empty()) return;
  params_["DIR"].text = folder;
  if (view_) view_->ShowItem("DIR");
}

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
