#pragma once

// The console output of hhc, line by line as the usual help compiler prints it.

#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>

#include "hhc/compiler.h"

namespace scrivo {

// "1234567" as "1,234,567".
std::string WithThousands(std::uint64_t number);

class HhcOutput : public CompileListener {
 public:
  // Prints to `stream`, flushed line by line so that a reader of a pipe sees progress; `name` is
  // the first line.
  HhcOutput(std::ostream& stream, std::string name);

  void Starting(std::string_view output) override;
  void File(std::string_view path) override;
  void Message(const CompileMessage& message) override;
  bool StopWanted() const override;

  // What comes after the last file.
  void Finish(const CompileResult& result, int seconds);

  // Everything printed so far, with CR LF line ends, for the project's log file.
  const std::string& Text() const { return text_; }

 private:
  void Line(std::string_view raw);

  std::ostream& stream_;
  std::string name_;
  std::string text_;
};

}  // namespace scrivo
