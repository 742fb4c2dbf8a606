#include "webs/vti_cnf.h"

#include <vector>

#include "text/ascii_text.h"

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

// The items of a list whose outer escapes are undone.
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

void TakeLine(std::string_view line, VtiNotes* notes) {
  const std::size_t colon = line.find(':');
  if (colon == std::string_view::npos || line.size() < colon + 4 || line[colon + 3] != '|') return;
  const std::string_view name = line.substr(0, colon);
  const std::string_view value = line.substr(colon + 4);
  if (name == "vti_title") notes->title = Unescaped(value);
  if (name == "vti_charset") notes->charset = Unescaped(value);
  if (name == "vti_metatags") notes->keywords = KeywordsOf(Unescaped(value));
}

}  // namespace

VtiNotes ParseVtiNotes(std::string_view text) {
  VtiNotes notes;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    if (line.ends_with('\r')) line.remove_suffix(1);
    TakeLine(line, &notes);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  return notes;
}

}  // namespace scrivo
