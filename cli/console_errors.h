#pragma once

#include <string>

#include "errors/error_dialog.h"
#include "system/error.h"
#include "ui/console/console.h"

namespace scrivo {

// One line for the user: what failed, and what to do about it where that is known.
std::string ErrorText(const Error& error);

// The error dialog of a command line: prints one line for each error and lets the failing
// procedure leave. Says nothing of an interruption, which the user has asked for.
class ConsoleErrors : public ErrorDialog {
 public:
  explicit ConsoleErrors(Console& console) : console_(console) {}
  std::string Ask(const std::string& report, const std::string& support_mail) override;

 private:
  Console& console_;
};

}  // namespace scrivo
