#pragma once

// A check's findings as text: the lines of a report, or one JSON object.

#include <string>
#include <vector>

#include "checker/web_check.h"

namespace scrivo {

// The findings under a heading for each kind, and a sum at the end. Of each kind the first `most`
// are shown, and how many more there are.
std::vector<std::string> CheckReportLines(const WebFindings& findings, std::size_t most);

// The findings for programs, as docs/check.md has it; `web` is the web's folder.
std::string CheckReportJson(const WebFindings& findings, const std::string& web);

}  // namespace scrivo
