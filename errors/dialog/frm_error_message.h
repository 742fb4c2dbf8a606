#pragma once

#include <memory>
#include <string>

#include "errors/error_handler.h"
#include "ui/button_strip.h"
#include "ui/form_views.h"

namespace scrivo {

// The dialog that shows one error report, asks whether to abort, retry or ignore, and offers to
// send the report to support. It is loaded, filled, shown once and thrown away; Tag then tells
// which button did that, by its key.
class frmErrorMessage : private ErrorViewEvents {
 public:
  // Shows itself through what Globals().views makes.
  frmErrorMessage();

  // The support mail address, "" for none: there is no "Send to support" button then.
  void SupportMail(const std::string& address) { support_mail_ = address; }
  // The text box's text. Writing it adds a line with the host's version when a host is known;
  // failures of that are ignored.
  std::string ErrorMessage();
  void ErrorMessage(const std::string& text);

  // Returns when the user has answered or closed the dialog.
  void ShowModal();
  // "ABORT", "RETRY", "IGNORE", or "" when the dialog was closed otherwise.
  std::string Tag() const { return tag_; }

  ButtonStrip& suiButtons() { return buttons_; }

 private:
  void Activated() override;
  void ButtonClicked(const std::string& key) override;
  void SendToSupport();

  std::string support_mail_;
  std::string tag_;
  std::string title_;  // caption of the title item "TITLE"
  ButtonStrip buttons_;
  std::unique_ptr<ErrorView> view_;
};

// The address that opens a new mail to support: "mailto:", the subject and the report between two
// rulers. Only line ends and tabs of the report are encoded, on purpose; a mail program may cut
// the text at another character.
std::string SupportMailAddress(const std::string& support_mail, const std::string& subject,
                               const std::string& report);

// The error handler's door to the dialog.
class ErrorMessageDialog : public ErrorDialog {
 public:
  std::string Ask(const std::string& report, const std::string& support_mail) override;
};

}  // namespace scrivo
