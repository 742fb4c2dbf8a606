#include "cli/console_errors.h"

#include <cstdlib>

#include "compiler/spawn_console_app.h"
#include "errors/error_handler.h"
#include "platform/globals.h"

namespace scrivo {
namespace {

/// Why a program could not be started, by the system's code (Windows' numbers on every system).
std::string StartFailureText(const std::string& description) {
  const std::string code = description.substr(description.rfind(' ') + 1);
  switch (std::atoi(code.c_str())) {
    case 2:
    case 3:
      return "a file that it needs to run is not there";
    case 5:
      return "it may not be run; see that it is a program and has the permission to be run";
    case 193:
      return "it is no program for this system";
    case 267:
      return "the folder " + Globals().working_folder + " cannot be entered";
    default:
      return description;
  }
}

std::string Advice(std::int32_t number) {
  switch (number) {
    case kDiskFull:
      return "; free some space and run again";
    case kPermissionDenied:
      return "; see that you may read and write there";
    case kOutOfMemory:
      return "; close other programs and run again";
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
  return error.description + Advice(error.number);
}

std::string ConsoleErrors::Ask(const std::string&, const std::string&) {
  const CErrorHandler& handler = ErrorHandler();
  if (handler.ErrorNumber() != kUserInterrupt) {
    console_.Fail(ErrorText(Error(handler.ErrorNumber(), "", handler.ErrorDescription())));
  }
  return "ABORT";
}

}  // namespace scrivo
