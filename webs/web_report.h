#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "system/error.h"

namespace scrivo {

// Something in a web on disk that is not as it should be, and that reading went on without.
struct WebProblem {
  std::string file;      // path on disk, or the web's own path when it is not about one file
  std::size_t line = 0;  // counted from 1; 0 when it is not about one line
  std::string reason;    // English, without a full stop
};

// Takes the problems of a web as they are met. Whoever reads the web words and shows them.
class WebReport {
 public:
  virtual ~WebReport() = default;
  virtual void Problem(const WebProblem& problem) = 0;
};

// Reports that `what` failed, which reading goes on without, and why. A user's interruption ends
// all reading: it is thrown on.
inline void ReportFailure(const std::string& file, const std::string& what, const Error& error,
                          WebReport& report) {
  if (error.number == kUserInterrupt) throw error;
  report.Problem({file, 0, what + ": " + error.description});
}

// A report that keeps everything.
class WebProblemList : public WebReport {
 public:
  void Problem(const WebProblem& problem) override { problems.push_back(problem); }

  std::vector<WebProblem> problems;
};

}  // namespace scrivo
