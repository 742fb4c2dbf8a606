#include "cli/console_errors.h"

#include <cstdlib>

#include "compiler/spawn_console_app.h"
#include "errors/error_handler.h"
#include "platform/globals.h"
#include "system/interruption.h"

namespace scrivo {
namespace {

// Why a program could not be started, by the system's code (Windows' numbers on every system).
std::string StartFailureText(const std::string& description) {
  const std::string code = description.substr(description.rfind(' ') + 1);
  switch (std::atoi(code.c_str())) {
    case 2:
    case 3:
      return "a file that it needs to run is not there. Install it again, or name another with "
             "--compiler.";
    case 5:
      return "it may not be run. See that it is a program and has the permission to be run.";
    case 193:
      return "it is no program for this system. Name another with --compiler.";
    case 267:
      return "the folder " + Globals().working_folder +
             " cannot be entered. Ask for the right to enter it.";
    default:
      return description;
  }
}

std::string Advice(std::int32_t number) {
  switch (number) {
    case kDiskFull:
      return ". Free some space and run again.";
    case kPermissionDenied:
      return ". See that you may read and write there.";
    case kOutOfMemory:
      return ". Close other programs and run again.";
    default:
      return "";
  }
}

}  // namespace

std::string ErrorText(const Error& error) {
  if (error.number == CSpawnConsoleApp::kCreateProcessFailed) {
    return Globals().compiler_path +
           ": the compiler could not be started: " + StartFailureText(error.description);
  }
  // A text that ends as a sentence says what to do itself.
  const bool has_advice = error.description.ends_with('.') || error.description.ends_with('?');
  return has_advice ? error.description : error.description + Advice(error.number);
}

std::string ConsoleErrors::Ask(const std::string&, const std::string&) {
  const CErrorHandler& handler = ErrorHandler();
  // What fails because the program is to end fails with other numbers, too.
  if (handler.ErrorNumber() != kUserInterrupt && !Interrupted()) {
    console_.Fail(ErrorText(Error(handler.ErrorNumber(), "", handler.ErrorDescription())));
  }
  return "ABORT";
}

}  // namespace scrivo
