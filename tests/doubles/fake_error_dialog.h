#pragma once

#include <deque>
#include <string>
#include <vector>

#include "errors/error_handler.h"
#include "system/error.h"

namespace scrivo {

// A user who answers error reports from a list, in order; "THROW" makes the dialog itself fail.
class FakeErrorDialog : public ErrorDialog {
 public:
  std::deque<std::string> answers;   // "ABORT", "RETRY" or "IGNORE"; "ABORT" once they are used up
  std::vector<std::string> reports;  // what was shown

  std::string Ask(const std::string& report, const std::string&) override {
    reports.push_back(report);
    if (answers.empty()) return "ABORT";
    const std::string answer = answers.front();
    answers.pop_front();
    if (answer == "THROW") throw Error(kInternalError, "FakeErrorDialog", "The dialog failed");
    return answer;
  }
};

}  // namespace scrivo
