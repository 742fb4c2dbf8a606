#pragma once

#include <memory>
#include <string>

#include "ui/error_view.h"
#include "ui/main_view.h"

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

// Makes the views of this program. Set once by the entry point.
class ViewFactory {
 public:
  virtual ~ViewFactory() = default;

  virtual std::unique_ptr<RunView> MakeRunView() = 0;
  // The window of the compile dialog, hidden; null in a program without windows. All three
  // arguments outlive it.
  virtual std::unique_ptr<MainView> MakeMainView(MainViewEvents& events, ItemPanel& panel,
                                                 ButtonStrip& strip);
  // The window of the decompile dialog, as above.
  virtual std::unique_ptr<MainView> MakeDecompileView(MainViewEvents& events, ItemPanel& panel,
                                                      ButtonStrip& strip);
  // The window of the error dialog, hidden; null in a program without windows.
  virtual std::unique_ptr<ErrorView> MakeErrorView(ErrorViewEvents& events, ButtonStrip& strip);
};

}  // namespace scrivo
