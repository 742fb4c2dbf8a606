#pragma once

#include <string>

#include "webs/web_report.h"

namespace scrivo {

// The problems, one to a line: "file:line: reason".
inline std::string Reported(const WebProblemList& report) {
  std::string text;
  for (const WebProblem& problem : report.problems) {
    text += problem.file + ":" + std::to_string(problem.line) + ": " + problem.reason + "\n";
  }
  return text;
}

}  // namespace scrivo
