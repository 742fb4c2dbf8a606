#include "cli/check_report.h"

#include <array>
#include <cstdio>

#include "platform/paths.h"
#include "text/code_page.h"
#include "text/visible_text.h"

namespace scrivo {
namespace {

std::array<std::size_t, kFindingKinds> CountsOf(const std::vector<Finding>& findings) {
  std::array<std::size_t, kFindingKinds> counts{};
  for (const Finding& finding : findings) ++counts[static_cast<std::size_t>(finding.kind)];
  return counts;
}

std::string Line(const Finding& finding) {
  std::string line = "  ";
  if (!finding.file.empty()) {
    line += NameText(finding.file);
    if (finding.line != 0) line += ":" + std::to_string(finding.line);
    line += ": ";
  }
  return WithoutControlCharacters(line + finding.text);
}

std::string Pages(std::size_t count) {
  return std::to_string(count) + (count == 1 ? " page" : " pages");
}

void AppendJsonString(const std::string& text, std::string* json) {
  *json += '"';
  for (const char c : ToUtf8(text, kUtf8CodePage)) {
    if (c == '"' || c == '\\') {
      *json += '\\';
      *json += c;
    } else if (static_cast<unsigned char>(c) < 0x20) {
      char escape[8];
      std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(c));
      *json += escape;
    } else {
      *json += c;
    }
  }
  *json += '"';
}

void AppendJsonField(const char* name, const std::string& value, std::string* json) {
  *json += std::string(", \"") + name + "\": ";
  AppendJsonString(value, json);
}

}  // namespace

std::vector<std::string> CheckReportLines(const WebFindings& found, MessageLimit* limit) {
  std::vector<std::string> lines;
  const auto counts = CountsOf(found.findings);
  std::size_t kinds = 0;
  auto finding = found.findings.begin();
  for (std::size_t i = 0; i < kFindingKinds; ++i) {
    if (counts[i] == 0) continue;
    ++kinds;
    const auto kind = static_cast<FindingKind>(i);
    lines.push_back(std::string(FindingHeading(kind)) + " (" + std::to_string(counts[i]) + "). " +
                    std::string(FindingAdvice(kind)));
    const std::string name(FindingName(kind));
    for (std::size_t left = counts[i]; left > 0; --left, ++finding) {
      if (limit->Shows(name)) lines.push_back(Line(*finding));
    }
    if (const std::size_t untold = limit->Untold(name); untold > 0) {
      lines.push_back("  and " + std::to_string(untold) + " more. " + MessageLimit::kToSeeAll);
    }
    lines.emplace_back();
  }
  const std::size_t all = found.findings.size();
  lines.push_back(all == 0 ? "Nothing found in " + Pages(found.pages)
                           : std::to_string(all) + (all == 1 ? " finding" : " findings") +
                                 (kinds == 1 ? "" : " of " + std::to_string(kinds) + " kinds") +
                                 " in " + Pages(found.pages));
  return lines;
}

std::string CheckReportJson(const WebFindings& found, const std::string& web) {
  std::string json = "{\n  \"format\": 1";
  json += ",\n  \"web\": ";
  AppendJsonString(NameText(web), &json);
  json += ",\n  \"pages\": " + std::to_string(found.pages);
  json += ",\n  \"contentsEntries\": " + std::to_string(found.contents_entries);
  json += ",\n  \"counts\": {";
  const auto counts = CountsOf(found.findings);
  for (std::size_t i = 0; i < kFindingKinds; ++i) {
    json += std::string(i == 0 ? "" : ", ") + "\"" +
            std::string(FindingName(static_cast<FindingKind>(i))) +
            "\": " + std::to_string(counts[i]);
  }
  json += "},\n  \"findings\": [";
  bool is_first = true;
  for (const Finding& finding : found.findings) {
    json += is_first ? "\n    {" : ",\n    {";
    is_first = false;
    json += "\"kind\": \"" + std::string(FindingName(finding.kind)) + "\"";
    AppendJsonField("file", NameText(finding.file), &json);
    json += ", \"line\": " + std::to_string(finding.line);
    AppendJsonField("subject", finding.subject, &json);
    AppendJsonField("text", finding.text, &json);
    json += "}";
  }
  json += is_first ? "]\n}" : "\n  ]\n}";
  return json;
}

}  // namespace scrivo
