#pragma once

#include <string>

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

}  // namespace scrivo
