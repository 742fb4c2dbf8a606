#pragma once

#include <string>

namespace scrivo {

// Shows an error report to the user and asks what to do.
class ErrorDialog {
 public:
  virtual ~ErrorDialog() = default;

  // Shows the report modally, with an offer to mail it to `support_mail` when that is not empty.
  // Returns the key of the button that closed the dialog: "ABORT", "RETRY", "IGNORE", or "" when
  // it was closed otherwise.
  virtual std::string Ask(const std::string& report, const std::string& support_mail) = 0;
};

}  // namespace scrivo
