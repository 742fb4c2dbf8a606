#pragma once

// A check's findings as text: the lines of a report, or one JSON object.

#include <string>
#include <vector>

#include "checker/web_check.h"
#include "cli/message_limit.h"

namespace scrivo {

// The findings under a heading for each kind, as far as `limit` shows them, and a sum at the end.
std::vector<std::string> CheckReportLines(const WebFindings& findings, MessageLimit* limit);

// The findings for programs, as docs/check.md has it; `web` is the web's folder.
std::string CheckReportJson(const WebFindings& findings, const std::string& web);

}  // namespace scrivo
