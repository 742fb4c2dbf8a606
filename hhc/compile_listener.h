#pragma once

// What a compile run tells while it works. The compiler words nothing else and prints nothing.

#include <string>
#include <string_view>

namespace scrivo {

enum class Severity { kNote, kWarning, kError };

struct CompileMessage {
  int code = 0;  // 0: a message without a number
  Severity severity = Severity::kWarning;
  std::string text;  // UTF-8

  // "HHC3015: Warning: text", or "Warning: text" without a code: the form that callers scan for.
  std::string Line() const;
};

class CompileListener {
 public:
  virtual ~CompileListener() = default;

  // Called once, before anything else, with the full path of the file to be made.
  virtual void Starting(std::string_view output) = 0;

  // A file goes into the help file: its path in the project, "\" separators.
  virtual void File(std::string_view path) = 0;

  virtual void Message(const CompileMessage& message) = 0;
};

}  // namespace scrivo
