#pragma once

#include <string>
#include <utility>

#include "errors/frame.h"

namespace scrivo {

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
