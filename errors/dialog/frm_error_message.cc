#include "errors/dialog/frm_error_message.h"

#include "errors/error_handler.h"
#include "errors/frame.h"
#include "platform/globals.h"
#include "platform/shell.h"
#include "site/site.h"
#include "system/services.h"
#include "ui/form_views.h"

namespace scrivo {
namespace {

void ReplaceAll(std::string* text, const std::string& what, const std::string& by) {
  std::string result;
  std::size_t at = 0;
  for (std::size_t found; (found = text->find(what, at)) != std::string::npos;
       at = found + what.size()) {
    result.append(*text, at, found - at);
    result += by;
  }
  result.append(*text, at, std::string::npos);
  *text = std::move(result);
}

}  // namespace

std::string SupportMailAddress(const std::string& support_mail, const std::string& subject,
                               const std::string& report) {
  std::string body = report;
  ReplaceAll(&body, "\r\n", "%0A");
  ReplaceAll(&body, "\t", "%09");
  const std::string ruler(20, '-');
  body = "%0A%0A" + ruler + "%0A" + body + "%0A" + ruler;
  return "mailto:" + support_mail + "?subject=" + subject + "&body=" + body;
}

frmErrorMessage::frmErrorMessage()
    : buttons_({{"SPACER", "", ""},
                {"ABORT", "Abort", ""},
                {"RETRY", "Retry", ""},
                {"IGNORE", "Ignore", ""},
                {"MAIL", "Send to support", ""}}),
      view_(Globals().views->MakeErrorView(*this, buttons_)) {}

std::string frmErrorMessage::ErrorMessage() { return view_->Message(); }

void frmErrorMessage::ErrorMessage(const std::string& text) {
  IgnoringErrors([&] { view_->SetMessage(text); });
  IgnoringErrors([&] {
    if (const auto& host = Globals().HostApplication) {
      view_->SetMessage(view_->Message() + "\r\nFrontPage Version: " + host->Version());
    }
  });
}

void frmErrorMessage::ShowModal() { view_->ShowModal(); }

void frmErrorMessage::Activated() {
  title_ = std::string("An error occurred in ") + kComponentTitle;
  IgnoringErrors([&] { view_->SetTitle(title_); });
  if (support_mail_.empty()) {
    buttons_.Remove("MAIL");
  } else {
    IgnoringErrors([&] { buttons_["MAIL"].enabled = true; });
  }
  IgnoringErrors([&] { view_->ShowButtons(); });
  IgnoringErrors([] { TheServices().desktop->Beep(); });
}

void frmErrorMessage::ButtonClicked(const std::string& key) {
  if (key == "MAIL" && !support_mail_.empty()) {
    IgnoringErrors([&] { SendToSupport(); });
    return;
  }
  tag_ = key;
  IgnoringErrors([&] { view_->Hide(); });
}

void frmErrorMessage::SendToSupport() {
  CShell().OpenUrl(SupportMailAddress(support_mail_, title_, view_->Message()));
}

std::string ErrorMessageDialog::Ask(const std::string& report, const std::string& support_mail) {
  frmErrorMessage dialog;
  dialog.ErrorMessage(report);
  dialog.SupportMail(support_mail);
  dialog.ShowModal();
  return dialog.Tag();
}

}  // namespace scrivo
