#include "errors/error_handler.h"

#include <exception>
#include <string>

#include "system/error.h"
#include "system/services.h"
#include "system/system_services.h"

namespace scrivo {
namespace {

// Appends one record and CR LF to a log, in the ANSI code page. The file is opened and closed for
// each record, so that others may read or delete it at any time and it survives a crash up to its
// last complete record. Errors as Files::Append.
void AppendLogRecord(const std::string& path, const std::string& record) {
  TheServices().files->Append(path, ToAnsi(record) + "\r\n");
}

// The date and time that begin a record: the system's short texts joined by " - ".
std::string LogTimeText() {
  SystemServices& system = *TheServices().system;
  const std::string date = system.DateText();
  return date + " - " + system.TimeText();
}

constexpr std::int32_t kAllActions = ehaMessageBox | ehaLogFile | ehaEventLog | ehaErrorDialog;
constexpr std::int32_t kAllTracingFlags = trfDebugOutput | trfLogFile;
constexpr std::uint32_t kWindowsNtPlatform = 2;
constexpr std::uint32_t kExtendedVersionRecord = 156;
constexpr std::uint32_t kBasicVersionRecord = 148;

[[noreturn]] void Raise(std::int32_t number, const char* description) {
  RaiseComponentError("CErrorHandler", number, description);
}

std::string CheckedFileName(const std::string& name) {
  if (name.empty()) Raise(CErrorHandler::kInvalidFileName, "Invalid file name");
  return name;
}

template <typename Work>
auto Guarded(Work work) {
  return OrComponentFailure("CErrorHandler", CErrorHandler::kComponentFailure, work);
}

bool AskIsWindowsNt() {
  SystemServices& system = *TheServices().system;
  std::uint32_t platform = 0;
  return (system.PlatformId(kExtendedVersionRecord, &platform) ||
          system.PlatformId(kBasicVersionRecord, &platform)) &&
         platform == kWindowsNtPlatform;
}

ErrorHandlerResult ResultOf(MessageAnswer answer) {
  if (answer == MessageAnswer::kAbort) return ehrAbort;
  return answer == MessageAnswer::kRetry ? ehrRetry : ehrIgnore;
}

ErrorHandlerResult ResultOf(const std::string& button_key) {
  if (button_key == "ABORT") return ehrAbort;
  return button_key == "RETRY" ? ehrRetry : ehrIgnore;
}

// The failure that is being handled; outside of a catch clause there is none, number 0.
Error CurrentError() {
  const std::exception_ptr failure = std::current_exception();
  return failure ? ErrorFrom(failure) : Error(0, "", "");
}

void RemoveQuietly(const std::string& path) {
  if (path.empty()) return;
  try {
    TheServices().files->Remove(path, true);
  } catch (...) {
    // A log that is missing or in use stays as it is.
  }
}

}  // namespace

CErrorHandler::CErrorHandler() : is_windows_nt_(Guarded(AskIsWindowsNt)) {}

void CErrorHandler::Init(std::int32_t ErrorHandlerActions, const std::string& ErrorLogFile,
                         bool CallStackEnabled, bool TracingEnabled, std::int32_t TracingFlags,
                         const std::string& TracingLogFile) {
  this->ErrorHandlerActions(ErrorHandlerActions);
  this->ErrorLogFile(ErrorLogFile);
  this->CallStackEnabled(CallStackEnabled);
  this->TracingEnabled(TracingEnabled);
  this->TracingFlags(TracingFlags);
  this->TracingLogFile(TracingLogFile);
}

void CErrorHandler::ErrorHandlerActions(std::int32_t value) {
  if (value < 1 || value > kAllActions) {
    Raise(kInvalidErrorHandlerActions, "Invalid error handler actions");
  }
  actions_ = value;
}

void CErrorHandler::ErrorLogFile(const std::string& FileName) {
  error_log_file_ = CheckedFileName(FileName);
}

void CErrorHandler::TracingFlags(std::int32_t value) {
  if (value < 1 || value > kAllTracingFlags) Raise(kInvalidTracingFlags, "Invalid tracing flags");
  tracing_flags_ = value;
}

void CErrorHandler::TracingLogFile(const std::string& FileName) {
  tracing_log_file_ = CheckedFileName(FileName);
}

void CErrorHandler::CallStackClear() {
  if (call_stack_enabled_) call_stack_.clear();
}

void CErrorHandler::CallStackPop() {
  if (call_stack_.empty()) return;
  Guarded([&] { Trace("Exited routine: ", call_stack_.back().procedure); });
  call_stack_.pop_back();
}

void CErrorHandler::CallStackPush(const std::string& Procedure, const std::string& Data) {
  Guarded([&] {
    call_stack_.push_back({Procedure, Data});
    Trace("Entered routine: ", Procedure);
  });
}

void CErrorHandler::Clear(bool ClearLogFile, bool ClearTracingLogFile) {
  if (ClearLogFile) RemoveQuietly(error_log_file_);
  if (ClearTracingLogFile) RemoveQuietly(tracing_log_file_);
}

ErrorHandlerResult CErrorHandler::HandleError(const std::string& Procedure) {
  return Guarded([&] {
    const Error error = CurrentError();
    error_description_ = error.description;
    error_number_ = error.number;
    error_line_ = error.line;

    ErrorHandlerResult result = ehrAbort;
    const std::string report = ComposeReport(Procedure);
    if (actions_ & ehaLogFile) AppendLogRecord(error_log_file_, report);
    if (is_windows_nt_ && (actions_ & ehaEventLog)) {
      TheServices().system->WriteErrorEvent(kComponentTitle, report);
    }
    if (actions_ & ehaMessageBox) {
      result =
          ResultOf(TheServices().desktop->ShowMessage(report, kAbortRetryIgnore, kComponentTitle));
    }
    if (actions_ & ehaErrorDialog) result = ShowErrorDialog(report);
    return result;
  });
}

std::string CErrorHandler::ComposeReport(const std::string& procedure) const {
  std::string routine = procedure;
  if (routine.empty()) {
    routine = call_stack_enabled_ && !call_stack_.empty() ? call_stack_.back().procedure
                                                          : std::string("Unknown");
  }
  constexpr std::int16_t kStackIndent = 20;
  return LogTimeText() + "\r\n\tError: " + std::to_string(error_number_) + ", (" +
         error_description_ + ")\r\n\tin " + routine + " at line " + std::to_string(error_line_) +
         "\r\n\r\nThe call stack is:\r\n" + CallStackText(kStackIndent, true);
}

std::string CErrorHandler::CallStackText(std::int16_t indent, bool with_data) const {
  std::string text;
  for (auto entry = call_stack_.rbegin(); entry != call_stack_.rend(); ++entry) {
    if (!text.empty()) text += "\r\n";
    text.append(static_cast<std::size_t>(indent), ' ');
    text += entry->procedure;
    if (with_data) text += "(" + entry->data + ")";
  }
  return text;
}

ErrorHandlerResult CErrorHandler::ShowErrorDialog(const std::string& report) {
  return ResultOf(dialog_ ? dialog_->Ask(report, support_mail_) : std::string());
}

void CErrorHandler::Trace(const char* event, const std::string& procedure) const {
  // trfDebugOutput is a development channel that writes nothing in the released component.
  if (tracing_enabled_ && (tracing_flags_ & trfLogFile)) {
    AppendLogRecord(tracing_log_file_, LogTimeText() + " --- " + event + procedure);
  }
}

CErrorHandler& ErrorHandler() {
  static CErrorHandler handler;
  return handler;
}

void RaiseComponentError(const std::string& class_name, std::int32_t number,
                         const std::string& description) {
  throw Error(number, TheServices().system->ModuleName() + "." + class_name, description);
}

}  // namespace scrivo
