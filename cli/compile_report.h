#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "cli/message_limit.h"
#include "hhc/compiler.h"
#include "ui/console/console.h"

namespace scrivo {

// Throws Error (kUserInterrupt) when the user has asked the program to end.
void StopIfInterrupted();

// Tells on a console what a help compiler tells: its messages as they come, and how far it is.
class CompileReport : public CompileListener {
 public:
  // `files` is how many files the compiler is expected to take, which feeds the percentage only.
  // The console must outlive the report.
  // `all_messages`: whether all warnings are shown, however many of one kind there are.
  CompileReport(Console& console, std::size_t files, bool all_messages = false);

  void Starting(std::string_view) override {}
  void File(std::string_view path) override;
  bool StopWanted() const override;
  void Message(const CompileMessage& message) override;
  // A line that a compiler prints, about one file or another.
  void Line(const std::string& line);

  // How many warnings and errors there were.
  std::size_t Messages() const { return messages_; }
  std::size_t Errors() const { return errors_; }
  // How many characters the compiler replaced is told by TellLost, if at all.
  void TellLost();
  // Tells of which warnings there were more than were shown.
  void TellSums();
  // Those that are shown, each on a line that says which it is, and what there were more of.
  std::vector<std::string> Texts() const;

 private:
  Console& console_;
  const std::size_t files_;
  std::size_t done_ = 0;
  std::size_t messages_ = 0;
  std::size_t errors_ = 0;
  MessageLimit limit_;
  std::string lost_;  // the message about replaced characters, until it is told
  std::vector<std::string> texts_;
};

}  // namespace scrivo
