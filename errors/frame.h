#pragma once

#include <string>
#include <type_traits>
#include <utility>

namespace scrivo {

// The statements of one procedure that may fail. Each is run by calling the object with it:
//
//   step([&] { text += EnumNodes(*web->NavigationRoot()); });
//
// A step that throws asks the error handler, whose answer runs the same step again (retry), goes
// on behind it (ignore) or leaves the procedure (abort). Steps may stand in loops and inside other
// steps; an answer always concerns the innermost.
class Steps {
 public:
  Steps() = default;
  Steps(const Steps&) = delete;
  Steps& operator=(const Steps&) = delete;

  template <typename Statement>
  void operator()(Statement&& statement) {
    for (;;) {
      try {
        statement();
        return;
      } catch (...) {
        if (!Retry()) return;
      }
    }
  }

 private:
  template <typename Body>
  friend void Procedure(const std::string& qualified_name, Body&& body);
  template <typename Statement>
  friend bool IgnoringErrors(Statement&& statement);
  friend class ProcedureLevel;

  // Thrown to leave the procedure after an abort; never leaves Procedure.
  struct Abort {};

  // The error exit: true to run the statement again, false to go on behind it; throws to leave the
  // procedure.
  bool Retry();
  void Push(const std::string& qualified_name);
  void Pop();

  // Set once the procedure is being left, so that steps around the failing one let the exception
  // pass.
  bool leaving_ = false;
};

// Runs `body`, which is called with a Steps object, as a procedure of the error-handling frame:
// its qualified name ("Kestrel." + module + "." + procedure) is pushed on the call stack first and
// popped on the normal way out. After an abort the call stack is cleared and the procedure returns
// as if done, its caller going on with whatever result had been reached. The one error that the
// caller sees is a failure inside the error handler itself.
template <typename Body>
void Procedure(const std::string& qualified_name, Body&& body) {
  Steps step;
  try {
    step([&] { step.Push(qualified_name); });
    try {
      body(step);
    } catch (...) {
      step.Retry();  // a failure between the steps has no statement to resume at
    }
    step([&] { step.Pop(); });
  } catch (const Steps::Abort&) {
  }
}

// Runs one statement of a stretch that ignores errors on purpose: a failing statement is skipped.
// False when it failed. (A step of a procedure inside it is handled as a step, abort included.)
template <typename Statement>
bool IgnoringErrors(Statement&& statement) {
  try {
    statement();
    return true;
  } catch (const Steps::Abort&) {
    throw;
  } catch (...) {
    return false;
  }
}

}  // namespace scrivo
