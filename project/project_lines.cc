#include "project/project_lines.h"

#include "html/charset.h"
#include "text/ascii_text.h"

namespace scrivo {
namespace {

// Takes a word off the front of `text`.
std::string_view TakeWord(std::string_view* text) {
  *text = Trimmed(*text);
  std::size_t end = 0;
  while (end < text->size() && !IsBlank((*text)[end])) ++end;
  const std::string_view word = text->substr(0, end);
  text->remove_prefix(end);
  return word;
}

// Where the part ends that starts at the front of `text`: at a comma outside quotes and brackets.
std::size_t PartEnd(std::string_view text) {
  char closing = '\0';
  for (std::size_t at = 0; at < text.size(); ++at) {
    const char c = text[at];
    if (closing != '\0') {
      if (c == closing) closing = '\0';
    } else if (c == '"') {
      closing = '"';
    } else if (c == '[') {
      closing = ']';
    } else if (c == ',') {
      return at;
    }
  }
  return text.size();
}

}  // namespace

std::string_view WithoutQuotes(std::string_view text) {
  if (text.size() >= 2 && text.front() == '"' && text.back() == '"') {
    return text.substr(1, text.size() - 2);
  }
  return text;
}

ProjectLines::ProjectLines(std::string_view text)
    : decoded_(Utf16AsUtf8(text)), rest_(decoded_ ? *decoded_ : text) {
  if (rest_.starts_with(kUtf8Mark)) rest_.remove_prefix(kUtf8Mark.size());
}

bool ProjectLines::Next(ProjectLine* line) {
  while (!rest_.empty()) {
    const std::string_view text = Trimmed(TakeLine(&rest_));
    ++number_;
    if (text.empty() || text[0] == ';') continue;
    line->text = text;
    line->line = number_;
    return true;
  }
  return false;
}

std::vector<std::string> SplitQuoted(std::string_view text) {
  std::vector<std::string> parts;
  while (true) {
    const std::size_t end = PartEnd(text);
    parts.emplace_back(WithoutQuotes(Trimmed(text.substr(0, end))));
    if (end >= text.size()) return parts;
    text.remove_prefix(end + 1);
  }
}

bool FitsFileLine(std::string_view path) {
  ProjectLines lines(path);
  ProjectLine line;
  if (!lines.Next(&line) || line.text != path) return false;
  if (path[0] == '[' && path.find(']') != std::string_view::npos) return false;
  if (IncludedFile(path) || path.starts_with('/')) return false;
  return path.find_first_of("*?\":\\\r\n") == std::string_view::npos;
}

std::optional<std::string> IncludedFile(std::string_view line) {
  if (TakeWord(&line) != "#include") return std::nullopt;
  line = Trimmed(line);
  if (line.size() >= 2 && (line[0] == '"' || line[0] == '<')) {
    line.remove_prefix(1);
    line = line.substr(0, line.find_first_of("\">"));
  }
  if (line.empty()) return std::nullopt;
  return std::string(line);
}

std::optional<ProjectAlias> AliasOfLine(const ProjectLine& line) {
  std::string_view text = line.text;
  text = Trimmed(text.substr(0, text.find(';')));
  const std::size_t equals = text.find('=');
  if (equals == std::string_view::npos) return std::nullopt;
  ProjectAlias alias;
  alias.symbol = Trimmed(text.substr(0, equals));
  alias.target = WithoutQuotes(Trimmed(text.substr(equals + 1)));
  alias.line = line.line;
  if (alias.symbol.empty() || alias.target.empty()) return std::nullopt;
  return alias;
}

std::optional<ProjectMapEntry> MapEntryOfLine(std::string_view line) {
  if (TakeWord(&line) != "#define") return std::nullopt;
  ProjectMapEntry entry;
  entry.symbol = TakeWord(&line);
  const std::string_view number = TakeWord(&line);
  if (entry.symbol.empty() || number.empty() || number[0] < '0' || number[0] > '9') {
    return std::nullopt;
  }
  entry.number = ProjectNumber(number);
  return entry;
}

std::vector<ProjectMapEntry> ReadMapHeader(std::string_view bytes) {
  std::vector<ProjectMapEntry> entries;
  ProjectLines lines(bytes);
  ProjectLine line;
  while (lines.Next(&line)) {
    if (auto entry = MapEntryOfLine(line.text)) entries.push_back(std::move(*entry));
  }
  return entries;
}

std::vector<ProjectAlias> ReadAliasFile(std::string_view bytes) {
  std::vector<ProjectAlias> aliases;
  ProjectLines lines(bytes);
  ProjectLine line;
  while (lines.Next(&line)) {
    if (auto alias = AliasOfLine(line)) aliases.push_back(std::move(*alias));
  }
  return aliases;
}

std::uint32_t ProjectNumber(std::string_view text) {
  text = Trimmed(text);
  std::uint32_t base = 10;
  if (StartsWithIgnoringCase(text, "0x")) {
    base = 16;
    text.remove_prefix(2);
  }
  std::uint32_t number = 0;
  for (const char c : text) {
    std::uint32_t digit = base;
    if (c >= '0' && c <= '9') digit = static_cast<std::uint32_t>(c - '0');
    if (AsciiLower(c) >= 'a' && AsciiLower(c) <= 'f') {
      digit = static_cast<std::uint32_t>(AsciiLower(c) - 'a' + 10);
    }
    if (digit >= base) break;
    number = number * base + digit;
  }
  return number;
}

}  // namespace scrivo
