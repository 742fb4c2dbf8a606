#pragma once

#include <memory>
#include <string>

#include "system/desktop.h"
#include "ui/button_strip.h"
#include "ui/item_panel.h"

namespace scrivo {

// What a compiler run shows itself through: a window, a terminal or a test.
class RunView {
 public:
  virtual ~RunView() = default;

  // Shows the window without waiting for it to be closed.
  virtual void ShowModeless() = 0;
  // The hourglass while true.
  virtual void ShowBusy(bool busy) = 0;
  virtual void EnableClose(bool enabled) = 0;
  // The progress bar: its text and how much of it is filled, 0 to 100.
  virtual void SetProgress(const std::string& caption, int flood_percent) = 0;
  virtual void ReplaceTranscript(const std::string& text) = 0;
  // Adds to the end of the transcript; the cost must not grow with what is already there. Of a
  // flood the view may hold back some, for a while.
  virtual void AppendTranscript(const std::string& text) = 0;
  // Puts what was held back on view, since nothing more may come for long.
  virtual void ShowHeldBack() = 0;
  virtual void Repaint() = 0;
};

// What the user does to the error dialog, as its presenter hears it. No member throws.
class ErrorViewEvents {
 public:
  virtual ~ErrorViewEvents() = default;

  // The dialog has become the active window.
  virtual void Activated() = 0;
  virtual void ButtonClicked(const std::string& key) = 0;
};

// What the error dialog shows itself through. The buttons belong to the presenter and outlive it.
class ErrorView {
 public:
  virtual ~ErrorView() = default;

  // The text of the title band.
  virtual void SetTitle(const std::string& caption) = 0;
  // The text of the message box; the user may mark, copy and edit it.
  virtual void SetMessage(const std::string& text) = 0;
  virtual std::string Message() = 0;
  // The presenter has added or removed buttons, or switched them on or off.
  virtual void ShowButtons() = 0;
  // Shows the dialog and returns when it was hidden or closed.
  virtual void ShowModal() = 0;
  virtual void Hide() = 0;
};

// What the user does to a dialog of parameters, as its presenter hears it. No member throws.
class ParameterViewEvents {
 public:
  virtual ~ParameterViewEvents() = default;

  // The dialog has been shown, or is active again after another form of the add-in. A return from
  // another program or a message box is not told: restoring the place would undo the user's move.
  virtual void Activated() = 0;
  // The dialog's sizing container has a new size; widths of its parts in twips. The view then
  // takes the widths of the panel's edit parts and of the strip's spacer from their data.
  virtual void Resized(float strip_width, float panel_width) = 0;
  virtual void ButtonClicked(const std::string& key) = 0;
  // The row's text or check mark, already stored in the panel, is a new one.
  virtual void ItemChanged(const std::string& key) = 0;
  // The browse button of a row.
  virtual void ItemButtonClicked(const std::string& key) = 0;
  // The window's own close box. The view may be destroyed before this returns.
  virtual void CloseRequested() = 0;
};

// What the compile and the decompile dialog are shown through: a window or a test. It shows the
// rows of an ItemPanel and a ButtonStrip that belong to the presenter and outlive it. Measures are
// in twips (1440 to the inch), places relative to the screen.
class ParameterView {
 public:
  virtual ~ParameterView() = default;

  // Shows the dialog and returns when it was hidden or closed.
  virtual void ShowModal() = 0;
  virtual void Hide() = 0;
  // Takes the window from the screen for good; a ShowModal under way returns.
  virtual void Close() = 0;
  // The system's window, made now (hidden) if there is none yet.
  virtual WindowHandle Window() = 0;

  virtual float Left() = 0;
  virtual void Left(float twips) = 0;
  virtual float Top() = 0;
  virtual void Top(float twips) = 0;
  virtual float Width() = 0;
  virtual void Width(float twips) = 0;
  virtual float Height() = 0;
  virtual void Height(float twips) = 0;

  // While false the dialog stands still: it takes no click and no key.
  virtual void Enable(bool enabled) = 0;

  // The presenter has changed this row; show it anew.
  virtual void ShowItem(const std::string& key) = 0;
};

// Makes the views that this program shows its forms through. Set once by the entry point.
class FormViews {
 public:
  virtual ~FormViews() = default;

  virtual std::unique_ptr<RunView> MakeRunView() = 0;
  // The window of the compile dialog, hidden; null in a program without windows. All three
  // arguments outlive it.
  virtual std::unique_ptr<ParameterView> MakeCompileView(ParameterViewEvents&, ItemPanel&,
                                                         ButtonStrip&) {
    return nullptr;
  }
  // The window of the decompile dialog, as above.
  virtual std::unique_ptr<ParameterView> MakeDecompileView(ParameterViewEvents&, ItemPanel&,
                                                           ButtonStrip&) {
    return nullptr;
  }
  // The window of the error dialog, hidden; null in a program without windows.
  virtual std::unique_ptr<ErrorView> MakeErrorView(ErrorViewEvents&, ButtonStrip&) {
    return nullptr;
  }
};

}  // namespace scrivo
