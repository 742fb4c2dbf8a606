#pragma once

#include <memory>
#include <string>

#include "ui/button_strip.h"
#include "ui/form_views.h"
#include "ui/item_panel.h"

namespace scrivo {

// The dialog that takes a compiled help file apart: which file, into which folder. A presenter;
// what the user sees is what Globals().views makes, or nothing in a program without windows. Its
// values and place are remembered. It stays loaded when it is hidden, and is unloaded by "Close",
// by its close box and by every Decompile.
class frmDecompile : public std::enable_shared_from_this<frmDecompile>,
                     private ParameterViewEvents {
 public:
  // The one dialog; creates it, not shown, with the values saved last, when it is not loaded.
  static std::shared_ptr<frmDecompile> Load();
  static bool IsLoaded();
  // Saves place and values, closes the window and lets go of the dialog. Nothing happens when it
  // is not loaded.
  static void Unload();

  frmDecompile();
  frmDecompile(const frmDecompile&) = delete;
  frmDecompile& operator=(const frmDecompile&) = delete;

  // Shows the dialog until it is hidden or unloaded.
  void ShowModal();
  void Hide();

  // "FILE" and "DIR" (text), "TOFPSITE" (check box; shown and remembered, without effect).
  ItemPanel& suiParams() { return params_; }
  ButtonStrip& suiButtons() { return buttons_; }

  // Runs the viewer's decompile mode on "FILE" into the folder "DIR", made if need be, and unloads
  // the dialog in every case, also after a message about a wrong path. Errors go to the error
  // handler; an abort leaves the dialog as it is then.
  void Decompile();

 private:
  void Activated() override {}
  void Resized(float strip_width, float panel_width) override;
  void ButtonClicked(const std::string& key) override;
  void ItemChanged(const std::string&) override {}
  void ItemButtonClicked(const std::string& key) override;
  void CloseRequested() override;

  void Restore();
  void Save();
  void ChooseFile();
  void ChooseFolder();
  // False after telling the user what is wrong with the two paths.
  bool PathsAreUsable(class Steps& step);

  ItemPanel params_;
  ButtonStrip buttons_;
  std::shared_ptr<ParameterView> view_;  // null in a program without windows
};

}  // namespace scrivo
