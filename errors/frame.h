#pragma once

#include <string>
#include <type_traits>
#include <utility>

namespace scrivo {

// The statements of one procedure that may fail. Each is run by calling the object with it:
//
//   const bool found = step([&] { return FindCompiler(); });
//   step([&] { WriteTextFile(path, text); });
//
// A step gives what its statement gives; one that is skipped gives the default of that type, or the
// value that the caller names before the statement.
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
  auto operator()(Statement&& statement) {
    using Value = std::decay_t<std::invoke_result_t<Statement&>>;
    if constexpr (std::is_void_v<Value>) {
      Run(statement);
    } else {
      return (*this)(Value(), statement);
    }
  }
  template <typename Value, typename Statement>
  Value operator()(Value when_skipped, Statement&& statement) {
    Run([&] { when_skipped = statement(); });
    return when_skipped;
  }

 private:
  template <typename Body>
  friend void Procedure(const std::string& qualified_name, Body&& body);
  template <typename Statement>
  friend bool IgnoringErrors(Statement&& statement);
  friend class ProcedureLevel;

  // Thrown to leave the procedure after an abort; never leaves Procedure.
  struct Abort {};

  template <typename Statement>
  void Run(Statement&& statement) {
    for (;;) {
      try {
        statement();
        return;
      } catch (...) {
        if (!Retry()) return;
      }
    }
  }

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

// The same for a procedure with a result: `body` is also given the result, the default of its type
// at first, and whatever it has reached when the procedure is left is what this returns.
template <typename Result, typename Body>
Result Procedure(const std::string& qualified_name, Body&& body) {
  Result result{};
  Procedure(qualified_name, [&](Steps& step) { body(step, result); });
  return result;
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

// One level of a recursive procedure of the error-handling frame whose levels are kept in a stack
// of the caller's own, so that no depth of the input overflows the program's. It does what
// Procedure does, with the answer to an abort given back instead of thrown: once a member has
// returned false the level has been left, its result is the default one, and the object is to be
// dropped. A failure inside the error handler itself is thrown, to be raised again in the
// statement of the level above.
class ProcedureLevel {
 public:
  // Pushes the qualified name on the call stack; the first call.
  bool Enter(const std::string& qualified_name) {
    return Answered([&] { steps_([&] { steps_.Push(qualified_name); }); });
  }
  // Runs one statement as Steps does.
  template <typename Statement>
  bool Step(Statement&& statement) {
    return Answered([&] { steps_(std::forward<Statement>(statement)); });
  }
  // Pops the name; the last call on the normal way out.
  bool Leave() {
    return Answered([&] { steps_([&] { steps_.Pop(); }); });
  }

 private:
  template <typename Work>
  bool Answered(Work work) {
    try {
      work();
      return true;
    } catch (const Steps::Abort&) {
      return false;
    }
  }

  Steps steps_;
};

}  // namespace scrivo
