#include "webs/service_notes.h"

#include "system/error.h"
#include "text/ascii_text.h"
#include "webs/page_head.h"

namespace scrivo {
namespace {

// The file takes a few kilobytes; what is larger was not written by the host.
constexpr std::size_t kLongest = 256 * 1024;

// The items of a list, with blanks between them. A backslash makes the next character part of its
// item.
std::vector<std::string> Items(std::string_view list) {
  std::vector<std::string> items;
  bool is_inside = false;
  for (std::size_t at = 0; at < list.size(); ++at) {
    if (list[at] == ' ') {
      is_inside = false;
      continue;
    }
    if (list[at] == '\\' && at + 1 < list.size()) ++at;
    if (!is_inside) items.emplace_back();
    is_inside = true;
    items.back().push_back(list[at]);
  }
  return items;
}

}  // namespace

ServiceNotes ParseServiceNotes(std::string_view text) {
  ServiceNotes notes;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    const std::size_t colon = line.find(':');
    if (colon == std::string_view::npos || line.size() < colon + 4 || line[colon + 3] != '|') {
      continue;
    }
    const std::string_view name = line.substr(0, colon);
    const std::string_view value = Trimmed(line.substr(colon + 4));
    if (name == "vti_defaultcharset") notes.charset = value;
    if (name == "vti_defaultlanguage") notes.language = value;
    if (name == "vti_welcomenames") notes.welcome_names = Items(value);
  }
  return notes;
}

ServiceNotes ReadServiceNotes(Files& files, const std::string& path, PathStyle style,
                              WebReport& report) {
  const char separator = Separator(style);
  const std::string file = path + separator + "_vti_pvt" + separator + "service.cnf";
  try {
    return ParseServiceNotes(ReadIfThere(files, file, kLongest).value_or(""));
  } catch (const Error& error) {
    ReportFailure(file, "the web's charset, language and welcome pages cannot be read", error,
                  report);
    return {};
  }
}

}  // namespace scrivo
