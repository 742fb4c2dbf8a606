#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

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

// Channels that an error report takes; a bit set.
enum ErrorHandlerAction : std::int32_t {
  ehaMessageBox = 1,   // message box with Abort, Retry and Ignore
  ehaLogFile = 2,      // append the report to the error log
  ehaEventLog = 4,     // the Application event log, on the NT platform family only
  ehaErrorDialog = 8,  // the error dialog
};

// Channels of the trace; a bit set.
enum TracingFlag : std::int32_t {
  trfDebugOutput = 1,  // development-time output; writes nothing in the released component
  trfLogFile = 2,      // append a line to the trace log
};

// What a failing procedure does next.
enum ErrorHandlerResult : std::int32_t {
  ehrAbort = 0,   // forget the calls so far and end the procedure
  ehrRetry = 1,   // resume at the statement that failed
  ehrIgnore = 2,  // resume at the statement after it
};

// The one object through which procedures announce entry and exit and report failures: it keeps
// the call stack, composes the error report, delivers it through the chosen channels and answers
// what the procedure does next. It reaches the system through TheServices(). Members raise Error
// with source "<module>.CErrorHandler": a write check that fails has its own number; anything
// unexpected is kComponentFailure.
class CErrorHandler {
 public:
  static constexpr std::int32_t kInvalidFileName = -2147204103;             // base + 17401
  static constexpr std::int32_t kInvalidErrorHandlerActions = -2147204102;  // base + 17402
  static constexpr std::int32_t kInvalidTracingFlags = -2147204101;         // base + 17403
  static constexpr std::int32_t kComponentFailure = -2147204100;            // base + 17404

  CErrorHandler();
  CErrorHandler(const CErrorHandler&) = delete;
  CErrorHandler& operator=(const CErrorHandler&) = delete;

  std::string SupportMail() const { return support_mail_; }
  void SupportMail(const std::string& StrValue) { support_mail_ = StrValue; }

  // Checks and stores the arguments in their order and stops at the first invalid one; what was
  // stored before it stays stored. Raises what the single properties raise.
  void Init(std::int32_t ErrorHandlerActions, const std::string& ErrorLogFile,
            bool CallStackEnabled, bool TracingEnabled, std::int32_t TracingFlags,
            const std::string& TracingLogFile);

  bool CallStackEnabled() const { return call_stack_enabled_; }
  void CallStackEnabled(bool value) { call_stack_enabled_ = value; }
  std::string ErrorDescription() const { return error_description_; }
  void ErrorDescription(const std::string& value) { error_description_ = value; }
  // A sum of ErrorHandlerAction values. Writing anything but 1 to 15 raises
  // kInvalidErrorHandlerActions.
  std::int32_t ErrorHandlerActions() const { return actions_; }
  void ErrorHandlerActions(std::int32_t value);
  std::int32_t ErrorLine() const { return error_line_; }
  void ErrorLine(std::int32_t value) { error_line_ = value; }
  // A path; a relative one resolves against the current folder. Writing an empty one raises
  // kInvalidFileName.
  std::string ErrorLogFile() const { return error_log_file_; }
  void ErrorLogFile(const std::string& FileName);
  std::int32_t ErrorNumber() const { return error_number_; }
  void ErrorNumber(std::int32_t value) { error_number_ = value; }
  // Free for callers; never read here.
  std::string Tag() const { return tag_; }
  void Tag(const std::string& value) { tag_ = value; }
  bool TracingEnabled() const { return tracing_enabled_; }
  void TracingEnabled(bool value) { tracing_enabled_ = value; }
  // A sum of TracingFlag values. Writing anything but 1 to 3 raises kInvalidTracingFlags. The
  // value after creation, 0, is outside that range on purpose: tracing that is only switched on
  // traces nowhere.
  std::int32_t TracingFlags() const { return tracing_flags_; }
  void TracingFlags(std::int32_t value);
  // As ErrorLogFile.
  std::string TracingLogFile() const { return tracing_log_file_; }
  void TracingLogFile(const std::string& FileName);

  // Empties the call stack, but only while CallStackEnabled is set.
  void CallStackClear();
  // Traces the top procedure's exit and removes it; nothing on an empty stack. Works whether or
  // not the call stack is enabled, as does CallStackPush: only clearing is conditional, on
  // purpose.
  void CallStackPop();
  // Adds a procedure's qualified name and its data, and traces its entry.
  void CallStackPush(const std::string& Procedure, const std::string& Data);
  // Deletes the chosen log files; failures are ignored. The removal is forced, so a log that is
  // read-only goes too.
  void Clear(bool ClearLogFile, bool ClearTracingLogFile);
  // Reports the current exception (call it inside a catch clause) in the name of `Procedure`, or,
  // when that is empty, of the procedure on top of the enabled call stack. Answers what the
  // failing procedure does next.
  ErrorHandlerResult HandleError(const std::string& Procedure);

  // The dialog behind ehaErrorDialog. Null (the default) answers as a dialog that was closed
  // without a button.
  void Dialog(std::shared_ptr<ErrorDialog> dialog) { dialog_ = std::move(dialog); }

 private:
  struct Entry {
    std::string procedure;
    std::string data;
  };

  std::string CallStackText(std::int16_t indent, bool with_data) const;
  std::string ComposeReport(const std::string& procedure) const;
  ErrorHandlerResult ShowErrorDialog(const std::string& report);
  void Trace(const char* event, const std::string& procedure) const;

  std::string support_mail_;
  bool call_stack_enabled_ = false;
  std::string error_description_;
  std::int32_t actions_ = ehaMessageBox;
  std::int32_t error_line_ = 0;
  std::string error_log_file_ = "Error Log.txt";
  std::int32_t error_number_ = 0;
  std::string tag_;
  bool tracing_enabled_ = false;
  std::int32_t tracing_flags_ = 0;
  std::string tracing_log_file_ = "Tracing Log.txt";

  std::vector<Entry> call_stack_;  // oldest first
  bool is_windows_nt_ = false;
  std::shared_ptr<ErrorDialog> dialog_;
};

// The process's one error handler, created on first use.
CErrorHandler& ErrorHandler();

// The component's title: caption of message boxes, source in the event log, application name of
// the settings.
constexpr const char* kComponentTitle = "Scrivo";

// Raises an error of one of the component's classes: its source is the module's name, a point and
// `class_name`; `number` is kComponentErrorBase plus the class's offset.
[[noreturn]] void RaiseComponentError(const std::string& class_name, std::int32_t number,
                                      const std::string& description);

// Runs the work of a class's member and gives its result; whatever fails in it reaches the caller
// as the class's own failure `number`, described as "<class_name> component failure".
template <typename Work>
auto OrComponentFailure(const std::string& class_name, std::int32_t number, Work work) {
  try {
    return work();
  } catch (...) {
    RaiseComponentError(class_name, number, class_name + " component failure");
  }
}

}  // namespace scrivo
