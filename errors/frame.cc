#include "errors/frame.h"

#include "errors/error_handler.h"

namespace scrivo {

bool Steps::Retry() {
  if (leaving_) throw;
  ErrorHandlerResult answer;
  try {
    answer = ErrorHandler().HandleError("");
  } catch (...) {
    leaving_ = true;  // a failing error handler is the caller's to handle
    throw;
  }
  if (answer == ehrRetry) return true;
  if (answer == ehrIgnore) return false;
  if (answer == ehrAbort) ErrorHandler().CallStackClear();
  leaving_ = true;
  throw Abort{};
}

void Steps::Push(const std::string& qualified_name) {
  ErrorHandler().CallStackPush(qualified_name, "");
}

void Steps::Pop() { ErrorHandler().CallStackPop(); }

}  // namespace scrivo
