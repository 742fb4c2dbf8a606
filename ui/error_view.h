#pragma once

#include <string>

#include "ui/button_strip.h"

namespace scrivo {

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

}  // namespace scrivo
