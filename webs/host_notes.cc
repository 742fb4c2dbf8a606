#include "webs/host_notes.h"

#include <vector>

#include "system/error.h"
#include "text/ascii_text.h"
#include "webs/page_head.h"

namespace scrivo {
namespace {

std::string Unescaped(std::string_view text) {
  std::string plain;
  plain.reserve(text.size());
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] == '\\' && at + 1 < text.size()) ++at;
    plain.push_back(text[at]);
  }
  return plain;
}

// The items of a list, each behind one blank. A backslash makes the next character part of its
// item.
std::vector<std::string> Items(std::string_view list) {
  std::vector<std::string> items(1);
  for (std::size_t at = 0; at < list.size(); ++at) {
    if (list[at] == ' ') {
      items.emplace_back();
      continue;
    }
    if (list[at] == '\\' && at + 1 < list.size()) ++at;
    items.back().push_back(list[at]);
  }
  return items;
}

// Meta tags stand as name, content, name, content, …
std::string KeywordsOf(std::string_view meta_tags) {
  const std::vector<std::string> items = Items(meta_tags);
  for (std::size_t i = 0; i + 1 < items.size(); i += 2) {
    if (EqualsIgnoringCase(items[i], "keywords")) return items[i + 1];
  }
  return "";
}

// Calls `take` with name and value of each line "name:TT|value".
template <typename Take>
void ForEachNote(std::string_view text, Take take) {
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (line.ends_with('\r')) line.remove_suffix(1);
    const std::size_t colon = line.find(':');
    if (colon == std::string_view::npos || line.size() < colon + 4 || line[colon + 3] != '|') {
      continue;
    }
    take(line.substr(0, colon), line.substr(colon + 4));
  }
}

// The file takes a few kilobytes; what is larger was not written by the host.
constexpr std::size_t kLongest = 256 * 1024;

}  // namespace

VtiNotes ParseVtiNotes(std::string_view text) {
  VtiNotes notes;
  ForEachNote(text, [&](std::string_view name, std::string_view value) {
    if (name == "vti_title") notes.title = Unescaped(value);
    if (name == "vti_charset") notes.charset = Unescaped(value);
    if (name == "vti_metatags") notes.keywords = KeywordsOf(Unescaped(value));
  });
  return notes;
}

ServiceNotes ParseServiceNotes(std::string_view text) {
  ServiceNotes notes;
  ForEachNote(text, [&](std::string_view name, std::string_view value) {
    if (name == "vti_defaultcharset") notes.charset = Trimmed(value);
    if (name == "vti_defaultlanguage") notes.language = Trimmed(value);
    if (name == "vti_welcomenames") notes.welcome_names = Items(Trimmed(value));
  });
  std::erase(notes.welcome_names, "");
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
