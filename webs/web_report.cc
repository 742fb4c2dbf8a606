#include "webs/web_report.h"

namespace scrivo {

void ReportFailure(const std::string& file, const std::string& what, const Error& error,
                   WebReport& report) {
  if (error.number == kUserInterrupt) throw error;
  report.Problem({file, 0, what + ": " + error.description});
}

}  // namespace scrivo
